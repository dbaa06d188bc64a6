#pragma once

#include <Qt>

/// Reads which modifier keys are held.
using ModifierKeys = Qt::KeyboardModifiers (*)();

/// True while Option (Alt) is held, at this moment, whatever event is being handled.
bool optionKeyIsHeld();

/// Puts another reading in the place of the keyboard's and returns the one that stood there; null puts the
/// keyboard's back. For tests.
ModifierKeys setModifierKeys(ModifierKeys keys);
