#include "controls/LevelState.h"

#include <QTest>

#include <array>

namespace {

using SlotArray = std::array<std::uint8_t, 512>;
constexpr std::uint64_t Second = 1'000'000'000;
constexpr std::uint64_t Tick = 33'300'000;

LevelState fader(std::uint32_t channels = 1) {
    LevelState level;
    level.channels = channels;
    level.max = channels == 2 ? 65535 : 255;
    return level;
}

} // namespace

class tst_LevelState : public QObject {
    Q_OBJECT

private slots:
    void aNewLevelIsWrittenOnce();
    void aLevelOf16BitsIsWrittenCoarseByteFirst();
    void aDummyLeavesTheSlotsAlone_data();
    void aDummyLeavesTheSlotsAlone();
    void aControlOutsideItsUniverseLeavesTheSlotsAlone_data();
    void aControlOutsideItsUniverseLeavesTheSlotsAlone();
    void aFadeOutsideTheUniverseRunsAllTheSame();
    void aLevelBeyondTheSlotsRangeIsAChangeEveryTime();
    void twoControlsOnOneSlotWriteInTurn();
    void withoutATimeTheTargetIsTakenAtOnce();
    void theTimeIsKeptForTheNextLevel_data();
    void theTimeIsKeptForTheNextLevel();
    void onlyANewTargetAsksForARedraw_data();
    void onlyANewTargetAsksForARedraw();
    void aFadeOf2SecondsTo200IsAt50AfterHalfASecond();
    void aFadeDownEndsAtExactly0();
    void aFadeAskedForAgainGoesOnFromTheIntegerLevel();
    void aFadeAskedForWithoutATimeEndsTheRunningOne();
    void aDirectChangeDuringAFadeIsOverwrittenByTheNextStep();
    void onlyAStepThatChangesTheLevelAsksForARedraw();
};

void tst_LevelState::aNewLevelIsWrittenOnce() {
    SlotArray levels{};
    LevelState level = fader();
    level.address = 511;
    QVERIFY(!level.updateDMX(levels, 0));
    level.value = 255;
    QVERIFY(level.updateDMX(levels, 0));
    QCOMPARE(levels[511], 255);
    QCOMPARE(levels[510], 0);
    QVERIFY(!level.updateDMX(levels, 0));
}

void tst_LevelState::aLevelOf16BitsIsWrittenCoarseByteFirst() {
    SlotArray levels{};
    LevelState level = fader(2);
    level.address = 4;
    level.value = 1000;
    QVERIFY(level.updateDMX(levels, 0));
    QCOMPARE(levels[4], 0x03);
    QCOMPARE(levels[5], 0xE8);
    QVERIFY(!level.updateDMX(levels, 0));
}

void tst_LevelState::aDummyLeavesTheSlotsAlone_data() {
    QTest::addColumn<quint32>("channels");
    QTest::newRow("blank of four") << 4U;
    QTest::newRow("blank of two") << 2U;
    QTest::newRow("label") << 0U;
}

void tst_LevelState::aDummyLeavesTheSlotsAlone() {
    QFETCH(const quint32, channels);
    SlotArray levels{};
    levels.fill(7);
    const SlotArray before = levels;
    LevelState level = fader(channels);
    level.dummy = true;
    level.goTo(200, 0, 0);
    QVERIFY(!level.updateDMX(levels, Second));
    QCOMPARE(levels, before);
}

void tst_LevelState::aControlOutsideItsUniverseLeavesTheSlotsAlone_data() {
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

void tst_LevelState::aControlOutsideItsUniverseLeavesTheSlotsAlone() {
    QFETCH(const quint32, address);
    QFETCH(const quint32, channels);
    // Room on both sides, so that a byte written over the edge is found here rather than by a crash.
    std::array<std::uint8_t, 1536> memory{};
    memory.fill(7);
    const auto before = memory;
    LevelState level = fader(channels);
    level.address = address;
    level.value = 200;
    QVERIFY(!level.updateDMX(std::span(memory).subspan<512, 512>(), 0));
    QCOMPARE(memory, before);
}

void tst_LevelState::aFadeOutsideTheUniverseRunsAllTheSame() {
    SlotArray levels{};
    LevelState level = fader();
    level.address = 600;
    level.goTo(200, 2, 0);
    QVERIFY(!level.updateDMX(levels, Second));
    QCOMPARE(level.value, 100U);
    QVERIFY(level.needsRedraw);
}

void tst_LevelState::aLevelBeyondTheSlotsRangeIsAChangeEveryTime() {
    SlotArray levels{};
    LevelState level = fader();
    level.value = 300;
    QVERIFY(level.updateDMX(levels, 0));
    QCOMPARE(levels[0], 44);
    QVERIFY(level.updateDMX(levels, 0));
    QCOMPARE(levels[0], 44);
    QCOMPARE(levels[1], 0);
}

void tst_LevelState::twoControlsOnOneSlotWriteInTurn() {
    SlotArray levels{};
    LevelState first = fader();
    LevelState second = fader();
    first.value = 10;
    second.value = 20;
    for (int tick = 0; tick < 3; ++tick) {
        QVERIFY(first.updateDMX(levels, 0));
        QCOMPARE(levels[0], 10);
        QVERIFY(second.updateDMX(levels, 0));
        QCOMPARE(levels[0], 20);
    }
}

void tst_LevelState::withoutATimeTheTargetIsTakenAtOnce() {
    LevelState level = fader();
    QVERIFY(level.goTo(100, 0, 0));
    QCOMPARE(level.value, 100U);
    QVERIFY(!level.fade.running());
    QCOMPARE(level.fade.slewRate, 0.0);
}

void tst_LevelState::theTimeIsKeptForTheNextLevel_data() {
    QTest::addColumn<quint32>("target");
    QTest::addColumn<float>("seconds");

    QTest::newRow("a new level") << 100U << 2.5F;
    QTest::newRow("the present level") << 0U << 2.5F;
    QTest::newRow("no time") << 100U << 0.0F;
    QTest::newRow("a negative time") << 100U << -1.0F;
}

void tst_LevelState::theTimeIsKeptForTheNextLevel() {
    QFETCH(const quint32, target);
    QFETCH(const float, seconds);
    LevelState level = fader();
    level.time = 9;
    level.goTo(target, seconds, 0);
    QCOMPARE(level.time, seconds);
}

void tst_LevelState::onlyANewTargetAsksForARedraw_data() {
    QTest::addColumn<quint32>("target");
    QTest::addColumn<float>("seconds");
    QTest::addColumn<bool>("redraw");
    QTest::addColumn<bool>("fades");

    QTest::newRow("at once") << 100U << 0.0F << true << false;
    QTest::newRow("in a time") << 100U << 2.0F << true << true;
    QTest::newRow("the present level at once") << 50U << 0.0F << false << false;
    QTest::newRow("the present level in a time") << 50U << 2.0F << false << false;
}

void tst_LevelState::onlyANewTargetAsksForARedraw() {
    QFETCH(const quint32, target);
    QFETCH(const float, seconds);
    LevelState level = fader();
    level.value = 50;
    QTEST(level.goTo(target, seconds, 0), "redraw");
    QTEST(level.fade.running(), "fades");
}

void tst_LevelState::aFadeOf2SecondsTo200IsAt50AfterHalfASecond() {
    SlotArray levels{};
    LevelState level = fader();
    level.goTo(200, 2, 0);
    QCOMPARE(level.value, 0U);
    QCOMPARE(level.fade.slewRate, 100.0);
    std::uint64_t now = 0;
    for (; now < Second / 2; now += Second / 32) {
        level.updateDMX(levels, now);
    }
    QVERIFY(level.updateDMX(levels, Second / 2));
    QCOMPARE(level.value, 50U);
    QCOMPARE(levels[0], 50);
    level.updateDMX(levels, 2 * Second);
    QVERIFY(!level.updateDMX(levels, 2 * Second + Tick));
    QCOMPARE(level.value, 200U);
    QCOMPARE(levels[0], 200);
    QVERIFY(!level.fade.running());
}

void tst_LevelState::aFadeDownEndsAtExactly0() {
    SlotArray levels{};
    LevelState level = fader();
    level.value = 255;
    level.goTo(0, 1, 0);
    for (std::uint64_t now = 0; now <= Second + 2 * Tick; now += Tick) {
        level.updateDMX(levels, now);
    }
    QCOMPARE(level.value, 0U);
    QCOMPARE(levels[0], 0);
    QVERIFY(!level.fade.running());
}

void tst_LevelState::aFadeAskedForAgainGoesOnFromTheIntegerLevel() {
    SlotArray levels{};
    LevelState level = fader();
    level.goTo(255, 2, 0);
    level.updateDMX(levels, Second);
    QCOMPARE(level.value, 127U);
    QVERIFY(level.goTo(255, 2, Second));
    QCOMPARE(level.value, 127U);
    QCOMPARE(level.fade.slewRate, 64.0); // 128 to go, not 127.5
    level.updateDMX(levels, 2 * Second);
    QCOMPARE(level.value, 191U);
}

void tst_LevelState::aFadeAskedForWithoutATimeEndsTheRunningOne() {
    SlotArray levels{};
    LevelState level = fader();
    level.goTo(200, 2, 0);
    level.updateDMX(levels, Second);
    QVERIFY(level.goTo(30, 0, Second));
    QCOMPARE(level.value, 30U);
    level.updateDMX(levels, 3 * Second);
    QCOMPARE(level.value, 30U);
}

void tst_LevelState::aDirectChangeDuringAFadeIsOverwrittenByTheNextStep() {
    SlotArray levels{};
    LevelState level = fader();
    level.goTo(200, 2, 0);
    level.updateDMX(levels, Second / 2);
    level.value = 3;
    level.updateDMX(levels, Second);
    QCOMPARE(level.value, 100U);
    QCOMPARE(levels[0], 100);
}

void tst_LevelState::onlyAStepThatChangesTheLevelAsksForARedraw() {
    SlotArray levels{};
    LevelState level = fader();
    level.goTo(10, 10, 0);
    level.updateDMX(levels, Second / 2);
    QVERIFY(!level.needsRedraw);
    level.updateDMX(levels, Second + 1000);
    QVERIFY(level.needsRedraw);
    level.needsRedraw = false;
    level.updateDMX(levels, Second + 2000);
    QVERIFY(!level.needsRedraw);
}

QTEST_APPLESS_MAIN(tst_LevelState)
#include "tst_LevelState.moc"
