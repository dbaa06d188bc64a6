#include "Ticker.h"

#include "clock/MonotonicClock.h"

#include <QApplication>
#include <QMenu>

#include <utility>

namespace {

constexpr std::uint64_t tickNanoseconds = 33'300'000;

bool isMenuOpen() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget()) != nullptr;
}

} // namespace

std::uint64_t nextTickDue(std::uint64_t startNanoseconds, std::uint64_t now) {
    const std::uint64_t ticksSoFar = now > startNanoseconds ? (now - startNanoseconds) / tickNanoseconds : 0;
    return startNanoseconds + (ticksSoFar + 1) * tickNanoseconds;
}

Ticker::Ticker(QObject* parent) : QObject(parent) {
    connect(&alarm_, &Alarm::rang, this, &Ticker::answerAlarm);
}

void Ticker::start(std::function<void()> tick) {
    tick_ = std::move(tick);
    start_ = monotonicNanoseconds();
    setAlarm();
}

void Ticker::setAlarm() {
    alarm_.set(nextTickDue(start_, monotonicNanoseconds()));
}

void Ticker::answerAlarm() {
    if (!isMenuOpen()) {
        tick_();
    }
    // After the tick: one that took longer than its share leaves out the next instead of having it at once.
    setAlarm();
}
