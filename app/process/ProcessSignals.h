#pragma once

#include <QObject>

/// Turns signals to the process into signals on the event loop: SIGTERM, SIGINT and SIGHUP ask to quit, as
/// the Quit command does, and SIGUSR1, which a second console sends, asks for the main window. The second
/// signal to quit, of whatever kind, ends the program at once.
class ProcessSignals : public QObject {
    Q_OBJECT

public:
    /// Only one may exist at a time. From now on no signal ends the program by itself; what comes before
    /// there is an event loop is kept until listen().
    ProcessSignals();
    ~ProcessSignals() override;
    Q_DISABLE_COPY_MOVE(ProcessSignals)

    /// To be called once there is an application object, where there was none before.
    void listen();

    /// Passes requests for the main window over until there is one; unhandled they would end the program.
    static void ignoreFrontRequests();
    /// Asks the console that runs as this process for its main window.
    static void requestFront(qint64 process);

signals:
    void quitRequested();
    void frontRequested();

private:
    void readPipe();

    bool isListening_ = false;
};
