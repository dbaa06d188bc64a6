#pragma once

#include <optional>

/// The general pasteboard takes the level as a keyed archive under text/plain; other programs read nothing in
/// it.
void copyLevel(int value);

/// The level on the pasteboard; nothing when something else is on it, or nothing at all.
std::optional<int> pastedLevel();
