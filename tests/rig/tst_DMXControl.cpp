#include "rig/DMXControl.h"

#include "rig/FixtureObserver.h"
#include "support/TestClock.h"
#include "support/TestRig.h"

#include <QTest>

#include <array>
#include <memory>
#include <utility>

namespace {

constexpr std::uint64_t Second = 1'000'000'000;
constexpr std::uint64_t Tick = 33'300'000;

using SlotArray = std::array<std::uint8_t, 512>;

// Counts what is told of one control.
class ChangeCount : public FixtureObserver {
public:
    ChangeCount(DMXControl& control, Fixture& fixture) : control_(control), fixture_(fixture) {
        fixture_.addObserver(*this);
    }
    ~ChangeCount() override { fixture_.removeObserver(*this); }
    ChangeCount(const ChangeCount&) = delete;
    ChangeCount& operator=(const ChangeCount&) = delete;
    ChangeCount(ChangeCount&&) = delete;
    ChangeCount& operator=(ChangeCount&&) = delete;

    /// Since this was last asked.
    int take() { return std::exchange(changes_, 0); }

    /// The number that is being typed, as it was told last.
    QByteArray typed() const { return typed_; }

    bool seesLevels() const override { return true; }
    void levelsMissed() override {}
    void controlChanged(DMXControl& control) override { changes_ += &control == &control_ ? 1 : 0; }
    void entryChanged(DMXControl& control) override {
        typed_ = QByteArray::fromStdString(std::string(control.entry().text()));
    }
    void fixtureMoved() override {}

private:
    DMXControl& control_;
    Fixture& fixture_;
    int changes_ = 0;
    QByteArray typed_;
};

} // namespace

class tst_DMXControl : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { rig_.reset(); }

    void aNewControlIsAtItsDefault();
    void a16BitControlAt1000IsWrittenCoarseByteFirst();
    void threeChannelsMakeAn8BitControl();
    void aBlankIsHiddenAndDrivesNothing();
    void aLabelDrivesNothing();
    void aNewLayerIsRaisedBeforeTheNameIsResolved();
    void settingTheValueNeitherFadesNorWritesSlots();

    void theTooltipShowsUniverseAndSlotFrom1_data();
    void theTooltipShowsUniverseAndSlotFrom1();
    void aDummyThatIsToldToFadeStandsStill();

    void aLevelWithoutATimeIsTakenAtOnceAndRedrawn();
    void aLevelWithATimeFades();
    void thePresentLevelChangesAndRedrawsNothing();
    void onlyAStepThatChangesTheLevelRedraws();
    void theDefaultIsTakenAtOnceInMidFade();
    void aControlAwayFromItsDefaultSaysSo();

    void whateverMovesTheLevelIsTold();
    void aFadeTimeIsToldWhenItComesOrGoes();
    void aStepStaysWithinTheRange();
    void aTypedLevelIsGoneToOverTheFadeTime();
    void aTypedTimeIsForTheNextLevel();
    void theControlThatIsSelectedIsAloneInIt();

private:
    /// The control of a fixture "Spot" that is made from this entry alone.
    DMXControl& add(const QVariantMap& entry);
    DMXControl& addFader(const QString& name) { return add(controlEntry(name)); }

    std::unique_ptr<TestRig> rig_;
};

void tst_DMXControl::init() {
    rig_ = std::make_unique<TestRig>();
}

DMXControl& tst_DMXControl::add(const QVariantMap& entry) {
    return *rig_->add(placement("Spot", 0, 1, {entry})).controls().front();
}

void tst_DMXControl::aNewControlIsAtItsDefault() {
    const DMXControl& control =
        add({{"name", "Pan"}, {"default", qlonglong{128}}, {"header", true}, {"channels", qlonglong{1}}});
    QCOMPARE(control.name(), "Pan");
    QCOMPARE(control.value(), 128U);
    QCOMPARE(control.max(), 255U);
    QCOMPARE(control.channels(), 1U);
    QCOMPARE(control.time(), 0.0F);
    QVERIFY(control.header());
    QVERIFY(!control.dummy());
    QVERIFY(!control.hide());
    QVERIFY(!control.notDefault());
    QVERIFY(!control.fade().running());
}

void tst_DMXControl::a16BitControlAt1000IsWrittenCoarseByteFirst() {
    DMXControl& control =
        *rig_->add(placement("Spot", 0, 8,
                             {QVariantMap{
                                 {"name", "Pan"}, {"channels", qlonglong{2}}, {"default", qlonglong{1000}}}}))
             .controls()
             .front();
    QCOMPARE(control.max(), 65535U);
    QCOMPARE(control.value(), 1000U);
    SlotArray levels{};
    QVERIFY(control.updateDMX(levels));
    SlotArray expected{};
    expected[7] = 0x03;
    expected[8] = 0xE8;
    QCOMPARE(levels, expected);
    QVERIFY(!control.updateDMX(levels));
}

void tst_DMXControl::threeChannelsMakeAn8BitControl() {
    for (const QVariantMap& entry : {QVariantMap{{"channels", qlonglong{3}}}, QVariantMap{}}) {
        const DMXControl& control = add(entry);
        QCOMPARE(control.max(), 255U);
        QCOMPARE(control.channels(), 1U);
    }
}

void tst_DMXControl::aBlankIsHiddenAndDrivesNothing() {
    DMXControl& blank = add({{"blank", qlonglong{4}}});
    QCOMPARE(blank.channels(), 4U);
    QVERIFY(blank.hide());
    QVERIFY(blank.dummy());
    SlotArray levels{};
    levels.fill(9);
    const SlotArray before = levels;
    QVERIFY(!blank.updateDMX(levels));
    QCOMPARE(levels, before);
}

void tst_DMXControl::aLabelDrivesNothing() {
    DMXControl& label = add({{"label", "Pan"}});
    QCOMPARE(label.name(), "Pan");
    QCOMPARE(label.channels(), 0U);
    QVERIFY(label.dummy());
    SlotArray levels{};
    levels.fill(9);
    const SlotArray before = levels;
    QVERIFY(!label.updateDMX(levels));
    QCOMPARE(levels, before);
}

void tst_DMXControl::aNewLayerIsRaisedBeforeTheNameIsResolved() {
    const Fixture& fixture = rig_->add(
        placement("Spot", 0, 1,
                  {QVariantMap{{"name", "Dimmer #"}}, QVariantMap{{"name", "Dimmer #"}, {"newlayer", true}},
                   QVariantMap{{"label", "Layer #"}}}));
    QCOMPARE(fixture.controls()[0]->name(), "Dimmer 1");
    QCOMPARE(fixture.controls()[1]->name(), "Dimmer 2");
    QCOMPARE(fixture.controls()[2]->name(), "Layer 2");
    QCOMPARE(fixture.layerNum(), 2U);
}

void tst_DMXControl::settingTheValueNeitherFadesNorWritesSlots() {
    DMXControl& control = addFader("Pan");
    SlotArray levels{};
    control.setTime(2);
    control.setValue(100);
    QVERIFY(!control.fade().running());
    QCOMPARE(control.time(), 2.0F);
    QCOMPARE(levels[0], 0);
    QVERIFY(control.updateDMX(levels));
    QCOMPARE(levels[0], 100);
}

void tst_DMXControl::theTooltipShowsUniverseAndSlotFrom1_data() {
    QTest::addColumn<quint32>("universe");
    QTest::addColumn<quint32>("address");
    QTest::addColumn<QString>("tooltip");

    QTest::newRow("first slot") << 2U << 0U << "Univ: 2, Addr: 1";
    QTest::newRow("last slot") << 0U << 511U << "Univ: 0, Addr: 512";
    QTest::newRow("outside") << 255U << 600U << "Univ: 255, Addr: 601";
    QTest::newRow("universe -1") << 4294967295U << 0U << "Univ: -1, Addr: 1";
    QTest::newRow("address -7") << 1U << 4294967288U << "Univ: 1, Addr: -7";
    QTest::newRow("highest address") << 1U << 4294967295U << "Univ: 1, Addr: 0";
}

void tst_DMXControl::theTooltipShowsUniverseAndSlotFrom1() {
    QFETCH(const quint32, universe);
    QFETCH(const quint32, address);
    DMXControl& control = addFader("Pan");
    rig_->fixtures().at(0)->setUniverse(universe);
    control.setAddress(address);
    QCOMPARE(control.address(), address);
    QTEST(control.toolTip(), "tooltip");
}

void tst_DMXControl::aDummyThatIsToldToFadeStandsStill() {
    TestClock clock(0);
    DMXControl& label = add({{"label", "Pan"}});
    SlotArray levels{};
    label.setDMXValue(200, 2);
    clock.set(Second);
    QVERIFY(!label.updateDMX(levels));
    QCOMPARE(label.value(), 0U);
    clock.set(5 * Second);
    QVERIFY(!label.updateDMX(levels));
    QCOMPARE(label.value(), 0U);
    QCOMPARE(levels, SlotArray{});
}

void tst_DMXControl::aLevelWithoutATimeIsTakenAtOnceAndRedrawn() {
    DMXControl& control = addFader("Pan");
    ChangeCount changes(control, *rig_->fixtures().at(0));
    changes.take();
    control.setDMXValue(100, 0);
    QCOMPARE(control.value(), 100U);
    QCOMPARE(control.fade().slewRate, 0.0);
    QCOMPARE(changes.take(), 1);
}

void tst_DMXControl::aLevelWithATimeFades() {
    TestClock clock(Second);
    DMXControl& control = addFader("Pan");
    SlotArray levels{};
    control.setDMXValue(200, 2);
    QCOMPARE(control.value(), 0U);
    QCOMPARE(control.time(), 2.0F);
    QCOMPARE(control.fade().slewRate, 100.0);
    clock.advance(Second / 2);
    QVERIFY(control.updateDMX(levels));
    QCOMPARE(control.value(), 50U);
    clock.advance(3 * Second / 2);
    control.updateDMX(levels);
    clock.advance(Tick);
    control.updateDMX(levels);
    QCOMPARE(control.value(), 200U);
    QCOMPARE(levels[0], 200);
    QCOMPARE(control.fade().slewRate, 0.0);
}

void tst_DMXControl::thePresentLevelChangesAndRedrawsNothing() {
    DMXControl& control = add({{"name", "Pan"}, {"default", qlonglong{100}}});
    ChangeCount changes(control, *rig_->fixtures().at(0));
    control.setTime(3);
    changes.take();
    control.setDMXValue(100, 3);
    QCOMPARE(control.value(), 100U);
    QVERIFY(!control.fade().running());
    QCOMPARE(changes.take(), 0);
}

void tst_DMXControl::onlyAStepThatChangesTheLevelRedraws() {
    TestClock clock(0);
    DMXControl& control = addFader("Pan");
    ChangeCount changes(control, *rig_->fixtures().at(0));
    SlotArray levels{};
    control.setDMXValue(10, 10);
    changes.take();
    clock.set(Second / 2);
    control.updateDMX(levels);
    QCOMPARE(changes.take(), 0);
    clock.set(Second + 1000);
    control.updateDMX(levels);
    QCOMPARE(control.value(), 1U);
    QCOMPARE(changes.take(), 1);
    control.updateDMX(levels);
    QCOMPARE(changes.take(), 0);
}

void tst_DMXControl::theDefaultIsTakenAtOnceInMidFade() {
    TestClock clock(0);
    DMXControl& control = add({{"name", "Pan"}, {"default", qlonglong{30}}});
    SlotArray levels{};
    control.setDMXValue(230, 2);
    clock.set(Second);
    control.updateDMX(levels);
    QCOMPARE(control.value(), 130U);
    control.setDefault();
    QCOMPARE(control.value(), 30U);
    QCOMPARE(control.time(), 0.0F);
    QVERIFY(!control.fade().running());
    clock.set(5 * Second);
    control.updateDMX(levels);
    QCOMPARE(control.value(), 30U);
    QCOMPARE(levels[0], 30);
}

void tst_DMXControl::aControlAwayFromItsDefaultSaysSo() {
    DMXControl& control = add({{"name", "Pan"}, {"default", qlonglong{30}}});
    QVERIFY(!control.notDefault());
    control.setDMXValue(31, 0);
    QVERIFY(control.notDefault());
    control.setDMXValue(30, 0);
    QVERIFY(!control.notDefault());
    control.setTime(4);
    QVERIFY(!control.notDefault());
}

void tst_DMXControl::whateverMovesTheLevelIsTold() {
    TestClock clock(0);
    DMXControl& control = addFader("Pan");
    ChangeCount changes(control, *rig_->fixtures().at(0));
    control.setValue(10);
    QCOMPARE(changes.take(), 1);
    control.setValue(10);
    QCOMPARE(changes.take(), 0);
    control.step(5);
    QCOMPARE(changes.take(), 1);
    control.setDefault();
    QCOMPARE(changes.take(), 1);
    rig_->faders().setControl("Spot.Pan", 9, 0);
    QCOMPARE(changes.take(), 1);
    const FaderChange change{.fader = &control, .value = 12, .time = 0};
    Faders::setDMXValues({&change, 1});
    QCOMPARE(changes.take(), 1);
    control.setDMXValue(212, 2);
    changes.take(); // of the time
    clock.set(Second);
    rig_->tick();
    QCOMPARE(changes.take(), 1);
    QCOMPARE(control.value(), 112U);
}

void tst_DMXControl::aFadeTimeIsToldWhenItComesOrGoes() {
    DMXControl& control = addFader("Pan");
    ChangeCount changes(control, *rig_->fixtures().at(0));
    control.setTime(2);
    QCOMPARE(changes.take(), 1);
    control.setTime(3);
    QCOMPARE(changes.take(), 0);
    control.setTime(0);
    QCOMPARE(changes.take(), 1);
}

void tst_DMXControl::aStepStaysWithinTheRange() {
    DMXControl& control = addFader("Pan");
    control.step(-1);
    QCOMPARE(control.value(), 0U);
    control.step(300);
    QCOMPARE(control.value(), 255U);
    control.setValue(300);
    control.step(1);
    QCOMPARE(control.value(), 300U);
    control.step(-50);
    QCOMPARE(control.value(), 250U);
}

void tst_DMXControl::aTypedLevelIsGoneToOverTheFadeTime() {
    TestClock clock(0);
    DMXControl& control = addFader("Pan");
    const ChangeCount told(control, *rig_->fixtures().at(0));
    control.setTime(2);
    for (const char character : {'2', '0', '0', '5'}) {
        control.type(character);
    }
    control.removeLast();
    QCOMPARE(told.typed(), "200");
    QCOMPARE(control.value(), 0U);
    QVERIFY(control.endEdit());
    QVERIFY(control.fade().running());
    clock.set(Second);
    rig_->tick();
    QCOMPARE(control.value(), 100U);
    control.endEntry();
    QCOMPARE(told.typed(), "");
}

void tst_DMXControl::aTypedTimeIsForTheNextLevel() {
    DMXControl& control = addFader("Pan");
    control.setTimeMode();
    for (const char character : {'2', '.', '5'}) {
        control.type(character);
    }
    QVERIFY(!control.endEdit());
    QCOMPARE(control.time(), 2.5F);
    QCOMPARE(control.value(), 0U);
    QVERIFY(!control.fade().running());
}

void tst_DMXControl::theControlThatIsSelectedIsAloneInIt() {
    Fixture& fixture = rig_->add("Spot", {"Pan", "Tilt"});
    DMXControl& pan = rig_->control("Spot.Pan");
    DMXControl& tilt = rig_->control("Spot.Tilt");
    ChangeCount changes(pan, fixture);
    pan.becomeFirstResponder();
    QVERIFY(pan.firstResponder());
    QCOMPARE(fixture.selectedControl(), &pan);
    QVERIFY(changes.take() > 0);
    pan.type('5');
    tilt.becomeFirstResponder();
    QVERIFY(!pan.firstResponder());
    QVERIFY(pan.entry().empty());
    QVERIFY(tilt.firstResponder());
    QCOMPARE(fixture.selectedControl(), &tilt);
    QVERIFY(changes.take() > 0);
    tilt.resignFirstResponder();
    QVERIFY(!tilt.firstResponder());
    QCOMPARE(fixture.selectedControl(), &tilt); // comes back with its window
}

QTEST_APPLESS_MAIN(tst_DMXControl)
#include "tst_DMXControl.moc"
