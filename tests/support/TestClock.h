#pragma once

#include "clock/MonotonicClock.h"

/// Stands in for the monotonic clock as long as it lives, and moves only when told. One at a time.
class TestClock {
public:
    explicit TestClock(std::uint64_t nanoseconds);
    ~TestClock();
    TestClock(const TestClock&) = delete;
    TestClock& operator=(const TestClock&) = delete;

    void set(std::uint64_t nanoseconds);
    void advance(std::uint64_t nanoseconds);

private:
    MonotonicClock original_;
};
