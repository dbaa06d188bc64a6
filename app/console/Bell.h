#pragma once

#include <QObject>

#include <array>

/// Calls the event loop from any thread: rung there, it is heard here. Ringing neither waits nor allocates;
/// rung several times before it is heard, it is heard once.
class Bell : public QObject {
    Q_OBJECT

public:
    Bell();
    ~Bell() override;
    Q_DISABLE_COPY_MOVE(Bell)

    void ring() const;
    /// To be called once there is an event loop to be called.
    void listen();

signals:
    void rang();

private:
    void hear();

    std::array<int, 2> pipe_ = {-1, -1};
};
