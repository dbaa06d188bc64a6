#include "output/OutputThread.h"

#include "clock/MonotonicClock.h"
#include "output/Engine.h"
#include "output/TickGrid.h"

#include <chrono>
#include <csignal>
#include <cstdint>

namespace {

// Signals are for the thread that the program began with, which has handlers for them.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    SignalsBlocked(SignalsBlocked&&) = delete;
    SignalsBlocked& operator=(SignalsBlocked&&) = delete;

private:
    sigset_t before_{};
};

} // namespace

OutputThread::OutputThread(Engine& engine) : engine_(engine) {
    const SignalsBlocked inTheNewThread;
    thread_ = std::thread([this] { run(); });
}

OutputThread::~OutputThread() {
    {
        const std::lock_guard hold(lock_);
        isEnded_ = true;
    }
    ended_.notify_all();
    thread_.join();
}

void OutputThread::run() {
    const std::uint64_t start = monotonicNanoseconds();
    while (waitFor(nextTickDue(start, monotonicNanoseconds()))) {
        engine_.tick();
    }
}

// False when the thread is to end.
bool OutputThread::waitFor(std::uint64_t due) {
    const auto until = std::chrono::steady_clock::time_point(std::chrono::nanoseconds(due));
    std::unique_lock hold(lock_);
    ended_.wait_until(hold, until, [this] { return isEnded_; });
    return !isEnded_;
}
