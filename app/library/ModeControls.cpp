#include "library/ModeControls.h"

#include "library/ControlNames.h"

std::vector<ModeControl> controlsOf(const FixtureMode& mode) {
    std::vector<ModeControl> controls;
    for (const FixtureSlot& slot : mode.channels) {
        const bool isFine = slot.fineOfPrevious && !controls.empty() && controls.back().slotCount == 1 &&
                            !controls.back().isBlank;
        if (isFine) {
            controls.back().slotCount = 2;
            controls.back().defaultValue = controls.back().defaultValue * 256 + slot.defaultValue;
        } else {
            controls.push_back({.name = readableName(slot.name),
                                .firstSlot = controls.empty() ? 0 : controls.back().endSlot(),
                                .defaultValue = slot.defaultValue,
                                .isBlank = slot.unused && slot.defaultValue == 0});
        }
    }
    return controls;
}
