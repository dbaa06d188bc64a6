#include "output/OutputWatch.h"

#include "clock/MonotonicClock.h"
#include "output/Engine.h"

#include <algorithm>

namespace {

constexpr double nanosecondsPerSecond = 1e9;

// A refresh is due after one second and goes out with the next tick, which may be late.
constexpr std::uint64_t latelyNanoseconds = 1'500'000'000;

bool wasLately(std::uint64_t nanoseconds) {
    return nanoseconds != 0 && monotonicNanoseconds() - nanoseconds <= latelyNanoseconds;
}

} // namespace

OutputStatus OutputWatch::look(const Engine& engine) {
    OutputStatus status;
    Count now;
    for (const SendRecord& record : engine.sendRecords()) {
        now.sent += record.sent;
        if (!wasLately(record.lastNanoseconds)) {
            continue;
        }
        now.lastNanoseconds = std::max(now.lastNanoseconds, record.lastNanoseconds);
        status.universes += record.error == 0 ? 1 : 0;
        status.error = record.error == 0 ? status.error : record.error;
    }
    updateRate(now);
    status.datagramsPerSecond = datagramsPerSecond_;
    return status;
}

// Over the time between the last sends that the two looks saw, not between the looks: those come at any
// moment between two refreshes, and would see now one more of them and now one less. Between refreshes it
// stands.
void OutputWatch::updateRate(const Count& now) {
    const bool isKnown = before_.lastNanoseconds != 0 && now.lastNanoseconds > before_.lastNanoseconds;
    if (isKnown && now.sent > before_.sent) {
        datagramsPerSecond_ = static_cast<double>(now.sent - before_.sent) * nanosecondsPerSecond /
                              static_cast<double>(now.lastNanoseconds - before_.lastNanoseconds);
    } else if (now.lastNanoseconds != before_.lastNanoseconds) {
        datagramsPerSecond_ = 0.0;
    }
    before_ = now;
}
