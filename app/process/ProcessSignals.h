#pragma once

#include <QObject>

/// Turns signals to the process into signals on the event loop: SIGTERM, SIGINT and SIGHUP ask to quit, as
/// the Quit command does, and SIGUSR1, which a second console sends, asks for the main window. The second
/// signal to quit, of whatever kind, ends the program at once.
class ProcessSignals : public QObject {
    Q_OBJECT

public:
    /// Only one may exist at a time.
    ProcessSignals();
    ~ProcessSignals() override;
    Q_DISABLE_COPY_MOVE(ProcessSignals)

    /// Passes requests for the main window over until there is one; unhandled they would end the program.
    static void ignoreFrontRequests();
    /// Asks the console that runs as this process for its main window.
    static void requestFront(qint64 process);

signals:
    void quitRequested();
    void frontRequested();

private:
    void readPipe();
};
