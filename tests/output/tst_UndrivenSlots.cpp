#include "support/TestClock.h"
#include "support/TestRig.h"

#include <QTest>

#include <memory>

namespace {

constexpr std::int32_t universe = 2;
constexpr std::uint64_t second = 1'000'000'000;
constexpr std::uint64_t millisecond = 1'000'000;

} // namespace

/// Spot on slots 1 to 6 of universe 2 (Dimmer, Pan over two slots, a gap of two, Red) and Wash on slot 9, all
/// lit.
class tst_UndrivenSlots : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void whatAFixtureLeavesGoesToZero();
    void aSlotThatAnotherControlDrivesKeepsItsLevel();
    void slotsThatTheFixtureStillDrivesKeepTheirLevels();
    void aFixtureThatIsTakenAwayLeavesNothingBehind();
    void aControlThatRunsPastTheUniverseDrivesNothing();
    void aGapDrivesNothing();
    void aSlotThatIsOnlyReadIsNotDriven();
    void whereNothingChangesNothingIsSent();
    void aUniverseThatItsLastFixtureLeavesIsNotMarkedActive();
    void otherUniversesAreLeftAlone();
    void withoutUniversesThereIsNothingToDo();

private:
    int level(std::size_t slot, std::int32_t number = universe) {
        return rig_->engine().slotLevels(number)[slot - 1];
    }
    static void moveTo(Fixture& fixture, std::uint32_t address, std::int32_t number = universe);
    /// Of the universe that was made first, how many datagrams were tried: there is no socket.
    std::uint64_t lastSend() { return rig_->engine().sendRecords().front().lastNanoseconds; }

    TestClock clock_{100 * second};
    std::unique_ptr<TestRig> rig_;
    Fixture* spot_ = nullptr;
    Fixture* wash_ = nullptr;
};

void tst_UndrivenSlots::init() {
    rig_ = std::make_unique<TestRig>();
    spot_ = &rig_->add(placement("Spot", universe, 1,
                                 {controlEntry("Dimmer"), QVariantMap{{"name", "Pan"}, {"channels", 2}},
                                  QVariantMap{{"blank", 2}}, controlEntry("Red")}));
    wash_ = &rig_->add("Wash", {"White"}, universe, 9);
    rig_->control("Spot.Dimmer").setValue(10);
    rig_->control("Spot.Pan").setValue(0x2030);
    rig_->control("Spot.Red").setValue(40);
    rig_->control("Wash.White").setValue(50);
    rig_->tick();
    clock_.advance(millisecond);
}

void tst_UndrivenSlots::cleanup() {
    rig_.reset();
}

void tst_UndrivenSlots::moveTo(Fixture& fixture, std::uint32_t address, std::int32_t number) {
    fixture.setUniverse(static_cast<std::uint32_t>(number));
    fixture.setAddress(address);
    fixture.rescanControls();
}

void tst_UndrivenSlots::whatAFixtureLeavesGoesToZero() {
    moveTo(*spot_, 101);
    for (const std::size_t slot : {1U, 2U, 3U, 6U}) {
        QCOMPARE(level(slot), 0);
    }
    QCOMPARE(level(9), 50);
    const std::uint64_t before = lastSend();
    rig_->tick();
    QVERIFY(lastSend() > before);
    QCOMPARE(level(101), 10);
    QCOMPARE(level(102), 0x20);
    QCOMPARE(level(103), 0x30);
}

void tst_UndrivenSlots::aSlotThatAnotherControlDrivesKeepsItsLevel() {
    moveTo(*wash_, 1);
    rig_->tick();
    QCOMPARE(level(1), 50);
    QCOMPARE(level(9), 0);
    moveTo(*wash_, 9);
    QCOMPARE(level(1), 50); // Spot drives it still, and says in the next tick what it has to be
    rig_->tick();
    QCOMPARE(level(1), 10);
}

void tst_UndrivenSlots::slotsThatTheFixtureStillDrivesKeepTheirLevels() {
    moveTo(*spot_, 2);
    QCOMPARE(level(1), 0);
    QCOMPARE(level(2), 0x20);
    QCOMPARE(level(3), 0x30);
    QCOMPARE(level(6), 0); // in the gap now
}

void tst_UndrivenSlots::aFixtureThatIsTakenAwayLeavesNothingBehind() {
    rig_->fixtures().replaceAll({placement("New", universe, 9, {controlEntry("Dimmer")})});
    for (const std::size_t slot : {1U, 2U, 3U, 6U}) {
        QCOMPARE(level(slot), 0);
    }
    QCOMPARE(level(9), 50);
    rig_->tick();
    QCOMPARE(level(9), 0);
}

void tst_UndrivenSlots::aControlThatRunsPastTheUniverseDrivesNothing() {
    moveTo(*spot_, 510);
    rig_->tick();
    QCOMPARE(level(511), 0x20);
    moveTo(*spot_, 511);
    QCOMPARE(level(510), 0);
    QCOMPARE(level(511), 0x20); // under Dimmer now
    QCOMPARE(level(512), 0);    // Pan would need one more
}

void tst_UndrivenSlots::aGapDrivesNothing() {
    moveTo(*wash_, 4);
    rig_->tick();
    QCOMPARE(level(4), 50);
    moveTo(*wash_, 9);
    QCOMPARE(level(4), 0);
}

void tst_UndrivenSlots::aSlotThatIsOnlyReadIsNotDriven() {
    // Of three channels two are read, and one is written.
    rig_->add(placement("Wide", universe, 20, {QVariantMap{{"name", "Level"}, {"channels", 3}}}));
    moveTo(*wash_, 21);
    rig_->tick();
    QCOMPARE(level(21), 50);
    moveTo(*wash_, 9);
    QCOMPARE(level(21), 0);
}

void tst_UndrivenSlots::whereNothingChangesNothingIsSent() {
    moveTo(*spot_, 1);
    const std::uint64_t before = lastSend();
    rig_->tick();
    QCOMPARE(lastSend(), before);
}

void tst_UndrivenSlots::aUniverseThatItsLastFixtureLeavesIsNotMarkedActive() {
    moveTo(*spot_, 1, 5);
    moveTo(*wash_, 9, 5);
    for (const std::size_t slot : {1U, 2U, 3U, 6U, 9U}) {
        QCOMPARE(level(slot), 0);
    }
    const std::uint64_t before = lastSend();
    clock_.advance(2 * second);
    rig_->tick();
    QCOMPARE(lastSend(), before);
}

void tst_UndrivenSlots::otherUniversesAreLeftAlone() {
    rig_->add("Far", {"Dimmer"}, -1, 1);
    rig_->control("Far.Dimmer").setValue(60);
    rig_->tick();
    moveTo(*spot_, 101);
    QCOMPARE(level(1, -1), 60);
}

void tst_UndrivenSlots::withoutUniversesThereIsNothingToDo() {
    Engine engine;
    engine.setPatch({});
    QVERIFY(engine.sendRecords().empty());
}

QTEST_APPLESS_MAIN(tst_UndrivenSlots)
#include "tst_UndrivenSlots.moc"
