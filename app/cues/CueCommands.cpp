#include "cues/CueCommands.h"

CueCommands::CueCommands(Settings& settings, CueMenu& menu) : menu_(menu), cues_(settings), stepper_(cues_) {
    connect(&menu_, &CueMenu::cueAction, this, &CueCommands::cueAction);
    connect(&stepper_, &CueStepper::currCueChanged, this, [this] { menu_.showCurrCue(stepper_.currCue()); });
}

void CueCommands::setupCueMenu() {
    menu_.setupCueMenu(cues_.sortedCueList(), stepper_.currCue());
}

void CueCommands::createCue(const QString& number) {
    if (number.isEmpty()) {
        return;
    }
    cues_.create(number);
    stepper_.setCurrCue(number);
    setupCueMenu();
}

void CueCommands::cueAction(CueMenu::Tag tag, const QString& title) {
    switch (tag) {
    case CueMenu::NextCue:
        return stepper_.next();
    case CueMenu::PrevCue:
        return stepper_.previous();
    case CueMenu::StoreCue:
        return stepper_.storeCue();
    case CueMenu::Clear:
        return stepper_.clear();
    case CueMenu::ClearTiming:
        return stepper_.clearTiming();
    case CueMenu::DeleteCue:
        return deleteCue();
    case CueMenu::ChooseCue:
        return stepper_.choose(title);
    }
}

void CueCommands::deleteCue() {
    if (stepper_.deleteCue()) {
        setupCueMenu();
    }
}
