#include "Ticker.h"

#include "clock/MonotonicClock.h"
#include "support/NoMoreDescriptors.h"

#include <QApplication>
#include <QEventLoop>
#include <QFrame>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr std::uint64_t Period = 33'300'000;
constexpr std::uint64_t Millisecond = 1'000'000;

/// A running ticker and the moments of its ticks, in nanoseconds since its start.
class TickRecorder {
public:
    TickRecorder() {
        start_ = monotonicNanoseconds();
        ticker_.start([this] { ticks_.push_back(monotonicNanoseconds() - start_); });
    }

    const std::vector<std::uint64_t>& ticks() const { return ticks_; }
    std::uint64_t elapsed() const { return monotonicNanoseconds() - start_; }
    bool waitFor(std::size_t count) {
        return QTest::qWaitFor([this, count] { return ticks_.size() >= count; }, 10'000);
    }

private:
    std::uint64_t start_ = 0;
    std::vector<std::uint64_t> ticks_;
    Ticker ticker_;
};

/// As the program does it: QTest::qWait() looks at events only every ten milliseconds.
void runEventLoop(std::chrono::milliseconds duration) {
    QEventLoop loop;
    QTimer::singleShot(duration, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Each tick in a period of its own, the first period without one: no tick early, none in a burst.
bool oneTickPerPeriod(const std::vector<std::uint64_t>& ticks) {
    std::uint64_t period = 0;
    return std::ranges::all_of(ticks, [&period](std::uint64_t tick) {
        return tick / Period > std::exchange(period, tick / Period);
    });
}

/// How late the most punctual of the last ten ticks was. A busy machine delays some, a drifting timer all.
std::uint64_t leastLatenessAtTheEnd(const std::vector<std::uint64_t>& ticks) {
    std::uint64_t least = Period;
    for (std::size_t index = ticks.size() - 10; index < ticks.size(); ++index) {
        least = std::min(least, ticks[index] % Period);
    }
    return least;
}

} // namespace

class tst_Ticker : public QObject {
    Q_OBJECT

private slots:
    void nextTickIsOnTheGridAfterNow_data();
    void nextTickIsOnTheGridAfterNow();
    void aMinuteHasTheSameTicksHoweverLateEachIs_data();
    void aMinuteHasTheSameTicksHoweverLateEachIs();
    void ticksStayOnTheGrid_data();
    void ticksStayOnTheGrid();
    void timeWithoutTheEventLoopGivesOneTickAndNoBurst();
    void aTickThatTakesLongLeavesOutTheNext();
    void anOpenMenuHoldsTheTicks();
    void anOpenSubmenuHoldsTheTicks();
    void anotherPopupHoldsNothing();
    void aTickerThatIsGoneTicksNoMore();
};

void tst_Ticker::nextTickIsOnTheGridAfterNow_data() {
    QTest::addColumn<quint64>("start");
    QTest::addColumn<quint64>("now");
    QTest::addColumn<quint64>("due");

    QTest::newRow("at the start") << quint64(0) << quint64(0) << quint64(33'300'000);
    QTest::newRow("just before a tick") << quint64(0) << quint64(33'299'999) << quint64(33'300'000);
    QTest::newRow("at a tick") << quint64(0) << quint64(33'300'000) << quint64(66'600'000);
    QTest::newRow("just after a tick") << quint64(0) << quint64(33'300'001) << quint64(66'600'000);
    QTest::newRow("late by several ticks") << quint64(0) << quint64(200'000'000) << quint64(233'100'000);
    QTest::newRow("another start") << quint64(1'000) << quint64(33'300'000) << quint64(33'301'000);
    QTest::newRow("before the start") << quint64(1'000) << quint64(0) << quint64(33'301'000);
    QTest::newRow("after an hour") << quint64(7) << quint64(3'600'000'000'007) << quint64(3'600'029'700'007);
    QTest::newRow("after a century of uptime")
        << quint64(3'155'760'000'000'000'000) << quint64(3'155'760'000'000'000'001)
        << quint64(3'155'760'000'033'300'000);
}

void tst_Ticker::nextTickIsOnTheGridAfterNow() {
    QFETCH(const quint64, start);
    QFETCH(const quint64, now);
    QFETCH(const quint64, due);

    QCOMPARE(nextTickDue(start, now), due);
}

void tst_Ticker::aMinuteHasTheSameTicksHoweverLateEachIs_data() {
    QTest::addColumn<quint64>("lateness");

    QTest::newRow("on time") << quint64(0);
    QTest::newRow("20 ms late") << quint64(20'000'000);
    QTest::newRow("late by all but a nanosecond of a period") << quint64(33'299'999);
}

void tst_Ticker::aMinuteHasTheSameTicksHoweverLateEachIs() {
    QFETCH(const quint64, lateness);

    constexpr quint64 start = 7;
    constexpr quint64 minute = 60'000'000'000;
    int ticks = 0;
    quint64 lastDue = start;
    for (quint64 due = nextTickDue(start, start); due <= start + minute;
         due = nextTickDue(start, lastDue + lateness)) {
        lastDue = due;
        ++ticks;
    }
    QCOMPARE(ticks, 1801);
    QCOMPARE(lastDue, quint64(59'973'300'007));
}

void tst_Ticker::ticksStayOnTheGrid_data() {
    QTest::addColumn<bool>("descriptorsLeft");

    QTest::newRow("by a descriptor") << true;
    QTest::newRow("by a timer of the toolkit") << false;
}

void tst_Ticker::ticksStayOnTheGrid() {
    QFETCH(const bool, descriptorsLeft);

    std::optional<NoMoreDescriptors> limit;
    if (!descriptorsLeft) {
        limit.emplace();
    }
    TickRecorder recorder;
    limit.reset();

    runEventLoop(std::chrono::seconds{2});
    const auto periods = recorder.elapsed() / Period;
    QVERIFY(periods >= 60);
    QVERIFY(oneTickPerPeriod(recorder.ticks()));
    QVERIFY2(recorder.ticks().size() > periods / 2, "ticks are missing");
    QVERIFY(recorder.ticks().size() <= periods);
    const auto lateness = leastLatenessAtTheEnd(recorder.ticks());
    QVERIFY2(lateness <= 5 * Millisecond, (QByteArray::number(quint64{lateness}) + " ns late").constData());
}

void tst_Ticker::timeWithoutTheEventLoopGivesOneTickAndNoBurst() {
    TickRecorder recorder;
    QTest::qSleep(200);
    QVERIFY(recorder.waitFor(3));
    QVERIFY(recorder.ticks().front() >= 200 * Millisecond);
    QVERIFY(oneTickPerPeriod(recorder.ticks()));
}

void tst_Ticker::aTickThatTakesLongLeavesOutTheNext() {
    Ticker ticker;
    std::vector<std::uint64_t> begins;
    const std::uint64_t start = monotonicNanoseconds();
    ticker.start([&begins, start] {
        begins.push_back(monotonicNanoseconds() - start);
        QTest::qSleep(50);
    });
    QVERIFY(QTest::qWaitFor([&begins] { return begins.size() >= 3; }, 10'000));
    QVERIFY(oneTickPerPeriod(begins));
    QVERIFY(begins[1] / Period >= begins[0] / Period + 2);
    QVERIFY(begins[2] / Period >= begins[1] / Period + 2);
}

void tst_Ticker::anOpenMenuHoldsTheTicks() {
    TickRecorder recorder;
    QVERIFY(recorder.waitFor(1));

    QMenu menu;
    menu.addAction("Quit");
    menu.popup({});
    QCOMPARE(QApplication::activePopupWidget(), &menu);
    const auto before = recorder.ticks().size();
    QTest::qWait(150);
    QCOMPARE(recorder.ticks().size(), before);

    menu.close();
    QVERIFY(recorder.waitFor(before + 3));
    QVERIFY(oneTickPerPeriod(recorder.ticks()));
}

void tst_Ticker::anOpenSubmenuHoldsTheTicks() {
    TickRecorder recorder;
    QMenu menu;
    QMenu* submenu = menu.addMenu("Window");
    submenu->addAction("Front");
    menu.popup({});
    submenu->popup({});
    QCOMPARE(QApplication::activePopupWidget(), submenu);
    QTest::qWait(150);
    QVERIFY(recorder.ticks().empty());
}

void tst_Ticker::anotherPopupHoldsNothing() {
    TickRecorder recorder;
    QFrame popup(nullptr, Qt::Popup);
    popup.show();
    QCOMPARE(QApplication::activePopupWidget(), &popup);
    QVERIFY(recorder.waitFor(3));
}

void tst_Ticker::aTickerThatIsGoneTicksNoMore() {
    bool ticked = false;
    auto ticker = std::make_unique<Ticker>();
    ticker->start([&ticked] { ticked = true; });
    ticker.reset();
    QTest::qWait(100);
    QVERIFY(!ticked);
}

QTEST_MAIN(tst_Ticker)
#include "tst_Ticker.moc"
