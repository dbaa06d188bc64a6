#include "levels/LevelArray.h"

#include <QTest>

#include <array>
#include <vector>

namespace {

using SlotArray = std::array<std::uint8_t, 512>;
constexpr std::uint64_t Second = 1'000'000'000;
constexpr std::uint64_t Tick = 33'300'000;

// One level in an array of its own, at slot 0 unless it is moved.
class Fader {
public:
    explicit Fader(std::uint32_t channels = 1) : channels_(channels) {
        levels_.add(0);
        moveTo(0);
    }
    std::uint32_t value() const { return levels_.value(0); }
    bool setValue(std::uint32_t value) { return levels_.setValue(0, value); }
    const Fade& fade() const { return levels_.fade(0); }
    void moveTo(std::uint32_t address) { levels_.setPlace(0, slotPlace(address, channels_)); }
    void hold() { levels_.holdFade(0, true); }
    bool goTo(std::uint32_t target, float seconds, std::uint64_t now) {
        return levels_.goTo(0, target, seconds, now);
    }
    bool updateDMX(Slots universe, std::uint64_t now) { return levels_.updateDMX(0, universe, now); }
    bool takeHasMoved() { return levels_.takeHasMoved(); }

private:
    LevelArray levels_;
    std::uint32_t channels_;
};

using Indices = std::vector<std::uint32_t>;

Indices movedOf(LevelArray& levels) {
    Indices moved;
    levels.takeMoved(moved);
    return moved;
}

} // namespace

class tst_LevelArray : public QObject {
    Q_OBJECT

private slots:
    void aNewLevelIsWrittenOnce();
    void aLevelOf16BitsIsWrittenCoarseByteFirst();
    void aControlOutsideItsUniverseLeavesTheSlotsAlone_data();
    void aControlOutsideItsUniverseLeavesTheSlotsAlone();
    void aFadeOutsideTheUniverseRunsAllTheSame();
    void aLevelBeyondTheSlotsRangeIsAChangeEveryTime();
    void twoControlsOnOneSlotWriteInTurn();
    void withoutATimeTheTargetIsTakenAtOnce();
    void onlyANewTargetAsksForARedraw_data();
    void onlyANewTargetAsksForARedraw();
    void aFadeOf2SecondsTo200IsAt50AfterHalfASecond();
    void aFadeDownEndsAtExactly0();
    void aFadeAskedForAgainGoesOnFromTheIntegerLevel();
    void aFadeAskedForWithoutATimeEndsTheRunningOne();
    void aDirectChangeDuringAFadeIsOverwrittenByTheNextStep();
    void onlyAStepThatChangesTheLevelAsksForARedraw();
    void aLevelWithoutAPlaceLeavesTheSlotsAlone();
    void aFadeThatIsHeldStandsStill();
    void aFadeThatIsLetGoMoves();
    void allLevelsAreUpdatedInOneGo();
    void whateverMovesALevelIsRemembered();
    void whatIsTakenAsAWholeIsStillToldOneByOne();
};

void tst_LevelArray::aNewLevelIsWrittenOnce() {
    SlotArray levels{};
    Fader level;
    level.moveTo(511);
    QVERIFY(!level.updateDMX(levels, 0));
    level.setValue(255);
    QVERIFY(level.updateDMX(levels, 0));
    QCOMPARE(levels[511], 255);
    QCOMPARE(levels[510], 0);
    QVERIFY(!level.updateDMX(levels, 0));
}

void tst_LevelArray::aLevelOf16BitsIsWrittenCoarseByteFirst() {
    SlotArray levels{};
    Fader level(2);
    level.moveTo(4);
    level.setValue(1000);
    QVERIFY(level.updateDMX(levels, 0));
    QCOMPARE(levels[4], 0x03);
    QCOMPARE(levels[5], 0xE8);
    QVERIFY(!level.updateDMX(levels, 0));
}

void tst_LevelArray::aControlOutsideItsUniverseLeavesTheSlotsAlone_data() {
    QTest::addColumn<quint32>("address");
    QTest::addColumn<quint32>("channels");

    QTest::newRow("8 bit at 512") << 512U << 1U;
    QTest::newRow("8 bit at 600") << 600U << 1U;
    QTest::newRow("8 bit at -7") << 4294967289U << 1U;
    QTest::newRow("8 bit at the highest address") << 4294967295U << 1U;
    QTest::newRow("16 bit over the last slot") << 511U << 2U;
    QTest::newRow("16 bit at 512") << 512U << 2U;
    QTest::newRow("16 bit at the highest address") << 4294967295U << 2U;
}

void tst_LevelArray::aControlOutsideItsUniverseLeavesTheSlotsAlone() {
    QFETCH(const quint32, address);
    QFETCH(const quint32, channels);
    // Room on both sides, so that a byte written over the edge is found here rather than by a crash.
    std::array<std::uint8_t, 1536> memory{};
    memory.fill(7);
    const auto before = memory;
    Fader level(channels);
    level.moveTo(address);
    level.setValue(200);
    QVERIFY(!level.updateDMX(std::span(memory).subspan<512, 512>(), 0));
    QCOMPARE(memory, before);
}

void tst_LevelArray::aFadeOutsideTheUniverseRunsAllTheSame() {
    SlotArray levels{};
    Fader level;
    level.moveTo(600);
    level.goTo(200, 2, 0);
    QVERIFY(!level.updateDMX(levels, Second));
    QCOMPARE(level.value(), 100U);
    QVERIFY(level.takeHasMoved());
}

void tst_LevelArray::aLevelBeyondTheSlotsRangeIsAChangeEveryTime() {
    SlotArray levels{};
    Fader level;
    level.setValue(300);
    QVERIFY(level.updateDMX(levels, 0));
    QCOMPARE(levels[0], 44);
    QVERIFY(level.updateDMX(levels, 0));
    QCOMPARE(levels[0], 44);
    QCOMPARE(levels[1], 0);
}

void tst_LevelArray::twoControlsOnOneSlotWriteInTurn() {
    SlotArray levels{};
    Fader first;
    Fader second;
    first.setValue(10);
    second.setValue(20);
    for (int tick = 0; tick < 3; ++tick) {
        QVERIFY(first.updateDMX(levels, 0));
        QCOMPARE(levels[0], 10);
        QVERIFY(second.updateDMX(levels, 0));
        QCOMPARE(levels[0], 20);
    }
}

void tst_LevelArray::withoutATimeTheTargetIsTakenAtOnce() {
    Fader level;
    QVERIFY(level.goTo(100, 0, 0));
    QCOMPARE(level.value(), 100U);
    QVERIFY(!level.fade().running());
    QCOMPARE(level.fade().slewRate, 0.0);
}

void tst_LevelArray::onlyANewTargetAsksForARedraw_data() {
    QTest::addColumn<quint32>("target");
    QTest::addColumn<float>("seconds");
    QTest::addColumn<bool>("redraw");
    QTest::addColumn<bool>("fades");

    QTest::newRow("at once") << 100U << 0.0F << true << false;
    QTest::newRow("in a time") << 100U << 2.0F << true << true;
    QTest::newRow("the present level at once") << 50U << 0.0F << false << false;
    QTest::newRow("the present level in a time") << 50U << 2.0F << false << false;
}

void tst_LevelArray::onlyANewTargetAsksForARedraw() {
    QFETCH(const quint32, target);
    QFETCH(const float, seconds);
    Fader level;
    level.setValue(50);
    QTEST(level.goTo(target, seconds, 0), "redraw");
    QTEST(level.fade().running(), "fades");
}

void tst_LevelArray::aFadeOf2SecondsTo200IsAt50AfterHalfASecond() {
    SlotArray levels{};
    Fader level;
    level.goTo(200, 2, 0);
    QCOMPARE(level.value(), 0U);
    QCOMPARE(level.fade().slewRate, 100.0);
    std::uint64_t now = 0;
    for (; now < Second / 2; now += Second / 32) {
        level.updateDMX(levels, now);
    }
    QVERIFY(level.updateDMX(levels, Second / 2));
    QCOMPARE(level.value(), 50U);
    QCOMPARE(levels[0], 50);
    level.updateDMX(levels, 2 * Second);
    QVERIFY(!level.updateDMX(levels, 2 * Second + Tick));
    QCOMPARE(level.value(), 200U);
    QCOMPARE(levels[0], 200);
    QVERIFY(!level.fade().running());
}

void tst_LevelArray::aFadeDownEndsAtExactly0() {
    SlotArray levels{};
    Fader level;
    level.setValue(255);
    level.goTo(0, 1, 0);
    for (std::uint64_t now = 0; now <= Second + 2 * Tick; now += Tick) {
        level.updateDMX(levels, now);
    }
    QCOMPARE(level.value(), 0U);
    QCOMPARE(levels[0], 0);
    QVERIFY(!level.fade().running());
}

void tst_LevelArray::aFadeAskedForAgainGoesOnFromTheIntegerLevel() {
    SlotArray levels{};
    Fader level;
    level.goTo(255, 2, 0);
    level.updateDMX(levels, Second);
    QCOMPARE(level.value(), 127U);
    QVERIFY(level.goTo(255, 2, Second));
    QCOMPARE(level.value(), 127U);
    QCOMPARE(level.fade().slewRate, 64.0); // 128 to go, not 127.5
    level.updateDMX(levels, 2 * Second);
    QCOMPARE(level.value(), 191U);
}

void tst_LevelArray::aFadeAskedForWithoutATimeEndsTheRunningOne() {
    SlotArray levels{};
    Fader level;
    level.goTo(200, 2, 0);
    level.updateDMX(levels, Second);
    QVERIFY(level.goTo(30, 0, Second));
    QCOMPARE(level.value(), 30U);
    level.updateDMX(levels, 3 * Second);
    QCOMPARE(level.value(), 30U);
}

void tst_LevelArray::aDirectChangeDuringAFadeIsOverwrittenByTheNextStep() {
    SlotArray levels{};
    Fader level;
    level.goTo(200, 2, 0);
    level.updateDMX(levels, Second / 2);
    level.setValue(3);
    level.updateDMX(levels, Second);
    QCOMPARE(level.value(), 100U);
    QCOMPARE(levels[0], 100);
}

void tst_LevelArray::onlyAStepThatChangesTheLevelAsksForARedraw() {
    SlotArray levels{};
    Fader level;
    level.goTo(10, 10, 0);
    level.updateDMX(levels, Second / 2);
    QVERIFY(!level.takeHasMoved());
    level.updateDMX(levels, Second + 1000);
    QVERIFY(level.takeHasMoved());
    level.updateDMX(levels, Second + 2000);
    QVERIFY(!level.takeHasMoved());
}

void tst_LevelArray::aLevelWithoutAPlaceLeavesTheSlotsAlone() {
    SlotArray universe{};
    universe.fill(7);
    const SlotArray before = universe;
    LevelArray levels;
    levels.add(200);
    QVERIFY(!levels.updateDMX(universe, 0));
    QVERIFY(!levels.updateDMX(0, universe, 0));
    QCOMPARE(universe, before);
}

void tst_LevelArray::aFadeThatIsHeldStandsStill() {
    SlotArray universe{};
    Fader level;
    level.hold();
    level.goTo(200, 2, 0);
    QVERIFY(!level.updateDMX(universe, Second));
    QCOMPARE(level.value(), 0U);
    QVERIFY(!level.takeHasMoved());
}

void tst_LevelArray::aFadeThatIsLetGoMoves() {
    SlotArray universe{};
    LevelArray levels;
    levels.add(0);
    levels.setPlace(0, slotPlace(0, 1));
    levels.holdFade(0, true);
    levels.goTo(0, 200, 2, 0);
    QVERIFY(!levels.updateDMX(universe, Second / 2));
    levels.holdFade(0, false);
    QVERIFY(levels.updateDMX(universe, Second));
    QCOMPARE(levels.value(0), 100U);
}

void tst_LevelArray::allLevelsAreUpdatedInOneGo() {
    SlotArray universe{};
    LevelArray levels;
    levels.add(10);
    levels.add(0);
    levels.add(30);
    levels.setPlace(0, slotPlace(0, 1));
    levels.setPlace(1, slotPlace(1, 2));
    levels.setPlace(2, slotPlace(512, 1));
    QVERIFY(levels.updateDMX(universe, 0));
    QCOMPARE(universe[0], 10);
    QVERIFY(!levels.updateDMX(universe, Tick));
    QVERIFY(!levels.hasMoved());
    levels.goTo(1, 1000, 1, Tick);
    QVERIFY(levels.updateDMX(universe, Tick + Second / 2));
    QCOMPARE(universe[1], 0x01);
    QCOMPARE(universe[2], 0xF4);
    QVERIFY(levels.hasMoved());
    QCOMPARE(movedOf(levels), Indices{1});
    QVERIFY(!levels.hasMoved());
    levels.updateDMX(universe, Tick + 2 * Second);
    QVERIFY(!levels.fade(1).running());
    QCOMPARE(levels.value(1), 1000U);
    // A fade that is started after all others have ended runs like the first.
    levels.updateDMX(universe, Tick + 3 * Second);
    levels.goTo(0, 20, 1, 4 * Second);
    QVERIFY(levels.updateDMX(universe, 6 * Second));
    QCOMPARE(universe[0], 20);
}

void tst_LevelArray::whateverMovesALevelIsRemembered() {
    SlotArray universe{};
    LevelArray levels;
    for (int i = 0; i < 4; ++i) {
        levels.add(50);
    }
    QVERIFY(!levels.hasMoved());
    QVERIFY(movedOf(levels).empty());

    QVERIFY(!levels.setValue(3, 50));
    levels.goTo(3, 50, 2, 0);
    QVERIFY(!levels.hasMoved());

    QVERIFY(levels.setValue(0, 51));
    levels.goTo(1, 60, 0, 0);
    levels.goTo(2, 60, 1, 0); // moves when it is stepped
    QVERIFY(levels.hasMoved());
    QCOMPARE(movedOf(levels), (Indices{0, 1}));
    levels.updateDMX(universe, Second / 2);
    QCOMPARE(movedOf(levels), Indices{2});
    QVERIFY(movedOf(levels).empty());
}

// Whoever cannot be seen asks only whether there was anything, and wants to know what once it can.
void tst_LevelArray::whatIsTakenAsAWholeIsStillToldOneByOne() {
    LevelArray levels;
    levels.add(0);
    levels.add(0);
    levels.setValue(0, 1);
    QVERIFY(levels.takeHasMoved());
    QVERIFY(!levels.takeHasMoved());
    levels.setValue(1, 1);
    QCOMPARE(movedOf(levels), (Indices{0, 1}));
}

QTEST_APPLESS_MAIN(tst_LevelArray)
#include "tst_LevelArray.moc"
