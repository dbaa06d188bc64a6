#include "patch/Patch.h"

#include "rig/DMXControl.h"
#include "rig/Placement.h"
#include "support/StandardOutput.h"
#include "support/TestRig.h"

#include <QTest>

namespace {

QVariantMap nested(const QString& profile, const QString& name) {
    return {{"profile", profile}, {"name", name}};
}

Profiles table(const QVariantMap& profiles) {
    Profiles result;
    result.setTable(profiles);
    return result;
}

// "Spot.Pan 3-4" for a control, "blank 5-6" for a dummy.
QStringList texts(const PatchedFixture& fixture) {
    QStringList result;
    for (const PatchedControl& control : fixture.controls) {
        result.append(QString("%1 %2-%3")
                          .arg(control.dummy ? "blank" : control.key)
                          .arg(control.slot + 1)
                          .arg(control.end()));
    }
    return result;
}

// Profile 0 is ten times profile 1 and so on: ten thousand million controls.
QVariantMap bomb() {
    QVariantMap profiles;
    for (int level = 0; level < 9; ++level) {
        profiles[QString::number(level)] =
            QVariantList(10, QVariantMap{{"profile", QString::number(level + 1)}});
    }
    profiles["9"] = QVariantList{controlEntry("Dimmer")};
    return profiles;
}

const QVariantMap bar{{"name", "Bar"},
                      {"universe", "3"},
                      {"address", 10},
                      {"layer", 4},
                      {"profiles", QVariantList{QVariantMap{{"profile", "Strip"}}}}};

const QVariantMap strip{
    {"Strip", QVariantList{QVariantMap{{"label", "Cell #"}, {"newlayer", true}}, nested("Cell", "Cell #"),
                           QVariantMap{{"blank", 3}},
                           QVariantMap{{"name", "Master #"}, {"channels", 2}, {"newlayer", true}}}},
    {"Cell", QVariantList{controlEntry("Red"), QVariantMap{{"name", "Pan"}, {"channels", 2}}}}};

} // namespace

class tst_Patch : public QObject {
    Q_OBJECT

private slots:
    void aPlacementComesToControlsWithKeysAndSlots();
    void itIsWhatAFixtureComesTo();
    void numbersThatAreNoneReadAsZero();
    void slotsAreCountedWithTheirBlanks();
    void aControlIsHeardInsideTheUniverseOnly_data();
    void aControlIsHeardInsideTheUniverseOnly();
    void whatUnfoldsWithoutEndIsCutAndSaysSo();
    void aRigIsCutAsAWhole();
    void aProfileThatContainsItselfIsPassedOverSilently();
    void theFixturesAreThePresentPatch();
};

void tst_Patch::aPlacementComesToControlsWithKeysAndSlots() {
    const PatchedFixture fixture = patchedFixture(Placement::fromEntry(bar), table(strip));
    QCOMPARE(fixture.name, QString("Bar"));
    QCOMPARE(fixture.universe, 3);
    QCOMPARE(fixture.address, 10U);
    QVERIFY(fixture.complete);
    const QStringList expected{"blank 10-9", "Bar.Cell 5.Red 10-10", "Bar.Cell 5.Pan 11-12", "blank 13-15",
                               "Bar.Master 6 16-17"};
    QCOMPARE(texts(fixture), expected);
}

void tst_Patch::itIsWhatAFixtureComesTo() {
    TestRig rig;
    rig.profiles() = table(strip);
    const Fixture& made = rig.add(bar);
    const PatchedFixture fixture = patchedFixture(Placement::fromEntry(bar), table(strip));
    QCOMPARE(made.controls().size(), fixture.controls.size());
    for (std::size_t i = 0; i < fixture.controls.size(); ++i) {
        const PatchedControl& patched = fixture.controls[i];
        QCOMPARE(made.controls()[i]->address(), patched.slot);
        QCOMPARE(made.controls()[i]->channels(), patched.channels);
        QCOMPARE(made.controls()[i]->dummy(), patched.dummy);
        QVERIFY(patched.dummy || &rig.control(patched.key) == made.controls()[i].get());
    }
}

void tst_Patch::numbersThatAreNoneReadAsZero() {
    const PatchedFixture fixture = patchedFixture(
        Placement::fromEntry(QVariantMap{{"profiles", QVariantList{controlEntry("Dimmer")}}}), {});
    QCOMPARE(fixture.universe, 0);
    QCOMPARE(fixture.address, 0U);
    QCOMPARE(texts(fixture), QStringList{".Dimmer 1-1"});
    QCOMPARE(patchedFixture(Placement::fromEntry(QVariantMap{{"profiles", "Dimmer"}}), {}).controls.size(),
             std::size_t{0});
}

void tst_Patch::slotsAreCountedWithTheirBlanks() {
    QCOMPARE(patchedFixture(Placement::fromEntry(bar), table(strip)).slotCount(), std::uint64_t{8});
    QCOMPARE(patchedFixture(Placement(), {}).slotCount(), std::uint64_t{0});
    const QVariantList wide{QVariantMap{{"blank", -1}}, QVariantMap{{"blank", -1}}};
    QCOMPARE(patchedFixture(Placement::fromEntry(QVariantMap{{"profiles", wide}}), {}).slotCount(),
             std::uint64_t{8'589'934'590});
}

void tst_Patch::aControlIsHeardInsideTheUniverseOnly_data() {
    QTest::addColumn<PatchedControl>("control");
    QTest::addColumn<bool>("heard");

    QTest::newRow("the first slot") << PatchedControl{"Key", 0, 1, false} << true;
    QTest::newRow("the last slot") << PatchedControl{"Key", 511, 1, false} << true;
    QTest::newRow("one further") << PatchedControl{"Key", 512, 1, false} << false;
    QTest::newRow("the last two") << PatchedControl{"Key", 510, 2, false} << true;
    QTest::newRow("half of it") << PatchedControl{"Key", 511, 2, false} << false;
    QTest::newRow("far out") << PatchedControl{"Key", 4'294'967'295, 2, false} << false;
    QTest::newRow("a blank") << PatchedControl{"", 0, 1, true} << false;
}

void tst_Patch::aControlIsHeardInsideTheUniverseOnly() {
    QFETCH(const PatchedControl, control);
    QFETCH(const bool, heard);
    QCOMPARE(control.drives(), heard);
}

void tst_Patch::whatUnfoldsWithoutEndIsCutAndSaysSo() {
    const QVariantMap placed{{"profiles", QVariantList{QVariantMap{{"profile", "0"}}}}};
    PatchedFixture fixture;
    QCOMPARE(standardOutputOf([&] { fixture = patchedFixture(Placement::fromEntry(placed), table(bomb())); }),
             QByteArray());
    QVERIFY(!fixture.complete);
    QVERIFY(fixture.controls.size() <= 8192);
}

void tst_Patch::aRigIsCutAsAWhole() {
    const QVariantMap placed{{"profiles", QVariantList{QVariantMap{{"profile", "0"}}}}};
    ExpansionSize left = largestRig;
    const std::vector<PatchedFixture> patch = patchedFixtures(QVariantList(100, placed), table(bomb()), left);
    std::size_t controls = 0;
    for (const PatchedFixture& fixture : patch) {
        QVERIFY(!fixture.complete);
        controls += fixture.controls.size();
    }
    QCOMPARE(patch.size(), std::size_t{100});
    QVERIFY(controls <= 524'288);
    QCOMPARE(patch.back().controls.size(), std::size_t{0});
}

void tst_Patch::aProfileThatContainsItselfIsPassedOverSilently() {
    const QVariantMap profiles{
        {"Loop", QVariantList{controlEntry("Dimmer"), QVariantMap{{"profile", "Loop"}}}}};
    const QVariantMap placed{{"name", "Spot"}, {"profiles", QVariantList{QVariantMap{{"profile", "Loop"}}}}};
    PatchedFixture fixture;
    QCOMPARE(
        standardOutputOf([&] { fixture = patchedFixture(Placement::fromEntry(placed), table(profiles)); }),
        QByteArray());
    QCOMPARE(texts(fixture), QStringList{"Spot.Dimmer 1-1"});
    QVERIFY(fixture.complete);
}

void tst_Patch::theFixturesAreThePresentPatch() {
    TestRig rig;
    QCOMPARE(presentPatch(rig.fixtures()).size(), std::size_t{0});
    rig.add("Spot", {"Dimmer", "Red"}, 2, 7);
    rig.add(placement("Wash", -1, 20, {QVariantMap{{"blank", 2}}, QVariantMap{{"channels", 2}}}));
    const std::vector<PatchedFixture> patch = presentPatch(rig.fixtures());
    QCOMPARE(patch.size(), std::size_t{2});
    QCOMPARE(patch[0], (PatchedFixture{"Spot", 2, 7, {{{}, 6, 1, false}, {{}, 7, 1, false}}, true}));
    QCOMPARE(patch[1], (PatchedFixture{"Wash", -1, 20, {{{}, 19, 2, true}, {{}, 21, 2, false}}, true}));
}

QTEST_APPLESS_MAIN(tst_Patch)
#include "tst_Patch.moc"
