#include "process/Alarm.h"

#include "clock/MonotonicClock.h"

#include <QSocketNotifier>
#include <QTimer>

#ifdef __linux__
#include <sys/timerfd.h>
#include <unistd.h>
#endif

#include <chrono>

namespace {

#ifdef __linux__

constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;

int openDescriptor() {
    return timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
}

void closeDescriptor(int descriptor) {
    close(descriptor);
}

void setDescriptor(int descriptor, std::uint64_t due) {
    itimerspec once{};
    once.it_value.tv_sec = static_cast<time_t>(due / nanosecondsPerSecond);
    once.it_value.tv_nsec = static_cast<long>(due % nanosecondsPerSecond);
    timerfd_settime(descriptor, TFD_TIMER_ABSTIME, &once, nullptr);
}

/// Takes the ring out of the descriptor; false when it has been set anew since it rang.
bool takeRing(int descriptor) {
    std::uint64_t rings = 0;
    return read(descriptor, &rings, sizeof rings) == sizeof rings;
}

#else

int openDescriptor() {
    return -1;
}
void closeDescriptor(int) {}
void setDescriptor(int, std::uint64_t) {}
bool takeRing(int) {
    return false;
}

#endif

/// Rounded up, since a ring before its time would be due a second time.
std::chrono::milliseconds timeUntil(std::uint64_t due) {
    const std::uint64_t now = monotonicNanoseconds();
    return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::nanoseconds(due > now ? due - now : 0));
}

} // namespace

Alarm::Alarm(QObject* parent) : QObject(parent), descriptor_(openDescriptor()), timer_(new QTimer(this)) {
    if (descriptor_ >= 0) {
        auto* notifier = new QSocketNotifier(descriptor_, QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, &Alarm::answerDescriptor);
    }
    timer_->setSingleShot(true);
    timer_->setTimerType(Qt::PreciseTimer);
    connect(timer_, &QTimer::timeout, this, &Alarm::rang);
}

Alarm::~Alarm() {
    if (descriptor_ >= 0) {
        closeDescriptor(descriptor_);
    }
}

void Alarm::set(std::uint64_t due) {
    if (descriptor_ >= 0) {
        setDescriptor(descriptor_, due);
    } else {
        timer_->start(timeUntil(due));
    }
}

void Alarm::answerDescriptor() {
    if (takeRing(descriptor_)) {
        emit rang();
    }
}
