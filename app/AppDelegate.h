#pragma once

#include "adding/FixtureCommands.h"
#include "panels/FixtureWindows.h"
#include "window/ConsoleWindows.h"
#include "window/CueCommands.h"
#include "window/FixtureTable.h"
#include "window/MainWindow.h"
#include "window/MenuWatch.h"

#include <QObject>
#include <QString>

class Console;
class ProcessSignals;

/// The desktop program around a console: the order of its start-up and quit, its windows, and the commands
/// that concern more than one of them.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    /// `console` is loaded already. Both have to outlive this object.
    AppDelegate(Console& console, ProcessSignals& processSignals);
    ~AppDelegate() override;

    /// Shows the console; once.
    void applicationDidFinishLaunching();
    /// The quit sequence; carried out once, however often it is asked for.
    void applicationWillTerminate();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectWindow();
    void connectConsole();
    void takeUpWindows();
    void sessionEnds();

    void setIPAddress(const QString& dotted);
    void askForNewCue();
    void askForConfiguration(const QString& name);

    Console& console_;
    FixtureTable fixtureTable_;
    MainWindow _window;
    FixtureWindows fixtureWindows_;
    ConsoleWindows windows_;
    FixtureCommands fixtureCommands_;
    CueCommands cueCommands_;
    MenuWatch menuWatch_;
    QString mainTitle_; ///< of the window that is to come to the front once all are there; null for none
};
