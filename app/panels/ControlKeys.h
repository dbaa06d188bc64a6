#pragma once

#include <QKeyEvent>

/// What a key does on a selected control.
enum class KeyAction {
    None,
    FadeToDefault,
    ClearTime,
    SelectNext,
    SelectPrevious,
    RemoveLast,
    CancelEntry,
    StepUp,
    StepDown,
    Type,
    ApplyEntry,
    ApplyEntryAsTime,
};

struct KeyMeaning {
    KeyAction action = KeyAction::None;
    char character = 0; ///< for Type: a digit or a point
};

/// What the pressed key means; a combination with Command means nothing here and belongs to the menus.
KeyMeaning meaningOf(const QKeyEvent& event);
