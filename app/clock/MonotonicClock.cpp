#include "clock/MonotonicClock.h"

#include <chrono>
#include <utility>

namespace {

std::uint64_t systemClock() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::nanoseconds(sinceStart).count());
}

MonotonicClock gClock = systemClock;

} // namespace

std::uint64_t monotonicNanoseconds() {
    return gClock();
}

MonotonicClock setMonotonicClock(MonotonicClock clock) {
    return std::exchange(gClock, clock ? clock : systemClock);
}
