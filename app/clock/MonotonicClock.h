#pragma once

#include <cstdint>

/// A source of monotonic time in nanoseconds since some fixed moment.
using MonotonicClock = std::uint64_t (*)();

/// The monotonic clock in nanoseconds: never goes back, does not follow the wall clock.
std::uint64_t monotonicNanoseconds();

/// Puts another clock in the place of the system's and returns the one that stood there before; null puts
/// the system's clock back. For tests, which set the time instead of waiting for it.
MonotonicClock setMonotonicClock(MonotonicClock clock);
