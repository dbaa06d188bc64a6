#include "support/StoppedDisk.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>

namespace {

std::atomic<bool> isStopped = false;
std::atomic<bool> failsNext = false;
std::atomic<int> waiting = 0;

} // namespace

// Stands before the one of the C library.
extern "C" int fsync(int /*descriptor*/) {
    ++waiting;
    isStopped.wait(true);
    --waiting;
    if (failsNext.exchange(false)) {
        errno = EIO;
        return -1;
    }
    return 0;
}

StoppedDisk::StoppedDisk() {
    isStopped = true;
}

bool StoppedDisk::isWaitedFor() const {
    return waiting > 0;
}

void StoppedDisk::letGoOn() {
    isStopped = false;
    isStopped.notify_all();
}

void StoppedDisk::fail() {
    failsNext = true;
    letGoOn();
}
