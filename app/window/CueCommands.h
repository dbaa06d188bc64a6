#pragma once

#include "window/CueMenu.h"

#include <QObject>

class CueStepper;
class CueStore;

/// What the items of the cue menu do: joins the menu to the cues of the rig and keeps its items, check mark
/// and title in line with them.
class CueCommands : public QObject {
    Q_OBJECT

public:
    /// All have to outlive this object.
    CueCommands(const CueStore& cues, CueStepper& stepper, CueMenu& menu);

    /// Lists the cues as they are now.
    void setupCueMenu();

private:
    void cueAction(CueMenu::Tag tag, const QString& title);
    void deleteCue();

    CueMenu& menu_;
    const CueStore& cues_;
    CueStepper& stepper_;
};
