#pragma once

#include "process/Alarm.h"

#include <QObject>

#include <cstdint>
#include <functional>

/// When the next tick is due: the first of start + k x 33.3 ms, k from 1 up, that lies after now. All in
/// nanoseconds of the monotonic clock.
std::uint64_t nextTickDue(std::uint64_t startNanoseconds, std::uint64_t now);

/// The heartbeat of the output: ticks on the grid of nextTickDue(), so that lateness never adds up. Ticks
/// that were missed are left out, not made up for, and none comes while a menu of the program is open.
class Ticker : public QObject {
    Q_OBJECT

public:
    explicit Ticker(QObject* parent = nullptr);

    /// Starts the grid now; the first tick comes 33.3 ms later. Ticks as long as the ticker lives.
    void start(std::function<void()> tick);

private:
    void setAlarm();
    void answerAlarm();

    Alarm alarm_;
    std::uint64_t start_ = 0;
    std::function<void()> tick_;
};
