#include "settings/ShowSnapshot.h"

#include "rig/DMXControl.h"
#include "support/TestRig.h"

#include <QTest>

class tst_ShowSnapshot : public QObject {
    Q_OBJECT

private slots:
    void levelsAwayFromTheirDefaultsAreTaken();
    void levelsAreRestoredAtOnce();
    void aKeyThatNamesNoControlIsPassedOver();
};

void tst_ShowSnapshot::levelsAwayFromTheirDefaultsAreTaken() {
    TestRig rig;
    rig.add(placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan", 128), controlEntry("Red")}));
    rig.control("Spot.Pan").setValue(0);
    rig.control("Spot.Red").setValue(255);
    const std::vector<KeptLevel> levels = presentLevels(rig.faders());
    QCOMPARE(levels.size(), 2U);
    QCOMPARE(levels.at(0).key, QString("Spot.Pan"));
    QCOMPARE(levels.at(0).value, 0U);
    QCOMPARE(levels.at(1).key, QString("Spot.Red"));
    QCOMPARE(levels.at(1).value, 255U);
}

void tst_ShowSnapshot::levelsAreRestoredAtOnce() {
    TestRig rig;
    rig.add("Spot", {"Dimmer", "Red"});
    restoreLevels({{.key = "Spot.Red", .value = 9}}, rig.faders());
    QCOMPARE(rig.control("Spot.Red").value(), 9U);
    QCOMPARE(rig.control("Spot.Red").time(), 0.0F);
    QCOMPARE(rig.control("Spot.Dimmer").value(), 0U);
}

void tst_ShowSnapshot::aKeyThatNamesNoControlIsPassedOver() {
    TestRig rig;
    rig.add("Spot", {"Dimmer"});
    restoreLevels(
        {{.key = "Spot.Blue", .value = 9}, {.key = "", .value = 9}, {.key = "Spot.Dimmer", .value = 1}},
        rig.faders());
    QCOMPARE(rig.control("Spot.Dimmer").value(), 1U);
}

QTEST_MAIN(tst_ShowSnapshot)
#include "tst_ShowSnapshot.moc"
