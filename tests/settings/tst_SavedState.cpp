#include "settings/SavedState.h"

#include "controls/DMXControl.h"
#include "settings/UserDefaults.h"
#include "support/TestRig.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

const char* const stateKey = "saved_state: Tour";
const char* const selectionsKey = "control_selections";

QVariantMap levelRecord(const QString& key, const QVariant& value, const QVariant& time = 0LL) {
    return {{"key", key}, {"value", value}, {"time", time}};
}

} // namespace

class tst_SavedState : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void withAllControlsAtTheirDefaultsAnEmptyArrayIsKept();
    void levelsAwayFromTheirDefaultsAreKept();
    void keptLevelsReplaceTheEarlierOnes();
    void aFadeIsKeptAsTheLevelThatItHasReached();
    void levelsBeyond31BitsSurvive();
    void eachConfigurationKeepsItsOwnLevels();
    void keptLevelsAreSetAtOnce();
    void controlsWithoutAKeptLevelAreLeftAlone();
    void recordsAreReadAsNumbers();
    void aKeyThatNamesNoControlIsPassedOver();
    void storedLevelsOfAWrongTypeDoNothing_data();
    void storedLevelsOfAWrongTypeDoNothing();

    void aViewWithoutASelectionKeepsItsPosition();
    void withoutViewsAnEmptyArrayIsKept();
    void aSelectedControlThatStandsUnderNoKeyIsNotKept();
    void keptSelectionsAreSelectedAgain();
    void surplusSelectionsAreIgnored();
    void viewsWithoutAKeptSelectionHaveNone();
    void aSelectionWhoseControlIsGoneIsSkipped();
    void aSelectionOfAnotherViewIsHarmless();
    void storedSelectionsOfAWrongTypeDoNothing_data();
    void storedSelectionsOfAWrongTypeDoNothing();

private:
    QVariantList kept(const QString& key) const { return defaults_->objectForKey(key).toList(); }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<UserDefaults> defaults_;
    std::unique_ptr<SavedState> state_;
    std::unique_ptr<TestRig> rig_;
};

void tst_SavedState::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    defaults_ = std::make_unique<UserDefaults>(folder_->filePath("defaults.plist"));
    state_ = std::make_unique<SavedState>(*defaults_);
    rig_ = std::make_unique<TestRig>();
}

void tst_SavedState::cleanup() {
    rig_.reset();
    state_.reset();
    defaults_.reset();
    folder_.reset();
}

void tst_SavedState::withAllControlsAtTheirDefaultsAnEmptyArrayIsKept() {
    rig_->add(placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan", 128)}));
    controlNamed("Spot.Dimmer").setTime(2);
    state_->saveState(stateKey);
    QCOMPARE(defaults_->objectForKey(stateKey), QVariant(QVariantList()));
}

void tst_SavedState::levelsAwayFromTheirDefaultsAreKept() {
    rig_->add(
        placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan", 128), controlEntry("Tilt")}));
    controlNamed("Spot.Dimmer").setDMXValue(200, 0);
    controlNamed("Spot.Pan").setDMXValue(0, 1.5F);
    controlNamed("Spot.Pan").setValue(0);
    state_->saveState(stateKey);
    QCOMPARE(kept(stateKey), (QVariantList{levelRecord("Spot.Dimmer", 200LL), levelRecord("Spot.Pan", 0LL)}));
}

void tst_SavedState::keptLevelsReplaceTheEarlierOnes() {
    rig_->add("Spot", {"Dimmer", "Tilt"});
    controlNamed("Spot.Dimmer").setValue(1);
    state_->saveState(stateKey);
    controlNamed("Spot.Dimmer").setValue(0);
    controlNamed("Spot.Tilt").setValue(2);
    state_->saveState(stateKey);
    QCOMPARE(kept(stateKey), QVariantList{levelRecord("Spot.Tilt", 2LL)});
}

void tst_SavedState::aFadeIsKeptAsTheLevelThatItHasReached() {
    rig_->add("Spot", {"Dimmer"});
    controlNamed("Spot.Dimmer").setValue(30);
    controlNamed("Spot.Dimmer").setDMXValue(200, 60);
    state_->saveState(stateKey);
    QCOMPARE(kept(stateKey), QVariantList{levelRecord("Spot.Dimmer", 30LL)});
}

void tst_SavedState::levelsBeyond31BitsSurvive() {
    rig_->add("Spot", {"Dimmer"});
    controlNamed("Spot.Dimmer").setValue(0xFFFFFFFFU);
    state_->saveState(stateKey);
    QCOMPARE(kept(stateKey), QVariantList{levelRecord("Spot.Dimmer", -1LL)});
    controlNamed("Spot.Dimmer").setValue(0);
    state_->restoreState(stateKey);
    QCOMPARE(controlNamed("Spot.Dimmer").value(), 0xFFFFFFFFU);
}

void tst_SavedState::eachConfigurationKeepsItsOwnLevels() {
    rig_->add("Spot", {"Dimmer"});
    controlNamed("Spot.Dimmer").setValue(10);
    state_->saveState("saved_state: Tour");
    controlNamed("Spot.Dimmer").setValue(20);
    state_->saveState("saved_state: Foyer");
    state_->restoreState("saved_state: Tour");
    QCOMPARE(controlNamed("Spot.Dimmer").value(), 10U);
    state_->restoreState("saved_state: Foyer");
    QCOMPARE(controlNamed("Spot.Dimmer").value(), 20U);
}

void tst_SavedState::keptLevelsAreSetAtOnce() {
    rig_->add("Spot", {"Dimmer"});
    defaults_->setObject(QVariantList{levelRecord("Spot.Dimmer", 200LL)}, stateKey);
    controlNamed("Spot.Dimmer").setDMXValue(50, 10);
    state_->restoreState(stateKey);
    QCOMPARE(controlNamed("Spot.Dimmer").value(), 200U);
    QCOMPARE(controlNamed("Spot.Dimmer").time(), 0.0F);
    QVERIFY(!controlNamed("Spot.Dimmer").fade().running());
}

void tst_SavedState::controlsWithoutAKeptLevelAreLeftAlone() {
    rig_->add("Spot", {"Dimmer", "Pan"});
    controlNamed("Spot.Pan").setValue(77);
    state_->restoreState(stateKey);
    QCOMPARE(controlNamed("Spot.Pan").value(), 77U);
    defaults_->setObject(QVariantList{levelRecord("Spot.Dimmer", 200LL)}, stateKey);
    state_->restoreState(stateKey);
    QCOMPARE(controlNamed("Spot.Pan").value(), 77U);
}

void tst_SavedState::recordsAreReadAsNumbers() {
    rig_->add("Spot", {"Dimmer", "Pan"});
    defaults_->setObject(
        QVariantList{levelRecord("Spot.Dimmer", "12abc", "0"), levelRecord("Spot.Pan", QVariantList{9LL})},
        stateKey);
    controlNamed("Spot.Pan").setValue(5);
    state_->restoreState(stateKey);
    QCOMPARE(controlNamed("Spot.Dimmer").value(), 12U);
    QCOMPARE(controlNamed("Spot.Pan").value(), 0U);
}

void tst_SavedState::aKeyThatNamesNoControlIsPassedOver() {
    rig_->add("Spot", {"Dimmer"});
    defaults_->setObject(
        QVariantList{levelRecord("Wash.Dimmer", 1LL), levelRecord("", 2LL), levelRecord("Spot.Dimmer", 3LL)},
        stateKey);
    state_->restoreState(stateKey);
    QCOMPARE(controlNamed("Spot.Dimmer").value(), 3U);
}

void tst_SavedState::storedLevelsOfAWrongTypeDoNothing_data() {
    QTest::addColumn<QVariant>("stored");

    QTest::newRow("nothing") << QVariant();
    QTest::newRow("a string") << QVariant("Spot.Dimmer");
    QTest::newRow("an integer") << QVariant(200LL);
    QTest::newRow("one record without an array") << QVariant(levelRecord("Spot.Dimmer", 200LL));
    QTest::newRow("an array of strings") << QVariant(QVariantList{"Spot.Dimmer", "200"});
    QTest::newRow("an array of arrays") << QVariant(QVariantList{QVariantList{"Spot.Dimmer", 200LL}});
    QTest::newRow("records without keys") << QVariant(QVariantList{QVariantMap{{"value", 200LL}}});
    QTest::newRow("a key that is no string")
        << QVariant(QVariantList{QVariantMap{{"key", QVariantList{"Spot.Dimmer"}}, {"value", 200LL}}});
}

void tst_SavedState::storedLevelsOfAWrongTypeDoNothing() {
    QFETCH(const QVariant, stored);

    rig_->add("Spot", {"Dimmer"});
    controlNamed("Spot.Dimmer").setValue(30);
    defaults_->setObject(stored, stateKey);
    state_->restoreState(stateKey);
    QCOMPARE(controlNamed("Spot.Dimmer").value(), 30U);
}

void tst_SavedState::aViewWithoutASelectionKeepsItsPosition() {
    rig_->add("Left", {"Dimmer"});
    rig_->add("Middle", {"Dimmer"});
    rig_->add("Right", {"Dimmer", "Pan"});
    controlNamed("Left.Dimmer").makeFirstResponder();
    controlNamed("Right.Pan").makeFirstResponder();
    state_->saveControlSelections();
    QCOMPARE(kept(selectionsKey), (QVariantList{"Left.Dimmer", "", "Right.Pan"}));
}

void tst_SavedState::withoutViewsAnEmptyArrayIsKept() {
    defaults_->setObject(QVariantList{"Left.Dimmer"}, selectionsKey);
    state_->saveControlSelections();
    QCOMPARE(defaults_->objectForKey(selectionsKey), QVariant(QVariantList()));
}

void tst_SavedState::aSelectedControlThatStandsUnderNoKeyIsNotKept() {
    ControlView& first = rig_->add("Twin", {"Dimmer"});
    ControlView& second = rig_->add("Twin", {"Dimmer"});
    first.controls().front()->makeFirstResponder();
    second.controls().front()->makeFirstResponder();
    state_->saveControlSelections();
    QCOMPARE(kept(selectionsKey), (QVariantList{"", "Twin.Dimmer"}));
}

void tst_SavedState::keptSelectionsAreSelectedAgain() {
    ControlView& left = rig_->add("Left", {"Dimmer", "Pan"});
    ControlView& right = rig_->add("Right", {"Dimmer"});
    defaults_->setObject(QVariantList{"Left.Pan", "Right.Dimmer"}, selectionsKey);
    state_->restoreControlSelections();
    QCOMPARE(left.selectedControl(), &controlNamed("Left.Pan"));
    QCOMPARE(left.window()->focusWidget(), &controlNamed("Left.Pan"));
    QCOMPARE(right.selectedControl(), &controlNamed("Right.Dimmer"));
    QCOMPARE(right.window()->focusWidget(), &controlNamed("Right.Dimmer"));
}

void tst_SavedState::surplusSelectionsAreIgnored() {
    ControlView& left = rig_->add("Left", {"Dimmer", "Pan"});
    defaults_->setObject(QVariantList{"Left.Dimmer", "Left.Pan", ""}, selectionsKey);
    state_->restoreControlSelections();
    QCOMPARE(left.selectedControl(), &controlNamed("Left.Dimmer"));
}

void tst_SavedState::viewsWithoutAKeptSelectionHaveNone() {
    ControlView& left = rig_->add("Left", {"Dimmer"});
    ControlView& right = rig_->add("Right", {"Dimmer"});
    defaults_->setObject(QVariantList{"Left.Dimmer"}, selectionsKey);
    state_->restoreControlSelections();
    QCOMPARE(left.selectedControl(), &controlNamed("Left.Dimmer"));
    QCOMPARE(right.selectedControl(), nullptr);
}

void tst_SavedState::aSelectionWhoseControlIsGoneIsSkipped() {
    ControlView& left = rig_->add("Left", {"Dimmer"});
    ControlView& right = rig_->add("Right", {"Dimmer"});
    defaults_->setObject(QVariantList{"Old.Dimmer", "Right.Dimmer"}, selectionsKey);
    state_->restoreControlSelections();
    QCOMPARE(left.selectedControl(), nullptr);
    QCOMPARE(right.selectedControl(), &controlNamed("Right.Dimmer"));
}

void tst_SavedState::aSelectionOfAnotherViewIsHarmless() {
    ControlView& left = rig_->add("Left", {"Dimmer", "Pan"});
    ControlView& right = rig_->add("Right", {"Dimmer"});
    defaults_->setObject(QVariantList{"Right.Dimmer", "Left.Dimmer"}, selectionsKey);
    state_->restoreControlSelections();
    controlNamed("Left.Pan").makeFirstResponder();
    QTest::keyClicks(&controlNamed("Left.Pan"), "12");
    QTest::keyClick(&controlNamed("Left.Pan"), Qt::Key_Tab);
    QCOMPARE(left.selectedControl(), &controlNamed("Left.Dimmer"));
    left.setIsKey(true);
    right.setIsKey(true);
    ControlView::reset();
    DMXControl::reset();
}

void tst_SavedState::storedSelectionsOfAWrongTypeDoNothing_data() {
    QTest::addColumn<QVariant>("stored");

    QTest::newRow("nothing") << QVariant();
    QTest::newRow("a string") << QVariant("Left.Dimmer");
    QTest::newRow("an integer") << QVariant(1LL);
    QTest::newRow("a dictionary") << QVariant(QVariantMap{{"0", "Left.Dimmer"}});
    QTest::newRow("an array of anything") << QVariant(QVariantList{QVariantList{"Left.Dimmer"}, 1LL, true});
}

void tst_SavedState::storedSelectionsOfAWrongTypeDoNothing() {
    QFETCH(const QVariant, stored);

    ControlView& left = rig_->add("Left", {"Dimmer"});
    defaults_->setObject(stored, selectionsKey);
    state_->restoreControlSelections();
    QCOMPARE(left.selectedControl(), nullptr);
}

QTEST_MAIN(tst_SavedState)
#include "tst_SavedState.moc"
