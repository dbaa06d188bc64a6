#pragma once

#include <QObject>

#include <functional>

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the event loop, so that they end the program the way its
/// Quit command does.
class QuitSignals : public QObject {
    Q_OBJECT

public:
    /// Only one may exist at a time.
    explicit QuitSignals(const std::function<void()>& quit);
    ~QuitSignals() override;
    Q_DISABLE_COPY_MOVE(QuitSignals)
};
