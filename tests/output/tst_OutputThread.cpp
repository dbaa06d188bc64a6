#include "output/OutputThread.h"

#include "clock/MonotonicClock.h"
#include "output/EngineFixture.h"
#include "output/TickGrid.h"
#include "support/NoMoreDescriptors.h"

#include <QTest>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr std::uint64_t Millisecond = 1'000'000;
constexpr std::chrono::seconds Patience{20};

/// An engine whose every tick is news, and the moments of its ticks.
class TickRecorder {
public:
    /// `during` is called in every tick.
    explicit TickRecorder(std::function<void()> during = {}) : during_(std::move(during)) {
        const auto levels = makeLevels(engine_, 0, 1);
        levels->held()->setValue(0, 300); // beyond its slot: a change every time
        engine_.setPatch({levels});
        engine_.setNewsListener([this] { note(); });
    }

    Engine& engine() { return engine_; }
    std::vector<std::uint64_t> ticks() {
        const std::lock_guard hold(lock_);
        return ticks_;
    }
    bool waitFor(std::size_t count) {
        std::unique_lock hold(lock_);
        return ticked_.wait_for(hold, Patience, [this, count] { return ticks_.size() >= count; });
    }

private:
    void note() {
        {
            const std::lock_guard hold(lock_);
            ticks_.push_back(monotonicNanoseconds());
        }
        if (during_) {
            during_();
        }
        engine_.takeNews();
        ticked_.notify_all();
    }

    std::function<void()> during_;
    Engine engine_;
    std::mutex lock_;
    std::condition_variable ticked_;
    std::vector<std::uint64_t> ticks_;
};

// How near to the grid of one of the first ten ticks one of the last ten comes. A busy machine delays some
// ticks, a drifting timer all.
std::uint64_t driftOf(const std::vector<std::uint64_t>& ticks) {
    std::uint64_t least = tickNanoseconds;
    for (std::size_t first = 0; first < 10; ++first) {
        for (std::size_t last = ticks.size() - 10; last < ticks.size(); ++last) {
            const std::uint64_t late = (ticks[last] - ticks[first]) % tickNanoseconds;
            least = std::min({least, late, tickNanoseconds - late});
        }
    }
    return least;
}

void spendTime(std::uint64_t nanoseconds) {
    const std::uint64_t start = monotonicNanoseconds();
    while (monotonicNanoseconds() - start < nanoseconds) {
    }
}

} // namespace

class tst_OutputThread : public QObject {
    Q_OBJECT

private slots:
    void itTicksByItself();
    void theFirstTickComesAPeriodAfterTheStart();
    void ticksStayOnTheGrid_data();
    void ticksStayOnTheGrid();
    void aTickThatTakesLongLeavesOutTheNext();
    void itEndsWithoutWaitingForATick();
    void aThreadThatIsGoneTicksNoMore();
    void signalsAreForTheOtherThreads();
};

void tst_OutputThread::itTicksByItself() {
    TickRecorder recorder;
    const OutputThread thread(recorder.engine());
    QVERIFY(recorder.waitFor(3));
}

void tst_OutputThread::theFirstTickComesAPeriodAfterTheStart() {
    TickRecorder recorder;
    const std::uint64_t start = monotonicNanoseconds();
    const OutputThread thread(recorder.engine());
    QVERIFY(recorder.waitFor(1));
    QVERIFY(recorder.ticks().front() - start >= tickNanoseconds);
}

void tst_OutputThread::ticksStayOnTheGrid_data() {
    QTest::addColumn<bool>("descriptorsLeft");

    QTest::newRow("as ever") << true;
    QTest::newRow("without a descriptor left") << false;
}

void tst_OutputThread::ticksStayOnTheGrid() {
    QFETCH(const bool, descriptorsLeft);

    TickRecorder recorder;
    std::optional<NoMoreDescriptors> limit;
    if (!descriptorsLeft) {
        limit.emplace();
    }
    const OutputThread thread(recorder.engine());
    limit.reset();
    QVERIFY(recorder.waitFor(60));
    const std::vector<std::uint64_t> ticks = recorder.ticks();

    // None early and none in a burst: no more ticks than periods.
    const std::uint64_t periods = (ticks[59] - ticks[0] + tickNanoseconds) / tickNanoseconds;
    QVERIFY2(periods >= 59, qPrintable(QString("%1 periods").arg(periods)));
    QVERIFY2(periods < 120, "ticks are missing");

    const std::uint64_t drift = driftOf(ticks);
    QVERIFY2(drift <= 5 * Millisecond, qPrintable(QString("%1 ns").arg(drift)));
}

void tst_OutputThread::aTickThatTakesLongLeavesOutTheNext() {
    TickRecorder recorder([] { spendTime(50 * Millisecond); });
    const OutputThread thread(recorder.engine());
    QVERIFY(recorder.waitFor(10));
    const std::vector<std::uint64_t> ticks = recorder.ticks();
    // Nine times two periods, less what the first one may have been late; one right after the other would
    // come to 450 ms.
    QVERIFY(ticks[9] - ticks[0] >= 580 * Millisecond);
}

void tst_OutputThread::itEndsWithoutWaitingForATick() {
    TickRecorder recorder;
    const std::uint64_t start = monotonicNanoseconds();
    for (int times = 0; times < 100; ++times) {
        const OutputThread thread(recorder.engine());
    }
    QVERIFY(monotonicNanoseconds() - start < 50 * tickNanoseconds);
}

void tst_OutputThread::aThreadThatIsGoneTicksNoMore() {
    TickRecorder recorder;
    {
        const OutputThread thread(recorder.engine());
        QVERIFY(recorder.waitFor(1));
    }
    const std::size_t before = recorder.ticks().size();
    const OutputThread another(recorder.engine());
    QVERIFY(recorder.waitFor(before + 3));
    const std::vector<std::uint64_t> ticks = recorder.ticks();
    // One thread's ticks, not two threads' in turn.
    QVERIFY(ticks[before + 2] - ticks[before] > tickNanoseconds);
}

void tst_OutputThread::signalsAreForTheOtherThreads() {
    sigset_t before;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);
    QCOMPARE(sigismember(&before, SIGTERM), 0);
    int isBlocked = -1;
    TickRecorder recorder([&isBlocked] {
        sigset_t blocked;
        pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
        isBlocked = sigismember(&blocked, SIGTERM);
    });
    {
        const OutputThread thread(recorder.engine());
        sigset_t after;
        pthread_sigmask(SIG_SETMASK, nullptr, &after);
        QCOMPARE(sigismember(&after, SIGTERM), 0);
        QVERIFY(recorder.waitFor(1));
    }
    QCOMPARE(isBlocked, 1);
}

QTEST_APPLESS_MAIN(tst_OutputThread)
#include "tst_OutputThread.moc"
