#include "levels/Fade.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr std::uint64_t Millisecond = 1'000'000;
constexpr std::uint64_t Second = 1'000 * Millisecond;
constexpr std::uint64_t Tick = 33'300'000;
constexpr float Infinity = std::numeric_limits<float>::infinity();
constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();

Fade started(std::uint32_t from, std::uint32_t target, float seconds, std::uint64_t now = 0) {
    Fade fade;
    fade.start(from, target, seconds, now);
    return fade;
}

} // namespace

class tst_Fade : public QObject {
    Q_OBJECT

private slots:
    void aFadeMovesInAStraightLine_data();
    void aFadeMovesInAStraightLine();
    void aRateIsValueUnitsPerSecondWithASign_data();
    void aRateIsValueUnitsPerSecondWithASign();
    void withoutATimeOrAWayToGoNoFadeRuns_data();
    void withoutATimeOrAWayToGoNoFadeRuns();
    void theLevelIsTruncatedTowardsZero();
    void aFadeThatLandsExactlyOnItsTargetRestsThereForOneMoreStep_data();
    void aFadeThatLandsExactlyOnItsTargetRestsThereForOneMoreStep();
    void aLateStepEndsTheFadeOnItsTarget_data();
    void aLateStepEndsTheFadeOnItsTarget();
    void aFadeOfANegativeTimeIsOverAtItsFirstStep_data();
    void aFadeOfANegativeTimeIsOverAtItsFirstStep();
    void aTimeThatIsNotANumberCountsAsATimeAndGivesLevel0();
    void ticksOfAFadeAddUpToItsTime();
    void aSlowFadeKeepsItsFractionFromTickToTick();
    void aClockThatStandsStillMovesNothing();
    void aFadeAskedForAgainInMidFlightStartsFromTheIntegerLevel();
    void theHighestLevelIsReached();
};

void tst_Fade::aFadeMovesInAStraightLine_data() {
    QTest::addColumn<quint32>("from");
    QTest::addColumn<quint32>("target");
    QTest::addColumn<float>("seconds");
    QTest::addColumn<quint64>("milliseconds");
    QTest::addColumn<quint32>("level");

    QTest::newRow("up, at its start") << 0U << 200U << 2.0F << quint64{0} << 0U;
    QTest::newRow("up, a quarter") << 0U << 200U << 2.0F << quint64{500} << 50U;
    QTest::newRow("up, half") << 0U << 200U << 2.0F << quint64{1000} << 100U;
    QTest::newRow("up, just before the end") << 0U << 200U << 2.0F << quint64{1999} << 199U;
    QTest::newRow("down, half") << 255U << 0U << 1.0F << quint64{500} << 127U;
    QTest::newRow("16 bit, half") << 0U << 65535U << 10.0F << quint64{5000} << 32767U;
    QTest::newRow("one step of the scale, just before it") << 7U << 8U << 1.0F << quint64{999} << 7U;
    QTest::newRow("an hour, a quarter") << 0U << 100U << 3600.0F << quint64{900'000} << 25U;
}

void tst_Fade::aFadeMovesInAStraightLine() {
    QFETCH(const quint32, from);
    QFETCH(const quint32, target);
    QFETCH(const float, seconds);
    QFETCH(const quint64, milliseconds);
    constexpr std::uint64_t start = 5 * Second;
    Fade fade = started(from, target, seconds, start);
    QTEST(fade.step(start + milliseconds * Millisecond), "level");
    QVERIFY(fade.running());
}

void tst_Fade::aRateIsValueUnitsPerSecondWithASign_data() {
    QTest::addColumn<quint32>("from");
    QTest::addColumn<quint32>("target");
    QTest::addColumn<float>("seconds");
    QTest::addColumn<double>("rate");

    QTest::newRow("up") << 0U << 200U << 2.0F << 100.0;
    QTest::newRow("down") << 255U << 0U << 1.0F << -255.0;
    QTest::newRow("down, negative time") << 100U << 0U << -2.0F << 50.0;
    QTest::newRow("from the highest level") << 4294967295U << 0U << 1.0F << -4294967295.0;
}

void tst_Fade::aRateIsValueUnitsPerSecondWithASign() {
    QFETCH(const quint32, from);
    QFETCH(const quint32, target);
    QFETCH(const float, seconds);
    QTEST(started(from, target, seconds).slewRate, "rate");
}

void tst_Fade::withoutATimeOrAWayToGoNoFadeRuns_data() {
    QTest::addColumn<quint32>("from");
    QTest::addColumn<quint32>("target");
    QTest::addColumn<float>("seconds");

    QTest::newRow("no time") << 0U << 100U << 0.0F;
    QTest::newRow("negative zero") << 0U << 100U << -0.0F;
    QTest::newRow("nothing to go") << 100U << 100U << 3.0F;
    QTest::newRow("nothing to go in a negative time") << 100U << 100U << -3.0F;
    QTest::newRow("endless time") << 0U << 100U << Infinity;
}

void tst_Fade::withoutATimeOrAWayToGoNoFadeRuns() {
    QFETCH(const quint32, from);
    QFETCH(const quint32, target);
    QFETCH(const float, seconds);
    const Fade fade = started(from, target, seconds);
    QVERIFY(!fade.running());
    QCOMPARE(fade.slewRate, 0.0);
}

void tst_Fade::theLevelIsTruncatedTowardsZero() {
    Fade up = started(0, 100, 1);
    QCOMPARE(up.step(Second - 1000), 99U);
    Fade down = started(100, 0, 1);
    QCOMPARE(down.step(1000), 99U);
}

void tst_Fade::aFadeThatLandsExactlyOnItsTargetRestsThereForOneMoreStep_data() {
    QTest::addColumn<quint32>("from");
    QTest::addColumn<quint32>("target");

    // A quarter of a second is exact in binary, and so are rates and ways of whole quarters.
    QTest::newRow("up") << 0U << 128U;
    QTest::newRow("down") << 128U << 0U;
    QTest::newRow("down to 64") << 192U << 64U;
}

void tst_Fade::aFadeThatLandsExactlyOnItsTargetRestsThereForOneMoreStep() {
    QFETCH(const quint32, from);
    QFETCH(const quint32, target);
    Fade fade = started(from, target, 1);
    for (const std::uint64_t milliseconds : {250U, 500U, 750U}) {
        fade.step(milliseconds * Millisecond);
    }
    QCOMPARE(fade.step(Second), target);
    QVERIFY(fade.running());
    QCOMPARE(fade.step(Second + Tick), target);
    QVERIFY(!fade.running());
    QCOMPARE(fade.currValue, static_cast<double>(target));
}

void tst_Fade::aLateStepEndsTheFadeOnItsTarget_data() {
    QTest::addColumn<quint32>("from");
    QTest::addColumn<quint32>("target");
    QTest::addColumn<float>("seconds");
    QTest::addColumn<quint64>("now");

    QTest::newRow("up, a tick late") << 0U << 200U << 2.0F << quint64{2 * Second + Tick};
    QTest::newRow("down, a tick late") << 255U << 0U << 1.0F << quint64{Second + Tick};
    QTest::newRow("down, not to 0") << 255U << 3U << 1.0F << quint64{Second + Tick};
    QTest::newRow("an hour late") << 0U << 200U << 2.0F << quint64{3600 * Second};
    QTest::newRow("the longest time that can pass") << 9U << 200U << 2.0F << ~quint64{0};
    QTest::newRow("the shortest time there is")
        << 0U << 4294967295U << std::numeric_limits<float>::denorm_min() << quint64{1};
}

void tst_Fade::aLateStepEndsTheFadeOnItsTarget() {
    QFETCH(const quint32, from);
    QFETCH(const quint32, target);
    QFETCH(const float, seconds);
    QFETCH(const quint64, now);
    Fade fade = started(from, target, seconds);
    QCOMPARE(fade.step(now), target);
    QVERIFY(!fade.running());
    QCOMPARE(fade.currValue, static_cast<double>(target));
}

void tst_Fade::aFadeOfANegativeTimeIsOverAtItsFirstStep_data() {
    QTest::addColumn<quint32>("from");
    QTest::addColumn<quint32>("target");
    QTest::addColumn<float>("seconds");
    QTest::addColumn<quint64>("now");

    QTest::newRow("up, next tick") << 10U << 200U << -2.0F << quint64{Tick};
    QTest::newRow("up, at once") << 10U << 200U << -2.0F << quint64{0};
    QTest::newRow("down, next tick") << 200U << 10U << -2.0F << quint64{Tick};
    QTest::newRow("down, late") << 200U << 10U << -0.001F << quint64{3600 * Second};
    QTest::newRow("endless negative") << 200U << 200U << -Infinity << quint64{Tick};
}

void tst_Fade::aFadeOfANegativeTimeIsOverAtItsFirstStep() {
    QFETCH(const quint32, from);
    QFETCH(const quint32, target);
    QFETCH(const float, seconds);
    QFETCH(const quint64, now);
    Fade fade = started(from, target, seconds);
    QCOMPARE(fade.step(now), target);
    QVERIFY(!fade.running());
}

void tst_Fade::aTimeThatIsNotANumberCountsAsATimeAndGivesLevel0() {
    Fade fade = started(100, 200, NotANumber);
    QVERIFY(fade.running());
    QVERIFY(std::isnan(fade.slewRate));
    QCOMPARE(fade.step(Tick), 0U);
    QCOMPARE(fade.step(2 * Tick), 0U);
    QVERIFY(fade.running());
    // The next fade with a time starts from there as if nothing had been.
    fade.start(0, 200, 2, 2 * Tick);
    QCOMPARE(fade.step(2 * Tick + Second), 100U);
}

void tst_Fade::ticksOfAFadeAddUpToItsTime() {
    Fade fade = started(0, 200, 2);
    std::uint64_t now = 0;
    std::uint32_t level = 0;
    for (int tick = 1; tick <= 60; ++tick) {
        now += Tick;
        const std::uint32_t next = fade.step(now);
        QVERIFY(next >= level && next - level <= 4);
        level = next;
        if (tick == 15) {
            QCOMPARE(level, 49U); // 499.5 ms
        }
        if (tick == 30) {
            QCOMPARE(level, 99U); // 999 ms
        }
    }
    QCOMPARE(level, 199U); // 1.998 s
    QVERIFY(fade.running());
    QCOMPARE(fade.step(now + Tick), 200U);
    QVERIFY(!fade.running());
}

void tst_Fade::aSlowFadeKeepsItsFractionFromTickToTick() {
    Fade fade = started(0, 10, 100); // one unit in ten seconds, 300 ticks of it
    std::uint64_t now = 0;
    for (int tick = 1; tick <= 300; ++tick) {
        now += Tick;
        QCOMPARE(fade.step(now), 0U); // 9.99 s
    }
    QCOMPARE(fade.step(now + Tick), 1U);
}

void tst_Fade::aClockThatStandsStillMovesNothing() {
    Fade fade = started(50, 200, 2, Second);
    for (int tick = 0; tick < 10; ++tick) {
        QCOMPARE(fade.step(Second), 50U);
    }
    QVERIFY(fade.running());
}

void tst_Fade::aFadeAskedForAgainInMidFlightStartsFromTheIntegerLevel() {
    Fade fade = started(0, 255, 2);
    QCOMPARE(fade.step(Second), 127U);
    QCOMPARE(fade.currValue, 127.5);
    fade.start(127, 0, 1, Second);
    QCOMPARE(fade.currValue, 127.0);
    QCOMPARE(fade.slewRate, -127.0);
    QCOMPARE(fade.step(Second + 500 * Millisecond), 63U);
    QCOMPARE(fade.step(2 * Second + 1), 0U);
    QVERIFY(!fade.running());
}

void tst_Fade::theHighestLevelIsReached() {
    Fade fade = started(0, 4294967295U, 1);
    QCOMPARE(fade.step(500 * Millisecond), 2147483647U);
    QCOMPARE(fade.step(2 * Second), 4294967295U);
}

QTEST_APPLESS_MAIN(tst_Fade)
#include "tst_Fade.moc"
