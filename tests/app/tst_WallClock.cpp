#include "clock/MonotonicClock.h"
#include "output/Engine.h"
#include "output/OutputThread.h"
#include "settings/UserDefaults.h"

#include <QDateTime>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <ctime>
#include <dlfcn.h>
#include <sys/time.h>

namespace {

// Seconds by which the wall clock is off; the monotonic clock goes on as it is.
std::atomic<time_t> gJump = 0;

template <typename Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

// These stand before the system's calls, for the libraries too.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's names are reserved ones
extern "C" int clock_gettime(clockid_t clock, timespec* now) noexcept {
    static auto* const system = original<int(clockid_t, timespec*)>("clock_gettime");
    const int result = system(clock, now);
    if (clock == CLOCK_REALTIME) {
        now->tv_sec += gJump;
    }
    return result;
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): as above
extern "C" int gettimeofday(timeval* now, void* zone) noexcept {
    static auto* const system = original<int(timeval*, void*)>("gettimeofday");
    const int result = system(now, zone);
    now->tv_sec += gJump;
    return result;
}

/// The wall clock jumps back and forth under what runs by time.
class tst_WallClock : public QObject {
    Q_OBJECT

private slots:
    void init() { gJump = 0; }
    void theWallClockJumps();
    void theMonotonicClockDoesNot();
    void ticksComeAsEver_data();
    void ticksComeAsEver();
    void userDefaultsAreWrittenSoonAsEver_data() { ticksComeAsEver_data(); }
    void userDefaultsAreWrittenSoonAsEver();
};

void tst_WallClock::theWallClockJumps() {
    const QDateTime before = QDateTime::currentDateTimeUtc();
    gJump = -86'400;
    QVERIFY(before.secsTo(QDateTime::currentDateTimeUtc()) < -86'000);
}

void tst_WallClock::theMonotonicClockDoesNot() {
    const std::uint64_t before = monotonicNanoseconds();
    gJump = 86'400;
    const std::uint64_t after = monotonicNanoseconds();
    QVERIFY(after >= before && after - before < 60'000'000'000);
}

void tst_WallClock::ticksComeAsEver_data() {
    QTest::addColumn<int>("jump");
    QTest::newRow("an hour forward, each time") << 3'600;
    QTest::newRow("an hour back, each time") << -3'600;
}

void tst_WallClock::ticksComeAsEver() {
    QFETCH(const int, jump);
    std::atomic<int> ticks = 0;
    Engine engine;
    const auto levels = std::make_shared<FixtureLevels>(engine);
    levels->held()->add(0);
    levels->setPlaces(0, std::array{slotPlace(0, 1)});
    levels->held()->setValue(0, 1);
    engine.setPatch({levels});
    // Every tick finds another level.
    engine.setNewsListener([&] {
        ++ticks;
        gJump += jump;
        levels->held()->setValue(0, static_cast<std::uint32_t>(ticks % 2));
        engine.takeNews();
    });
    const std::uint64_t start = monotonicNanoseconds();
    const OutputThread thread(engine);
    QVERIFY(QTest::qWaitFor([&ticks] { return ticks >= 20; }, 10'000));
    const std::uint64_t elapsed = monotonicNanoseconds() - start;
    QVERIFY(static_cast<std::uint64_t>(ticks) <= elapsed / 33'300'000); // none early, no burst
}

void tst_WallClock::userDefaultsAreWrittenSoonAsEver() {
    QFETCH(const int, jump);
    const QTemporaryDir folder;
    UserDefaults defaults(folder.filePath("defaults.plist"));
    defaults.setObject("2.0.0.1", "tx_address");
    gJump = jump;
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(folder.filePath("defaults.plist")), 10'000);
}

QTEST_GUILESS_MAIN(tst_WallClock)
#include "tst_WallClock.moc"
