#include "artnet/OutageLog.h"

#include "clock/MonotonicClock.h"
#include "print/Print.h"

#include <cstring>
#include <string>
#include <utility>

namespace {

// Every universe in use is tried once a second at least.
constexpr std::uint64_t quietNanoseconds = 1'000'000'000;

} // namespace

void OutageLog::note(int error) {
    if (error != 0) {
        lastFailure_ = monotonicNanoseconds();
        if (!std::exchange(isOut_, true)) {
            printError(std::string("Art-Net output fails: ") + std::strerror(error));
        }
    } else if (isOut_ && monotonicNanoseconds() - lastFailure_ >= quietNanoseconds) {
        isOut_ = false;
        printError("Art-Net output works again");
    }
}
