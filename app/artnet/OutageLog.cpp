#include "artnet/OutageLog.h"

#include "clock/MonotonicClock.h"

#include <cstdio>
#include <cstring>
#include <utility>

namespace {

// Every universe in use is tried once a second at least.
constexpr std::uint64_t quietNanoseconds = 1'000'000'000;

} // namespace

void OutageLog::note(int error) {
    if (error != 0) {
        lastFailure_ = monotonicNanoseconds();
        if (!std::exchange(isOut_, true)) {
            std::fprintf(stderr, "Art-Net output fails: %s\n", std::strerror(error));
        }
    } else if (isOut_ && monotonicNanoseconds() - lastFailure_ >= quietNanoseconds) {
        isOut_ = false;
        std::fputs("Art-Net output works again\n", stderr);
    }
}
