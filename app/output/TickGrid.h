#pragma once

#include <cstdint>

inline constexpr std::uint64_t tickNanoseconds = 33'300'000;

/// When the next tick is due: the first of start + k x 33.3 ms, k from 1 up, that lies after now. All in
/// nanoseconds of the monotonic clock. Lateness never adds up, and ticks that were missed are left out.
constexpr std::uint64_t nextTickDue(std::uint64_t startNanoseconds, std::uint64_t now) {
    const std::uint64_t ticksSoFar = now > startNanoseconds ? (now - startNanoseconds) / tickNanoseconds : 0;
    return startNanoseconds + (ticksSoFar + 1) * tickNanoseconds;
}
