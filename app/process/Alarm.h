#pragma once

#include <QObject>

#include <cstdint>

class QTimer;

/// Rings once at a moment of the monotonic clock, never before it. Linux wakes us to the nanosecond by a
/// descriptor; where there is none to be had, a timer of the toolkit rings within the millisecond after.
class Alarm : public QObject {
    Q_OBJECT

public:
    explicit Alarm(QObject* parent = nullptr);
    ~Alarm() override;

    /// Sets the moment in nanoseconds, in place of one that is still to come; a moment that has passed rings
    /// as soon as the event loop is back.
    void set(std::uint64_t due);

signals:
    void rang();

private:
    void answerDescriptor();

    int descriptor_;
    QTimer* timer_;
};
