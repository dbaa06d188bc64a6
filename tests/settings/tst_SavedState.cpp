#include "settings/SavedState.h"

#include "panels/ControlView.h"
#include "panels/EditView.h"
#include "rig/DMXControl.h"
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
    std::unique_ptr<TestRig> rig_;
    std::unique_ptr<SavedState> state_;
};

void tst_SavedState::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    defaults_ = std::make_unique<UserDefaults>(folder_->filePath("defaults.plist"));
    rig_ = std::make_unique<TestRig>();
    state_ = std::make_unique<SavedState>(*defaults_, rig_->faders(), rig_->fixtures());
}

void tst_SavedState::cleanup() {
    state_.reset();
    rig_.reset();
    defaults_.reset();
    folder_.reset();
}

void tst_SavedState::withAllControlsAtTheirDefaultsAnEmptyArrayIsKept() {
    rig_->add(placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan", 128)}));
    rig_->control("Spot.Dimmer").setTime(2);
    state_->saveState(stateKey);
    QCOMPARE(defaults_->objectForKey(stateKey), QVariant(QVariantList()));
}

void tst_SavedState::levelsAwayFromTheirDefaultsAreKept() {
    rig_->add(
        placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan", 128), controlEntry("Tilt")}));
    rig_->control("Spot.Dimmer").setDMXValue(200, 0);
    rig_->control("Spot.Pan").setDMXValue(0, 1.5F);
    rig_->control("Spot.Pan").setValue(0);
    state_->saveState(stateKey);
    QCOMPARE(kept(stateKey), (QVariantList{levelRecord("Spot.Dimmer", 200LL), levelRecord("Spot.Pan", 0LL)}));
}

void tst_SavedState::keptLevelsReplaceTheEarlierOnes() {
    rig_->add("Spot", {"Dimmer", "Tilt"});
    rig_->control("Spot.Dimmer").setValue(1);
    state_->saveState(stateKey);
    rig_->control("Spot.Dimmer").setValue(0);
    rig_->control("Spot.Tilt").setValue(2);
    state_->saveState(stateKey);
    QCOMPARE(kept(stateKey), QVariantList{levelRecord("Spot.Tilt", 2LL)});
}

void tst_SavedState::aFadeIsKeptAsTheLevelThatItHasReached() {
    rig_->add("Spot", {"Dimmer"});
    rig_->control("Spot.Dimmer").setValue(30);
    rig_->control("Spot.Dimmer").setDMXValue(200, 60);
    state_->saveState(stateKey);
    QCOMPARE(kept(stateKey), QVariantList{levelRecord("Spot.Dimmer", 30LL)});
}

void tst_SavedState::levelsBeyond31BitsSurvive() {
    rig_->add("Spot", {"Dimmer"});
    rig_->control("Spot.Dimmer").setValue(0xFFFFFFFFU);
    state_->saveState(stateKey);
    QCOMPARE(kept(stateKey), QVariantList{levelRecord("Spot.Dimmer", -1LL)});
    rig_->control("Spot.Dimmer").setValue(0);
    state_->restoreState(stateKey);
    QCOMPARE(rig_->control("Spot.Dimmer").value(), 0xFFFFFFFFU);
}

void tst_SavedState::eachConfigurationKeepsItsOwnLevels() {
    rig_->add("Spot", {"Dimmer"});
    rig_->control("Spot.Dimmer").setValue(10);
    state_->saveState("saved_state: Tour");
    rig_->control("Spot.Dimmer").setValue(20);
    state_->saveState("saved_state: Foyer");
    state_->restoreState("saved_state: Tour");
    QCOMPARE(rig_->control("Spot.Dimmer").value(), 10U);
    state_->restoreState("saved_state: Foyer");
    QCOMPARE(rig_->control("Spot.Dimmer").value(), 20U);
}

void tst_SavedState::keptLevelsAreSetAtOnce() {
    rig_->add("Spot", {"Dimmer"});
    defaults_->setObject(QVariantList{levelRecord("Spot.Dimmer", 200LL)}, stateKey);
    rig_->control("Spot.Dimmer").setDMXValue(50, 10);
    state_->restoreState(stateKey);
    QCOMPARE(rig_->control("Spot.Dimmer").value(), 200U);
    QCOMPARE(rig_->control("Spot.Dimmer").time(), 0.0F);
    QVERIFY(!rig_->control("Spot.Dimmer").fade().running());
}

void tst_SavedState::controlsWithoutAKeptLevelAreLeftAlone() {
    rig_->add("Spot", {"Dimmer", "Pan"});
    rig_->control("Spot.Pan").setValue(77);
    state_->restoreState(stateKey);
    QCOMPARE(rig_->control("Spot.Pan").value(), 77U);
    defaults_->setObject(QVariantList{levelRecord("Spot.Dimmer", 200LL)}, stateKey);
    state_->restoreState(stateKey);
    QCOMPARE(rig_->control("Spot.Pan").value(), 77U);
}

void tst_SavedState::recordsAreReadAsNumbers() {
    rig_->add("Spot", {"Dimmer", "Pan"});
    defaults_->setObject(
        QVariantList{levelRecord("Spot.Dimmer", "12abc", "0"), levelRecord("Spot.Pan", QVariantList{9LL})},
        stateKey);
    rig_->control("Spot.Pan").setValue(5);
    state_->restoreState(stateKey);
    QCOMPARE(rig_->control("Spot.Dimmer").value(), 12U);
    QCOMPARE(rig_->control("Spot.Pan").value(), 0U);
}

void tst_SavedState::aKeyThatNamesNoControlIsPassedOver() {
    rig_->add("Spot", {"Dimmer"});
    defaults_->setObject(
        QVariantList{levelRecord("Wash.Dimmer", 1LL), levelRecord("", 2LL), levelRecord("Spot.Dimmer", 3LL)},
        stateKey);
    state_->restoreState(stateKey);
    QCOMPARE(rig_->control("Spot.Dimmer").value(), 3U);
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
    rig_->control("Spot.Dimmer").setValue(30);
    defaults_->setObject(stored, stateKey);
    state_->restoreState(stateKey);
    QCOMPARE(rig_->control("Spot.Dimmer").value(), 30U);
}

void tst_SavedState::aViewWithoutASelectionKeepsItsPosition() {
    rig_->add("Left", {"Dimmer"});
    rig_->add("Middle", {"Dimmer"});
    rig_->add("Right", {"Dimmer", "Pan"});
    rig_->control("Left.Dimmer").becomeFirstResponder();
    rig_->control("Right.Pan").becomeFirstResponder();
    state_->saveControlSelections();
    QCOMPARE(kept(selectionsKey), (QVariantList{"Left.Dimmer", "", "Right.Pan"}));
}

void tst_SavedState::withoutViewsAnEmptyArrayIsKept() {
    defaults_->setObject(QVariantList{"Left.Dimmer"}, selectionsKey);
    state_->saveControlSelections();
    QCOMPARE(defaults_->objectForKey(selectionsKey), QVariant(QVariantList()));
}

void tst_SavedState::aSelectedControlThatStandsUnderNoKeyIsNotKept() {
    Fixture& first = rig_->add("Twin", {"Dimmer"});
    Fixture& second = rig_->add("Twin", {"Dimmer"});
    first.controls().front()->becomeFirstResponder();
    second.controls().front()->becomeFirstResponder();
    state_->saveControlSelections();
    QCOMPARE(kept(selectionsKey), (QVariantList{"", "Twin.Dimmer"}));
}

void tst_SavedState::keptSelectionsAreSelectedAgain() {
    Fixture& left = rig_->add("Left", {"Dimmer", "Pan"});
    Fixture& right = rig_->add("Right", {"Dimmer"});
    defaults_->setObject(QVariantList{"Left.Pan", "Right.Dimmer"}, selectionsKey);
    state_->restoreControlSelections();
    QCOMPARE(left.selectedControl(), &rig_->control("Left.Pan"));
    QVERIFY(rig_->control("Left.Pan").firstResponder());
    QCOMPARE(right.selectedControl(), &rig_->control("Right.Dimmer"));
    QVERIFY(rig_->control("Right.Dimmer").firstResponder());
}

void tst_SavedState::surplusSelectionsAreIgnored() {
    Fixture& left = rig_->add("Left", {"Dimmer", "Pan"});
    defaults_->setObject(QVariantList{"Left.Dimmer", "Left.Pan", ""}, selectionsKey);
    state_->restoreControlSelections();
    QCOMPARE(left.selectedControl(), &rig_->control("Left.Dimmer"));
}

void tst_SavedState::viewsWithoutAKeptSelectionHaveNone() {
    Fixture& left = rig_->add("Left", {"Dimmer"});
    Fixture& right = rig_->add("Right", {"Dimmer"});
    defaults_->setObject(QVariantList{"Left.Dimmer"}, selectionsKey);
    state_->restoreControlSelections();
    QCOMPARE(left.selectedControl(), &rig_->control("Left.Dimmer"));
    QCOMPARE(right.selectedControl(), nullptr);
}

void tst_SavedState::aSelectionWhoseControlIsGoneIsSkipped() {
    Fixture& left = rig_->add("Left", {"Dimmer"});
    Fixture& right = rig_->add("Right", {"Dimmer"});
    defaults_->setObject(QVariantList{"Old.Dimmer", "Right.Dimmer"}, selectionsKey);
    state_->restoreControlSelections();
    QCOMPARE(left.selectedControl(), nullptr);
    QCOMPARE(right.selectedControl(), &rig_->control("Right.Dimmer"));
}

void tst_SavedState::aSelectionOfAnotherViewIsHarmless() {
    Fixture& left = rig_->add("Left", {"Dimmer", "Pan"});
    Fixture& right = rig_->add("Right", {"Dimmer"});
    defaults_->setObject(QVariantList{"Right.Dimmer", "Left.Dimmer"}, selectionsKey);
    state_->restoreControlSelections();
    {
        EditView editView;
        ControlView leftView(left, editView);
        ControlView rightView(right, editView);
        leftView.select(rig_->control("Left.Pan"));
        QTest::keyClicks(&leftView, "12");
        QTest::keyClick(&leftView, Qt::Key_Tab);
        QCOMPARE(left.selectedControl(), &rig_->control("Left.Dimmer"));
        QCOMPARE(rig_->control("Left.Pan").value(), 12U);
        for (ControlView* const view : {&leftView, &rightView}) {
            view->show();
            view->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(view));
        }
    }
    state_->restoreControlSelections();
    rig_->fixtures().remove(0, 1);
    QCOMPARE(right.selectedControl(), nullptr);
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

    Fixture& left = rig_->add("Left", {"Dimmer"});
    defaults_->setObject(stored, selectionsKey);
    state_->restoreControlSelections();
    QCOMPARE(left.selectedControl(), nullptr);
}

QTEST_MAIN(tst_SavedState)
#include "tst_SavedState.moc"
