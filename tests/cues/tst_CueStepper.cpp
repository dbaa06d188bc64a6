#include "cues/CueStepper.h"

#include "cues/CueStore.h"
#include "rig/FixtureObserver.h"
#include "settings/Settings.h"
#include "support/AsWritten.h"
#include "support/TestClock.h"
#include "support/TestRig.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

namespace {

constexpr std::uint64_t Second = 1'000'000'000;
using Number = std::optional<QString>;

QVariantMap record(const QString& key, const QVariant& value, const QVariant& time = 0.0) {
    return {{"key", key}, {"value", value}, {"time", time}};
}

/// How often whoever shows the fixture is told to draw the fader anew.
class ChangeCount : public FixtureObserver {
public:
    ChangeCount(const Fixtures& fixtures, const DMXControl& control)
        : fixture_(*fixtures.at(fixtures.rowOf(control.fixture()))), control_(control) {
        fixture_.addObserver(*this);
    }
    ~ChangeCount() override { fixture_.removeObserver(*this); }
    ChangeCount(const ChangeCount&) = delete;
    ChangeCount& operator=(const ChangeCount&) = delete;
    ChangeCount(ChangeCount&&) = delete;
    ChangeCount& operator=(ChangeCount&&) = delete;

    int count() const { return count_; }

    bool seesLevels() const override { return true; }
    void levelsMissed() override {}
    void controlChanged(DMXControl& control) override { count_ += &control == &control_ ? 1 : 0; }
    void entryChanged(DMXControl& /*control*/) override {}
    void fixtureMoved() override {}

private:
    Fixture& fixture_;
    const DMXControl& control_;
    int count_ = 0;
};

} // namespace

/// Two fixtures, Spot and Wash, with a fader each; Wash rests at 50.
class tst_CueStepper : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void noCueIsCurrentAtFirst();
    void theCurrentCueIsToldOfEachTime();

    void aCueSetsItsControlsOverItsTimesAndAllOthersToRest();
    void aCueIsExecutedWithTheTimesItHolds();
    void anEmptyCueBringsEverythingToRest();
    void anEntryThatIsNoListChangesNothing_data();
    void anEntryThatIsNoListChangesNothing();
    void theLaterOfTwoRecordsCounts();
    void recordsAreReadAsNumbers();
    void recordsOfNoControlAreIgnored();
    void aLevelOfACueMayLieBeyondTheRange();

    void aChosenCueBecomesCurrentAndIsExecuted();
    void aPlaceholderBecomesCurrentAndChangesNothing();
    void aMissingCueBecomesCurrentAndChangesNothing();
    void aCueThatIsOnlySelectedBecomesCurrent();

    void nextWithoutACurrentCueChoosesTheFirst();
    void nextWrapsToTheFirst();
    void previousWithoutACurrentCueChoosesTheLast();
    void previousWrapsToTheLast();
    void theOnlyCueFollowsItself();
    void withoutCuesThereIsNoNextAndNoPrevious();
    void aCueThatIsNotInTheListHasNoNextAndNoPrevious();
    void nextAndPreviousThatOnlySelectExecuteNothing();

    void storingRecordsIntoTheCurrentCue();
    void storingWithoutACurrentCueDoesNothing();
    void clearBringsEverythingToRestAndRedrawsIt();
    void clearTimingTakesTheTimesAndNoLevel();
    void clearTimingLetsAFadeRunOn();
    void deletingTakesTheCueAndNoLevel();
    void deletingWithoutACurrentCueDoesNothing();

private:
    void haveCues(const QVariantMap& cues) { settings_ = Settings(QVariantMap{{"cues", cues}}); }

    std::unique_ptr<TestClock> clock_;
    std::unique_ptr<TestRig> rig_;
    Settings settings_;
    std::unique_ptr<CueStore> cues_;
    std::unique_ptr<CueStepper> stepper_;
    DMXControl* spot_ = nullptr;
    DMXControl* wash_ = nullptr;
};

void tst_CueStepper::init() {
    clock_ = std::make_unique<TestClock>(Second);
    rig_ = std::make_unique<TestRig>();
    rig_->add("Spot", {"Dimmer"}, 0, 1);
    rig_->add(placement("Wash", 0, 2, {controlEntry("Dimmer", 50)}));
    spot_ = &rig_->control("Spot.Dimmer");
    wash_ = &rig_->control("Wash.Dimmer");
    settings_ = Settings();
    cues_ = std::make_unique<CueStore>(settings_, rig_->faders());
    stepper_ = std::make_unique<CueStepper>(*cues_, rig_->faders());
}

void tst_CueStepper::cleanup() {
    stepper_.reset();
    cues_.reset();
    rig_.reset();
    clock_.reset();
}

void tst_CueStepper::noCueIsCurrentAtFirst() {
    QVERIFY(!stepper_->currCue());
}

void tst_CueStepper::theCurrentCueIsToldOfEachTime() {
    const QSignalSpy told(stepper_.get(), &CueStepper::currCueChanged);
    stepper_->setCurrCue("2.5");
    QCOMPARE(stepper_->currCue(), Number("2.5"));
    stepper_->setCurrCue({});
    QVERIFY(!stepper_->currCue());
    QCOMPARE(told.size(), 2);
}

void tst_CueStepper::aCueSetsItsControlsOverItsTimesAndAllOthersToRest() {
    wash_->setDMXValue(90, 0);
    wash_->setTime(3);
    stepper_->executeCue(QVariantList{record("Spot.Dimmer", 200LL, 2.0)});
    QCOMPARE(wash_->value(), 50U);
    QCOMPARE(wash_->time(), 0.0F);
    QCOMPARE(spot_->value(), 0U);
    QCOMPARE(spot_->time(), 2.0F);

    clock_->advance(Second);
    rig_->tick();
    QCOMPARE(spot_->value(), 100U);
    clock_->advance(Second);
    rig_->tick();
    QCOMPARE(spot_->value(), 200U);
}

void tst_CueStepper::aCueIsExecutedWithTheTimesItHolds() {
    spot_->setTime(30);
    wash_->setTime(30);
    stepper_->executeCue(QVariantList{record("Spot.Dimmer", 7LL), record("Wash.Dimmer", 8LL, 1.5)});
    QCOMPARE(spot_->value(), 7U);
    QCOMPARE(spot_->time(), 0.0F);
    QCOMPARE(wash_->value(), 50U);
    QCOMPARE(wash_->time(), 1.5F);
}

void tst_CueStepper::anEmptyCueBringsEverythingToRest() {
    spot_->setValue(1);
    wash_->setDMXValue(200, 10);
    stepper_->executeCue(QVariantList());
    QCOMPARE(spot_->value(), 0U);
    QCOMPARE(wash_->value(), 50U);
    QVERIFY(!wash_->fade().running());
}

void tst_CueStepper::anEntryThatIsNoListChangesNothing_data() {
    QTest::addColumn<QVariant>("entry");

    QTest::newRow("nothing") << QVariant();
    QTest::newRow("the placeholder") << QVariant("cue data goes here");
    QTest::newRow("another text") << QVariant("Spot.Dimmer");
    QTest::newRow("a record without a list") << QVariant(record("Spot.Dimmer", 200LL));
    QTest::newRow("an integer") << QVariant(200LL);
    QTest::newRow("data") << QVariant(QByteArray("cue"));
}

void tst_CueStepper::anEntryThatIsNoListChangesNothing() {
    QFETCH(const QVariant, entry);

    spot_->setValue(30);
    spot_->setTime(4);
    stepper_->executeCue(entry);
    QCOMPARE(spot_->value(), 30U);
    QCOMPARE(spot_->time(), 4.0F);
}

void tst_CueStepper::theLaterOfTwoRecordsCounts() {
    stepper_->executeCue(QVariantList{record("Spot.Dimmer", 1LL), record("Spot.Dimmer", 2LL)});
    QCOMPARE(spot_->value(), 2U);
}

void tst_CueStepper::recordsAreReadAsNumbers() {
    stepper_->executeCue(
        QVariantList{record("Spot.Dimmer", "12.9", "1.5s"), record("Wash.Dimmer", 30.9, 0LL)});
    QCOMPARE(spot_->time(), 1.5F);
    QCOMPARE(wash_->value(), 30U);
    clock_->advance(2 * Second);
    rig_->tick();
    QCOMPARE(spot_->value(), 12U);
    stepper_->executeCue(QVariantList{QVariantMap{{"key", "Wash.Dimmer"}}});
    QCOMPARE(wash_->value(), 0U);
    QCOMPARE(wash_->time(), 0.0F);
}

void tst_CueStepper::recordsOfNoControlAreIgnored() {
    stepper_->executeCue(QVariantList{record("Old.Dimmer", 1LL), "Spot.Dimmer", 5LL, QVariantList{1LL},
                                      record("", 2LL), record("Spot.Dimmer", 3LL)});
    QCOMPARE(spot_->value(), 3U);
    QCOMPARE(wash_->value(), 50U);
}

void tst_CueStepper::aLevelOfACueMayLieBeyondTheRange() {
    stepper_->executeCue(QVariantList{record("Spot.Dimmer", 70000LL), record("Wash.Dimmer", -1LL, 1e39)});
    QCOMPARE(spot_->value(), 70000U);
    QCOMPARE(wash_->time(), std::numeric_limits<float>::infinity());
    QCOMPARE(wash_->value(), 4294967295U);
}

void tst_CueStepper::aChosenCueBecomesCurrentAndIsExecuted() {
    haveCues({{"2.5", QVariantList{record("Spot.Dimmer", 20LL)}}});
    stepper_->choose("2.5");
    QCOMPARE(stepper_->currCue(), Number("2.5"));
    QCOMPARE(spot_->value(), 20U);
}

void tst_CueStepper::aPlaceholderBecomesCurrentAndChangesNothing() {
    haveCues({{"3", "cue data goes here"}});
    spot_->setValue(30);
    stepper_->choose("3");
    QCOMPARE(stepper_->currCue(), Number("3"));
    QCOMPARE(spot_->value(), 30U);
}

void tst_CueStepper::aMissingCueBecomesCurrentAndChangesNothing() {
    spot_->setValue(30);
    stepper_->choose("3");
    QCOMPARE(stepper_->currCue(), Number("3"));
    QCOMPARE(spot_->value(), 30U);
}

void tst_CueStepper::aCueThatIsOnlySelectedBecomesCurrent() {
    haveCues({{"1", QVariantList()}, {"2", QVariantList{record("Spot.Dimmer", 20LL, 5.0)}}});
    spot_->setValue(30);
    spot_->setTime(4);
    const QSignalSpy told(stepper_.get(), &CueStepper::currCueChanged);
    stepper_->choose("2", Choosing::SelectOnly);
    QCOMPARE(stepper_->currCue(), Number("2"));
    QCOMPARE(told.size(), 1);
    QCOMPARE(spot_->value(), 30U);
    QCOMPARE(spot_->time(), 4.0F);
}

void tst_CueStepper::nextWithoutACurrentCueChoosesTheFirst() {
    haveCues(
        {{"1", QVariantList{record("Spot.Dimmer", 10LL)}}, {"2", QVariantList()}, {"3", QVariantList()}});
    stepper_->next();
    QCOMPARE(stepper_->currCue(), Number("1"));
    QCOMPARE(spot_->value(), 10U);
}

void tst_CueStepper::nextWrapsToTheFirst() {
    haveCues({{"1", QVariantList{record("Spot.Dimmer", 10LL)}},
              {"2", QVariantList{record("Spot.Dimmer", 20LL)}},
              {"3", QVariantList{record("Spot.Dimmer", 30LL)}}});
    stepper_->next();
    stepper_->next();
    QCOMPARE(stepper_->currCue(), Number("2"));
    QCOMPARE(spot_->value(), 20U);
    stepper_->next();
    QCOMPARE(stepper_->currCue(), Number("3"));
    QCOMPARE(spot_->value(), 30U);
    stepper_->next();
    QCOMPARE(stepper_->currCue(), Number("1"));
    QCOMPARE(spot_->value(), 10U);
}

void tst_CueStepper::previousWithoutACurrentCueChoosesTheLast() {
    haveCues(
        {{"1", QVariantList()}, {"2", QVariantList()}, {"3", QVariantList{record("Spot.Dimmer", 30LL)}}});
    stepper_->previous();
    QCOMPARE(stepper_->currCue(), Number("3"));
    QCOMPARE(spot_->value(), 30U);
}

void tst_CueStepper::previousWrapsToTheLast() {
    haveCues({{"1", QVariantList()}, {"2", QVariantList()}, {"10", QVariantList()}});
    stepper_->choose("2");
    stepper_->previous();
    QCOMPARE(stepper_->currCue(), Number("1"));
    stepper_->previous();
    QCOMPARE(stepper_->currCue(), Number("10"));
}

void tst_CueStepper::theOnlyCueFollowsItself() {
    haveCues({{"1", QVariantList{record("Spot.Dimmer", 10LL)}}});
    stepper_->choose("1");
    spot_->setValue(99);
    stepper_->next();
    QCOMPARE(stepper_->currCue(), Number("1"));
    QCOMPARE(spot_->value(), 10U);
    spot_->setValue(99);
    stepper_->previous();
    QCOMPARE(stepper_->currCue(), Number("1"));
    QCOMPARE(spot_->value(), 10U);
}

void tst_CueStepper::withoutCuesThereIsNoNextAndNoPrevious() {
    spot_->setValue(30);
    const QSignalSpy told(stepper_.get(), &CueStepper::currCueChanged);
    stepper_->next();
    stepper_->previous();
    haveCues({});
    stepper_->next();
    stepper_->previous();
    stepper_->setCurrCue("1");
    stepper_->next();
    stepper_->previous();
    QCOMPARE(told.size(), 1);
    QCOMPARE(stepper_->currCue(), Number("1"));
    QCOMPARE(spot_->value(), 30U);
}

void tst_CueStepper::aCueThatIsNotInTheListHasNoNextAndNoPrevious() {
    haveCues({{"1", QVariantList()}, {"2", QVariantList()}});
    stepper_->choose("2");
    haveCues({{"5", QVariantList()}, {"6", QVariantList()}});
    spot_->setValue(30);
    stepper_->next();
    QCOMPARE(stepper_->currCue(), Number("2"));
    stepper_->previous();
    QCOMPARE(stepper_->currCue(), Number("2"));
    QCOMPARE(spot_->value(), 30U);
}

void tst_CueStepper::nextAndPreviousThatOnlySelectExecuteNothing() {
    haveCues(
        {{"1", QVariantList{record("Spot.Dimmer", 10LL)}}, {"2", QVariantList{record("Spot.Dimmer", 20LL)}}});
    spot_->setValue(30);
    stepper_->next(Choosing::SelectOnly);
    QCOMPARE(stepper_->currCue(), Number("1"));
    stepper_->previous(Choosing::SelectOnly);
    QCOMPARE(stepper_->currCue(), Number("2"));
    QCOMPARE(spot_->value(), 30U);
    stepper_->previous(Choosing::Execute);
    QCOMPARE(spot_->value(), 10U);
}

void tst_CueStepper::storingRecordsIntoTheCurrentCue() {
    haveCues({{"1", "cue data goes here"}, {"2", QVariantList()}});
    stepper_->setCurrCue("1");
    const QSignalSpy told(stepper_.get(), &CueStepper::currCueChanged);
    spot_->setValue(20);
    stepper_->storeCue();
    const QVariantMap expected{{"1", QVariantList{record("Spot.Dimmer", 20LL)}}, {"2", QVariantList()}};
    QCOMPARE(asWritten(settings_.cues()), QVariant(expected));
    QCOMPARE(stepper_->currCue(), Number("1"));
    QCOMPARE(told.size(), 0);
}

void tst_CueStepper::storingWithoutACurrentCueDoesNothing() {
    haveCues({{"1", "cue data goes here"}});
    spot_->setValue(20);
    stepper_->storeCue();
    QCOMPARE(settings_.cues(), (QVariantMap{{"1", "cue data goes here"}}));
}

void tst_CueStepper::clearBringsEverythingToRestAndRedrawsIt() {
    stepper_->setCurrCue("1");
    spot_->setDMXValue(200, 10);
    wash_->setTime(3);
    const ChangeCount changes(rig_->fixtures(), *wash_);
    stepper_->clear();
    QCOMPARE(spot_->value(), 0U);
    QVERIFY(!spot_->fade().running());
    QCOMPARE(wash_->value(), 50U);
    QCOMPARE(wash_->time(), 0.0F);
    QVERIFY(!stepper_->currCue());
    QCOMPARE(changes.count(), 1);
}

void tst_CueStepper::clearTimingTakesTheTimesAndNoLevel() {
    stepper_->setCurrCue("1");
    spot_->setValue(200);
    spot_->setTime(2);
    wash_->setTime(3);
    const ChangeCount changes(rig_->fixtures(), *wash_);
    stepper_->clearTiming();
    QCOMPARE(spot_->value(), 200U);
    QCOMPARE(spot_->time(), 0.0F);
    QCOMPARE(wash_->value(), 50U);
    QCOMPARE(wash_->time(), 0.0F);
    QVERIFY(!stepper_->currCue());
    QCOMPARE(changes.count(), 1);
}

void tst_CueStepper::clearTimingLetsAFadeRunOn() {
    spot_->setDMXValue(200, 2);
    stepper_->clearTiming();
    clock_->advance(Second);
    rig_->tick();
    QCOMPARE(spot_->value(), 100U);
}

void tst_CueStepper::deletingTakesTheCueAndNoLevel() {
    haveCues({{"1", QVariantList()}, {"2", QVariantList()}});
    stepper_->choose("1");
    spot_->setValue(30);
    QVERIFY(stepper_->deleteCue());
    QCOMPARE(settings_.cues(), (QVariantMap{{"2", QVariantList()}}));
    QVERIFY(!stepper_->currCue());
    QCOMPARE(spot_->value(), 30U);
}

void tst_CueStepper::deletingWithoutACurrentCueDoesNothing() {
    haveCues({{"1", QVariantList()}});
    const QSignalSpy told(stepper_.get(), &CueStepper::currCueChanged);
    QVERIFY(!stepper_->deleteCue());
    QCOMPARE(settings_.cues(), (QVariantMap{{"1", QVariantList()}}));
    QCOMPARE(told.size(), 0);
}

QTEST_MAIN(tst_CueStepper)
#include "tst_CueStepper.moc"
