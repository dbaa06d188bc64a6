#include "window/CueCommands.h"

#include "cues/CueStepper.h"
#include "cues/CueStore.h"
#include "window/ModifierKeys.h"

namespace {

// Read when the command runs, whatever event it came by.
Choosing presentChoosing() {
    return optionKeyIsHeld() ? Choosing::SelectOnly : Choosing::Execute;
}

} // namespace

CueCommands::CueCommands(const CueStore& cues, CueStepper& stepper, CueMenu& menu)
    : menu_(menu), cues_(cues), stepper_(stepper) {
    connect(&menu_, &CueMenu::cueAction, this, &CueCommands::cueAction);
    connect(&stepper_, &CueStepper::currCueChanged, this, [this] { menu_.showCurrCue(stepper_.currCue()); });
}

void CueCommands::setupCueMenu() {
    menu_.setupCueMenu(cues_.sortedCueList(), stepper_.currCue());
}

void CueCommands::cueAction(CueMenu::Tag tag, const QString& title) {
    switch (tag) {
    case CueMenu::NextCue:
        return stepper_.next(presentChoosing());
    case CueMenu::PrevCue:
        return stepper_.previous(presentChoosing());
    case CueMenu::StoreCue:
        return stepper_.storeCue();
    case CueMenu::Clear:
        return stepper_.clear();
    case CueMenu::ClearTiming:
        return stepper_.clearTiming();
    case CueMenu::DeleteCue:
        return deleteCue();
    case CueMenu::ChooseCue:
        return stepper_.choose(title, presentChoosing());
    }
}

void CueCommands::deleteCue() {
    if (stepper_.deleteCue()) {
        setupCueMenu();
    }
}
