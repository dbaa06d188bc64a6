#include "cues/CueStore.h"

#include "rig/DMXControl.h"
#include "settings/Settings.h"
#include "support/AsWritten.h"
#include "support/TestRig.h"

#include <QTest>

#include <limits>

namespace {

using Number = std::optional<QString>;

QVariantMap record(const QString& key, qlonglong value, double time) {
    return {{"key", key}, {"value", value}, {"time", time}};
}

Settings settingsWithCues(const QVariantMap& cues) {
    return Settings(QVariantMap{{"cues", cues}});
}

} // namespace

class tst_CueStore : public QObject {
    Q_OBJECT

private slots:
    void init() { rig_ = std::make_unique<TestRig>(); }
    void cleanup() { rig_.reset(); }

    void cueNumbersAreSorted();
    void theFirstAndTheLastNumber_data();
    void theFirstAndTheLastNumber();
    void theNumbersAroundAnother_data();
    void theNumbersAroundAnother();
    void cueNumbersStayAsTyped();
    void withoutACueTableTheListIsEmpty_data();
    void withoutACueTableTheListIsEmpty();
    void anEntryIsWhatStandsInTheTable();
    void aNewCueHoldsThePlaceholder();
    void aNewCueReplacesAStoredOne();
    void aNewCueMakesTheTable();
    void withoutARigACueIsNotMade();

    void withEveryControlAtRestAnEmptyListIsStored();
    void controlsAwayFromTheirDefaultsAreStored();
    void aFadeTimeAloneIsStored();
    void aFadeTimeThatIsNoNumberIsStored();
    void aLevelBeyond31BitsIsStoredAsNegative();
    void aRunningFadeIsStoredAsItIsNow();
    void storingAgainKeepsOnlyTheSecond();
    void storingWithoutACueTableGoesNowhere();
    void recordsHaveTheTypesOfTheirNumbers();
    void aRemovedCueIsGone();
    void compactingLeavesWhatIsWritten();

private:
    std::unique_ptr<TestRig> rig_;
};

void tst_CueStore::cueNumbersAreSorted() {
    Settings settings =
        settingsWithCues({{"10", ""}, {"9", ""}, {"1.10", ""}, {"1.2", ""}, {"1", QVariantList()}});
    QCOMPARE(CueStore(settings, rig_->faders()).sortedCueList(),
             (QStringList{"1", "1.2", "1.10", "9", "10"}));
}

void tst_CueStore::theFirstAndTheLastNumber_data() {
    QTest::addColumn<QVariantMap>("cues");
    QTest::addColumn<Number>("first");
    QTest::addColumn<Number>("last");

    QTest::newRow("no cue") << QVariantMap() << Number() << Number();
    QTest::newRow("one") << QVariantMap{{"7", ""}} << Number("7") << Number("7");
    QTest::newRow("several") << QVariantMap{{"9", ""}, {"10", ""}, {"1.10", ""}, {"1.2", ""}} << Number("1.2")
                             << Number("10");
}

void tst_CueStore::theFirstAndTheLastNumber() {
    QFETCH(const QVariantMap, cues);
    QFETCH(const Number, first);
    QFETCH(const Number, last);

    Settings settings = settingsWithCues(cues);
    QCOMPARE(CueStore(settings, rig_->faders()).firstNumber(), first);
    QCOMPARE(CueStore(settings, rig_->faders()).lastNumber(), last);
}

void tst_CueStore::theNumbersAroundAnother_data() {
    QTest::addColumn<QVariantMap>("cues");
    QTest::addColumn<QString>("number");
    QTest::addColumn<Number>("before");
    QTest::addColumn<Number>("after");

    const QVariantMap four{{"9", ""}, {"10", ""}, {"1.10", ""}, {"1.2", ""}};
    QTest::newRow("the first") << four << "1.2" << Number("10") << Number("1.10");
    QTest::newRow("the second") << four << "1.10" << Number("1.2") << Number("9");
    QTest::newRow("the third") << four << "9" << Number("1.10") << Number("10");
    QTest::newRow("the last") << four << "10" << Number("9") << Number("1.2");
    QTest::newRow("one that is not there") << four << "2" << Number() << Number();
    QTest::newRow("the only one") << QVariantMap{{"7", ""}} << "7" << Number("7") << Number("7");
    QTest::newRow("without cues") << QVariantMap() << "7" << Number() << Number();
}

void tst_CueStore::theNumbersAroundAnother() {
    QFETCH(const QVariantMap, cues);
    QFETCH(const QString, number);
    QFETCH(const Number, before);
    QFETCH(const Number, after);

    Settings settings = settingsWithCues(cues);
    QCOMPARE(CueStore(settings, rig_->faders()).numberBefore(number), before);
    QCOMPARE(CueStore(settings, rig_->faders()).numberAfter(number), after);
}

void tst_CueStore::cueNumbersStayAsTyped() {
    Settings settings{QVariantMap()};
    CueStore cues(settings, rig_->faders());
    for (const char* number : {" 1 ", "A&B", "Clear", "01", "1.", "\t2"}) {
        cues.create(number);
    }
    QCOMPARE(cues.sortedCueList(), (QStringList{"A&B", "Clear", " 1 ", "01", "1.", "\t2"}));
}

void tst_CueStore::withoutACueTableTheListIsEmpty_data() {
    QTest::addColumn<QVariantMap>("rig");

    QTest::newRow("no table") << QVariantMap();
    QTest::newRow("an array") << QVariantMap{{"cues", QVariantList{"1"}}};
    QTest::newRow("a text") << QVariantMap{{"cues", "1"}};
}

void tst_CueStore::withoutACueTableTheListIsEmpty() {
    QFETCH(const QVariantMap, rig);

    Settings settings(rig);
    QCOMPARE(CueStore(settings, rig_->faders()).sortedCueList(), QStringList());
    QVERIFY(!CueStore(settings, rig_->faders()).entry("1").isValid());
    Settings none;
    QCOMPARE(CueStore(none, rig_->faders()).sortedCueList(), QStringList());
}

void tst_CueStore::anEntryIsWhatStandsInTheTable() {
    const QVariantList records{record("Spot.Dimmer", 200, 0)};
    Settings settings = settingsWithCues({{"1", records}, {"2", "cue data goes here"}, {"3", 7LL}});
    const CueStore cues(settings, rig_->faders());
    QCOMPARE(cues.entry("1"), QVariant(records));
    QCOMPARE(cues.entry("2"), QVariant("cue data goes here"));
    QCOMPARE(cues.entry("3"), QVariant(7LL));
    QVERIFY(!cues.entry("4").isValid());
    QVERIFY(!cues.entry("1 ").isValid());
}

void tst_CueStore::aNewCueHoldsThePlaceholder() {
    Settings settings = settingsWithCues({{"1", QVariantList()}});
    CueStore(settings, rig_->faders()).create("3");
    QCOMPARE(settings.cues(), (QVariantMap{{"1", QVariantList()}, {"3", "cue data goes here"}}));
}

void tst_CueStore::aNewCueReplacesAStoredOne() {
    Settings settings = settingsWithCues({{"1", QVariantList{record("Spot.Dimmer", 200, 0)}}});
    CueStore(settings, rig_->faders()).create("1");
    QCOMPARE(settings.cues(), (QVariantMap{{"1", "cue data goes here"}}));
}

void tst_CueStore::aNewCueMakesTheTable() {
    Settings settings(QVariantMap{{"house", "Old Town"}});
    CueStore(settings, rig_->faders()).create("1");
    const QVariantMap rig{{"house", "Old Town"}, {"cues", QVariantMap{{"1", "cue data goes here"}}}};
    QCOMPARE(settings.dictionary(), std::optional(rig));
}

void tst_CueStore::withoutARigACueIsNotMade() {
    Settings settings;
    CueStore(settings, rig_->faders()).create("1");
    QVERIFY(!settings.dictionary());
}

void tst_CueStore::withEveryControlAtRestAnEmptyListIsStored() {
    rig_->add(placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan", 128)}));
    Settings settings = settingsWithCues({{"1", "cue data goes here"}});
    CueStore(settings, rig_->faders()).store("1");
    QCOMPARE(asWritten(settings.cues()), QVariant(QVariantMap{{"1", QVariantList()}}));
}

void tst_CueStore::controlsAwayFromTheirDefaultsAreStored() {
    rig_->add(
        placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan", 128), controlEntry("Tilt")}));
    rig_->add("Wash", {"Dimmer"});
    rig_->control("Spot.Dimmer").setValue(200);
    rig_->control("Spot.Dimmer").setTime(2.5);
    rig_->control("Spot.Pan").setValue(0);
    rig_->control("Wash.Dimmer").setValue(1);
    Settings settings = settingsWithCues({});
    CueStore(settings, rig_->faders()).store("1");
    QCOMPARE(settings.cues().value("1").toList(),
             (QVariantList{record("Spot.Dimmer", 200, 2.5), record("Spot.Pan", 0, 0),
                           record("Wash.Dimmer", 1, 0)}));
}

void tst_CueStore::aFadeTimeAloneIsStored() {
    rig_->add(placement("Spot", 0, 1, {controlEntry("Pan", 128)}));
    rig_->control("Spot.Pan").setTime(1.5);
    Settings settings = settingsWithCues({});
    CueStore(settings, rig_->faders()).store("1");
    QCOMPARE(settings.cues().value("1").toList(), QVariantList{record("Spot.Pan", 128, 1.5)});
}

void tst_CueStore::aFadeTimeThatIsNoNumberIsStored() {
    rig_->add("Spot", {"Pan"});
    rig_->control("Spot.Pan").setTime(std::numeric_limits<float>::quiet_NaN());
    Settings settings = settingsWithCues({});
    CueStore(settings, rig_->faders()).store("1");
    QCOMPARE(settings.cues().value("1").toList().size(), 1);
    const QVariantMap stored = settings.cues().value("1").toList().at(0).toMap();
    QCOMPARE(stored.value("key"), QVariant("Spot.Pan"));
    QVERIFY(qIsNaN(stored.value("time").toDouble()));
}

void tst_CueStore::aLevelBeyond31BitsIsStoredAsNegative() {
    rig_->add("Spot", {"Pan"});
    rig_->control("Spot.Pan").setValue(0x80000000U);
    Settings settings = settingsWithCues({});
    CueStore(settings, rig_->faders()).store("1");
    QCOMPARE(settings.cues().value("1").toList(), QVariantList{record("Spot.Pan", -2147483648LL, 0)});
}

void tst_CueStore::aRunningFadeIsStoredAsItIsNow() {
    rig_->add("Spot", {"Pan"});
    rig_->control("Spot.Pan").setValue(10);
    rig_->control("Spot.Pan").setDMXValue(200, 30);
    Settings settings = settingsWithCues({});
    CueStore(settings, rig_->faders()).store("1");
    QCOMPARE(settings.cues().value("1").toList(), QVariantList{record("Spot.Pan", 10, 30)});
}

void tst_CueStore::storingAgainKeepsOnlyTheSecond() {
    rig_->add("Spot", {"Dimmer", "Pan"});
    Settings settings = settingsWithCues({{"2", QVariantList()}});
    rig_->control("Spot.Dimmer").setValue(1);
    CueStore(settings, rig_->faders()).store("1");
    rig_->control("Spot.Dimmer").setValue(0);
    rig_->control("Spot.Pan").setValue(2);
    CueStore(settings, rig_->faders()).store("1");
    const QVariantMap expected{{"1", QVariantList{record("Spot.Pan", 2, 0)}}, {"2", QVariantList()}};
    QCOMPARE(asWritten(settings.cues()), QVariant(expected));
}

void tst_CueStore::storingWithoutACueTableGoesNowhere() {
    rig_->add("Spot", {"Dimmer"});
    rig_->control("Spot.Dimmer").setValue(1);
    Settings settings{QVariantMap()};
    CueStore(settings, rig_->faders()).store("1");
    QCOMPARE(settings.dictionary(), std::optional(QVariantMap()));
}

void tst_CueStore::recordsHaveTheTypesOfTheirNumbers() {
    rig_->add("Spot", {"Dimmer"});
    rig_->control("Spot.Dimmer").setValue(1);
    Settings settings = settingsWithCues({});
    CueStore(settings, rig_->faders()).store("1");
    const QVariantMap stored = settings.cues().value("1").toList().at(0).toMap();
    QCOMPARE(stored.keys(), (QStringList{"key", "time", "value"}));
    QCOMPARE(stored.value("value").typeId(), int{QMetaType::LongLong});
    QCOMPARE(stored.value("time").typeId(), int{QMetaType::Double});
}

void tst_CueStore::aRemovedCueIsGone() {
    Settings settings = settingsWithCues({{"1", QVariantList()}, {"2", QVariantList()}});
    CueStore cues(settings, rig_->faders());
    cues.remove("1");
    cues.remove("no such cue");
    QCOMPARE(cues.sortedCueList(), QStringList{"2"});
}

void tst_CueStore::compactingLeavesWhatIsWritten() {
    const QVariantMap cues{{"1", QVariantList{record("Spot.Dimmer", 200, 2.5), record("Spot.Dimmer", 1, 0)}},
                           {"2", "cue data goes here"},
                           {"3", QVariantList{QVariantMap{{"key", "Spot.Dimmer"}, {"value", "12"}}}},
                           {"4", QVariantList()}};
    Settings settings = settingsWithCues(cues);
    CueStore(settings, rig_->faders()).compact();
    QCOMPARE(asWritten(settings.cues()), QVariant(cues));
    Settings none;
    CueStore(none, rig_->faders()).compact();
    QVERIFY(!none.dictionary());
}

QTEST_MAIN(tst_CueStore)
#include "tst_CueStore.moc"
