#pragma once

#include "library/FixtureDefinition.h"

/// A fader of a mode, or a slot without one.
struct ModeControl {
    QString name;
    int firstSlot = 0;    ///< index
    int slotCount = 1;    ///< 2 for a 16-bit fader
    int defaultValue = 0; ///< up to 255, up to 65535 with 16 bits
    bool isBlank = false;

    int endSlot() const { return firstSlot + slotCount; }
};

/// The mode's controls in the order of their slots, which they cover without a gap: a slot and its fine one
/// are one control, an unused slot is a blank, unless it has to rest at a level.
std::vector<ModeControl> controlsOf(const FixtureMode& mode);
