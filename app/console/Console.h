#pragma once

#include "console/Bell.h"
#include "console/DrawingPace.h"
#include "console/Rig.h"
#include "cues/CueStepper.h"
#include "cues/CueStore.h"
#include "output/Engine.h"
#include "output/OutputThread.h"
#include "rig/Faders.h"
#include "rig/Fixtures.h"
#include "rigging/Patching.h"
#include "settings/Destination.h"
#include "settings/RecoveryFile.h"
#include "settings/SavedPlaces.h"
#include "settings/SavedState.h"
#include "settings/ShowKeeper.h"
#include "settings/UserDefaults.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

/// A whole console without its windows: owns the rig and all that works it, sends it, and keeps it. What
/// falls when is the order of its members; a second one may stand beside it.
class Console : public QObject {
    Q_OBJECT

public:
    /// `resources` is the folder of the tables. Nothing is read yet but the user defaults.
    explicit Console(const QString& resources);
    ~Console() override;

    /// Reads the tables, then the rig that is saved or that a run which ended badly left, and sets its levels
    /// and the address. Nothing is sent yet. Needs no application object.
    void load();
    /// From now on the output ticks, on a thread of its own. Needs no application object. Throws
    /// std::system_error where the system gives no thread.
    void startOutput();
    /// From now on the console follows its output and keeps the show safe. Needs an event loop.
    void follow();

    /// Loads a configuration of the table, its fixtures moved by so many universes.
    void loadConfiguration(const QString& name, int universeOffset);
    /// Loads what was saved in place of what a run which ended badly left.
    void goBackToSavedRig();
    /// True when the rig is what a run which ended badly left.
    bool isRecovered() const { return recovered_; }

    /// Takes an address where datagrams go, see Destination.
    void setIPAddress(const QString& dotted);
    /// Adds a cue without data under the number as it was typed and makes it the current one; an empty number
    /// adds none. True when there is a new one.
    bool createCue(const QString& number);
    /// The fader selected in each fixture at the last quit is selected again.
    void restoreControlSelections() { savedState_.restoreControlSelections(); }

    /// The title of the window that was in front at the last quit.
    QString mainWindowTitle() const;
    /// The quit sequence, with the title of the window in front, null for none; carried out once, however
    /// often it is asked for.
    void terminate(const QString& frontTitle = {});

    Engine& engine() { return engine_; }
    Rig& rig() { return rig_; }
    Faders& faders() { return faders_; }
    Fixtures& fixtures() { return fixtures_; }
    Patching& patching() { return patching_; }
    CueStore& cues() { return cues_; }
    CueStepper& stepper() { return stepper_; }
    Destination& destination() { return destination_; }
    SavedPlaces& places() { return places_; }
    /// To be told when what the operator made has changed.
    ShowKeeper& showKeeper() { return showKeeper_; }

    /// Takes up what the output has changed since the last time: levels that moved are shown.
    void takeUpOutput();

signals:
    /// The rig is about to become another one, all fixtures with it; and it has.
    void aboutToReload();
    void fixturesReplaced();
    void reloaded();

private:
    void heardNews();
    void reloadSettings();
    void createFixtures();
    ShowSnapshot presentShow() const;

    UserDefaults defaults_;
    RecoveryFile recoveryFile_;
    Rig rig_;
    Engine engine_;
    Faders faders_;
    Fixtures fixtures_;
    SavedPlaces places_;
    SavedState savedState_;
    Destination destination_;
    Patching patching_;
    CueStore cues_;
    CueStepper stepper_;
    ShowKeeper showKeeper_;
    Bell bell_;
    DrawingPace pace_;
    QTimer takeUpLater_;
    std::optional<ShowSnapshot> recoveredShow_; ///< until it is loaded
    bool recovered_ = false;
    bool terminated_ = false;
    std::optional<OutputThread> outputThread_; ///< ends first
};
