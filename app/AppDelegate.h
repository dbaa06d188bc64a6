#pragma once

#include "Rig.h"
#include "Ticker.h"
#include "adding/FixtureCommands.h"
#include "cues/CueCommands.h"
#include "process/ProcessSignals.h"
#include "rigging/Patching.h"
#include "settings/Destination.h"
#include "settings/RecoveryFile.h"
#include "settings/SavedPlaces.h"
#include "settings/SavedState.h"
#include "settings/ShowKeeper.h"
#include "settings/UserDefaults.h"
#include "window/ConsoleWindows.h"
#include "window/FixtureTable.h"
#include "window/MainWindow.h"

#include <QObject>
#include <QString>

/// The order of start-up, tick and quit. Makes the objects of the rooms in the order in which they need each
/// other, hands each what it needs, and carries out the commands that concern more than one of them.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    /// `resources` is the folder that was asked for on the command line; null when none was.
    explicit AppDelegate(const QString& resources);
    ~AppDelegate() override;

    /// Starts the console; once.
    void applicationDidFinishLaunching();
    /// One tick: every fixture view brings its universe up to date, then every universe is offered to the
    /// socket.
    void timerProc();
    /// The quit sequence; carried out once, however often it is asked for.
    void applicationWillTerminate();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createControlViews();
    void reloadSettings();
    void goBackToSavedRig();
    ShowSnapshot presentShow() const;
    void connectWindow();
    void sessionEnds();

    void setIPAddress(const QString& dotted);

    void askForNewCue();
    void askForConfiguration(const QString& name);
    void loadConfiguration(const QString& name, int universeOffset);

    UserDefaults defaults_;
    RecoveryFile recoveryFile_;
    Rig rig_;
    SavedPlaces places_;
    SavedState savedState_;
    Destination destination_;
    int skt = -1;
    Patching patching_;
    FixtureTable fixtureTable_;
    MainWindow _window;
    ConsoleWindows windows_;
    FixtureCommands fixtureCommands_;
    CueCommands cueCommands_;
    ShowKeeper showKeeper_;
    Ticker ticker_;
    ProcessSignals processSignals_;
    bool terminated_ = false;
};
