#pragma once

#include "cues/CueMenu.h"
#include "cues/CueStepper.h"
#include "cues/CueStore.h"

#include <QObject>

/// What the items of the cue menu do: joins the menu to the cues of the rig and keeps its items, check mark
/// and title in line with them.
class CueCommands : public QObject {
    Q_OBJECT

public:
    /// Both have to outlive this object.
    CueCommands(Settings& settings, CueMenu& menu);

    /// To be called when the settings have become another rig's: makes its cues quick to execute. The menu
    /// stays.
    void compactCues() { cues_.compact(); }
    /// Lists the cues as they are now.
    void setupCueMenu();

    const std::optional<QString>& currCue() const { return stepper_.currCue(); }
    /// Makes a cue the current one, nothing for none, without executing it.
    void setCurrCue(const std::optional<QString>& number) { stepper_.setCurrCue(number); }

    /// Adds a cue without data under the number as it was typed and makes it the current one; an empty number
    /// adds none.
    void createCue(const QString& number);

private:
    void cueAction(CueMenu::Tag tag, const QString& title);
    void deleteCue();

    CueMenu& menu_;
    CueStore cues_;
    CueStepper stepper_;
};
