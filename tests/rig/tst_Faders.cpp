#include "rig/Faders.h"

#include "support/StandardOutput.h"
#include "support/TestClock.h"
#include "support/TestRig.h"

#include <QTest>

#include <memory>

namespace {

constexpr std::uint64_t Second = 1'000'000'000;

QStringList keysOf(const Faders& faders) {
    QStringList keys;
    for (const DMXControl* const fader : faders.sorted()) {
        keys.append(fader->key());
    }
    return keys;
}

} // namespace

class tst_Faders : public QObject {
    Q_OBJECT

private slots:
    void init() { rig_ = std::make_unique<TestRig>(); }
    void cleanup() { rig_.reset(); }

    void withoutFixturesThereAreNone();
    void controlsAreRegisteredUnderTheFixturesKeyAndTheirName();
    void dummiesAreNotRegistered();
    void theNewestControlTakesAKeyAndTheMessageIsPrintedOnce();
    void namesThatResolveToTheSameTakeTheSameKey();
    void aControlWithoutANameIsRegisteredUnderTheFixturesKeyAndAPoint();
    void aVeryLongNameIsAKeyLikeAnyOther();
    void theyStandInTheOrderOfTheirKeys();
    void onlyTheOneThatIsFoundIsTakenOut();
    void aFreedKeyIsTakenWithoutAWord();
    void clearLeavesTheFaders();

    void aLevelIsSetByKeyFromNumbersAndStrings_data();
    void aLevelIsSetByKeyFromNumbersAndStrings();
    void anUnknownKeyIsPassedOver();
    void manyLevelsAreOneEdit();
    void everyFaderKeepsItsTime();
    void withoutChangesNothingHappens();

private:
    const Faders& faders() { return rig_->faders(); }

    std::unique_ptr<TestRig> rig_;
};

void tst_Faders::withoutFixturesThereAreNone() {
    QCOMPARE(faders().count(), std::size_t{0});
    QVERIFY(faders().sorted().empty());
    QCOMPARE(faders().find(""), nullptr);
    QCOMPARE(faders().find(QString()), nullptr);
}

void tst_Faders::controlsAreRegisteredUnderTheFixturesKeyAndTheirName() {
    rig_->profiles().setTable(QVariantMap{{"RGB", QVariantList{controlEntry("Red #")}}});
    QVariantMap wash =
        placement("Wash", 0, 1, {QVariantMap{{"profile", "RGB"}, {"name", "Cell 2"}}, controlEntry("Zoom")});
    wash["layer"] = qlonglong{3};
    const Fixture& fixture = rig_->add(wash);
    QCOMPARE(keysOf(faders()), QStringList({"Wash.Cell 2.Red 3", "Wash.Zoom"}));
    QCOMPARE(faders().find("Wash.Cell 2.Red 3"), fixture.controls()[0].get());
    QCOMPARE(fixture.controls()[0]->key(), "Wash.Cell 2.Red 3");
}

void tst_Faders::dummiesAreNotRegistered() {
    const Fixture& fixture = rig_->add(
        placement("Spot", 0, 1,
                  {QVariantMap{{"blank", qlonglong{4}}, {"name", "Pan"}}, QVariantMap{{"label", "Pan"}}}));
    QCOMPARE(faders().count(), std::size_t{0});
    QVERIFY(fixture.controls()[0]->key().isNull());
    QVERIFY(fixture.controls()[1]->key().isNull());
}

void tst_Faders::theNewestControlTakesAKeyAndTheMessageIsPrintedOnce() {
    const Fixture* fixture = nullptr;
    const QByteArray output = standardOutputOf([&] { fixture = &rig_->add("Spot", {"Pan", "Pan"}); });
    QCOMPARE(output, "DMXControl 'Spot.Pan' already exists!\n");
    QCOMPARE(faders().count(), std::size_t{1});
    QCOMPARE(faders().find("Spot.Pan"), fixture->controls()[1].get());
    QCOMPARE(fixture->controls()[0]->name(), "Pan");
}

void tst_Faders::namesThatResolveToTheSameTakeTheSameKey() {
    const Fixture* fixture = nullptr;
    const QByteArray output = standardOutputOf([&] { fixture = &rig_->add("Spot", {"Pan #", "Pan 1"}); });
    QCOMPARE(output, "DMXControl 'Spot.Pan 1' already exists!\n");
    QCOMPARE(faders().count(), std::size_t{1});
    QCOMPARE(faders().find("Spot.Pan 1"), fixture->controls()[1].get());
}

void tst_Faders::aControlWithoutANameIsRegisteredUnderTheFixturesKeyAndAPoint() {
    rig_->add(placement("Spot", 0, 1, {QVariantMap{}}));
    QCOMPARE(keysOf(faders()), QStringList("Spot."));
}

void tst_Faders::aVeryLongNameIsAKeyLikeAnyOther() {
    const QString name = QString(100'000, 'x') + "%s%n";
    const QByteArray output = standardOutputOf([&] { rig_->add("Spot", {name, name}); });
    QCOMPARE(output, "DMXControl 'Spot." + name.toUtf8() + "' already exists!\n");
    QVERIFY(faders().find("Spot." + name));
}

void tst_Faders::theyStandInTheOrderOfTheirKeys() {
    rig_->add("Spot", {"b", "a", "B", "10", "2", ""});
    QCOMPARE(keysOf(faders()), QStringList({"Spot.", "Spot.10", "Spot.2", "Spot.B", "Spot.a", "Spot.b"}));
    rig_->add("Bar", {"c"});
    QCOMPARE(keysOf(faders()).first(), "Bar.c");
    rig_->fixtures().remove(0, 1);
    QCOMPARE(keysOf(faders()), QStringList("Bar.c"));
}

void tst_Faders::onlyTheOneThatIsFoundIsTakenOut() {
    const Fixture* fixture = nullptr;
    standardOutputOf([&] { fixture = &rig_->add("Spot", {"Pan", "Pan"}); });
    QVERIFY(!rig_->faders().remove(*fixture->controls()[0]));
    QCOMPARE(faders().find("Spot.Pan"), fixture->controls()[1].get());
    QVERIFY(rig_->faders().remove(*fixture->controls()[1]));
    QCOMPARE(faders().find("Spot.Pan"), nullptr);
    QVERIFY(faders().sorted().empty());
    QVERIFY(!rig_->faders().remove(*fixture->controls()[1]));
    rig_->faders().put(*fixture->controls()[0]);
    QCOMPARE(faders().find("Spot.Pan"), fixture->controls()[0].get());
}

void tst_Faders::aFreedKeyIsTakenWithoutAWord() {
    rig_->add("Spot", {"Pan"});
    rig_->fixtures().remove(0, 1);
    QCOMPARE(standardOutputOf([this] { rig_->add("Spot", {"Pan"}); }), "");
}

void tst_Faders::clearLeavesTheFaders() {
    const Fixture& fixture = rig_->add(placement("Spot", 0, 1, {controlEntry("Pan", 12)}));
    rig_->faders().clear();
    QCOMPARE(faders().count(), std::size_t{0});
    QVERIFY(faders().sorted().empty());
    QCOMPARE(fixture.controls()[0]->value(), 12U);
    rig_->tick();
    QCOMPARE(rig_->engine().slotLevels(0)[0], 12);
}

void tst_Faders::aLevelIsSetByKeyFromNumbersAndStrings_data() {
    QTest::addColumn<QVariant>("level");
    QTest::addColumn<QVariant>("time");
    QTest::addColumn<quint32>("target");
    QTest::addColumn<float>("seconds");

    QTest::newRow("numbers") << QVariant(qlonglong{128}) << QVariant(2.5) << 128U << 2.5F;
    QTest::newRow("strings") << QVariant("12") << QVariant("1.5") << 12U << 1.5F;
    QTest::newRow("strings that begin with numbers") << QVariant("5abc") << QVariant("2s") << 5U << 2.0F;
    QTest::newRow("strings without numbers") << QVariant("abc") << QVariant("s") << 0U << 0.0F;
    QTest::newRow("a real level") << QVariant(7.9) << QVariant(qlonglong{0}) << 7U << 0.0F;
    QTest::newRow("nothing") << QVariant() << QVariant() << 0U << 0.0F;
    QTest::newRow("a negative level") << QVariant(qlonglong{-1}) << QVariant(0.0) << 4294967295U << 0.0F;
}

void tst_Faders::aLevelIsSetByKeyFromNumbersAndStrings() {
    QFETCH(const QVariant, level);
    QFETCH(const QVariant, time);
    TestClock clock(0);
    rig_->add(placement("Spot", 0, 1, {controlEntry("Pan", 99)}));
    const DMXControl& control = rig_->control("Spot.Pan");
    rig_->faders().setControl("Spot.Pan", level, time);
    QTEST(control.time(), "seconds");
    clock.set(60 * Second);
    rig_->tick();
    QTEST(control.value(), "target");
}

void tst_Faders::anUnknownKeyIsPassedOver() {
    rig_->add("Spot", {"Pan"});
    const QByteArray output = standardOutputOf([this] {
        for (const char* key : {"Spot.Tilt", "Spot", "", "spot.pan"}) {
            rig_->faders().setControl(key, 100, 0);
        }
    });
    QCOMPARE(output, "");
    QCOMPARE(rig_->control("Spot.Pan").value(), 0U);
    QCOMPARE(faders().count(), std::size_t{1});
}

// Over fixtures too: all start in the same moment and arrive in the same tick.
void tst_Faders::manyLevelsAreOneEdit() {
    TestClock clock(0);
    rig_->add("Left", {"Pan", "Tilt"}, 0, 1);
    rig_->add("Right", {"Pan"}, 1, 1);
    std::vector<FaderChange> changes;
    for (DMXControl* const fader : faders().sorted()) {
        changes.push_back({.fader = fader, .value = 200, .time = 2});
    }
    Faders::setDMXValues(changes);
    clock.set(Second);
    rig_->tick();
    QCOMPARE(rig_->engine().slotLevels(0)[0], 100);
    QCOMPARE(rig_->engine().slotLevels(0)[1], 100);
    QCOMPARE(rig_->engine().slotLevels(1)[0], 100);
}

void tst_Faders::everyFaderKeepsItsTime() {
    TestClock clock(0);
    rig_->add("Spot", {"Pan", "Tilt"});
    DMXControl& pan = rig_->control("Spot.Pan");
    DMXControl& tilt = rig_->control("Spot.Tilt");
    tilt.setTime(5);
    const std::vector<FaderChange> changes{{.fader = &pan, .value = 100, .time = 2},
                                           {.fader = &tilt, .value = 100, .time = 0}};
    Faders::setDMXValues(changes);
    QCOMPARE(pan.time(), 2.0F);
    QCOMPARE(tilt.time(), 0.0F);
    QVERIFY(pan.fade().running());
    QCOMPARE(pan.value(), 0U);
    QVERIFY(!tilt.fade().running());
    QCOMPARE(tilt.value(), 100U);
}

void tst_Faders::withoutChangesNothingHappens() {
    Faders::setDMXValues({});
    QVERIFY(!rig_->engine().takeNews());
}

QTEST_APPLESS_MAIN(tst_Faders)
#include "tst_Faders.moc"
