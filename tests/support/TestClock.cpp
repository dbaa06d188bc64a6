#include "support/TestClock.h"

namespace {

std::uint64_t gNow = 0;

} // namespace

TestClock::TestClock(std::uint64_t nanoseconds) : original_(setMonotonicClock([] { return gNow; })) {
    set(nanoseconds);
}

TestClock::~TestClock() {
    setMonotonicClock(original_);
}

void TestClock::set(std::uint64_t nanoseconds) {
    gNow = nanoseconds;
}

void TestClock::advance(std::uint64_t nanoseconds) {
    gNow += nanoseconds;
}
