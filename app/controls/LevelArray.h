#pragma once

#include "controls/Encoding.h"
#include "controls/Fade.h"

#include <cstdint>
#include <vector>

/// What the tick needs to know of one control. The controls of a fixture lie side by side in one array,
/// so that the tick walks plain data and asks no widget.
struct LevelState {
    std::uint32_t value = 0;    ///< the output level, 0..max; what a profile or cue puts beyond max stays
    std::uint32_t max = 255;    ///< 255, or 65535 for a 16-bit control
    std::uint32_t channels = 1; ///< slots: 1, or 2 for a 16-bit control; a dummy may count any number
    std::uint32_t address = 0;  ///< 0-based index of the first slot in the universe
    float time = 0;             ///< fade time in seconds for the next new level
    bool dummy = false;         ///< drives no slot
    bool needsRedraw = false;   ///< a fade changed the level since the widget was last told
    Fade fade;

    /// Goes to `target` over `seconds`, at once when there is no time or nothing to go; `seconds` becomes
    /// the fade time. `now` is in monotonic nanoseconds. Returns true when the target is a new level.
    bool goTo(std::uint32_t target, float seconds, std::uint64_t now);

    /// Advances a running fade to `now` and writes the level into its slots. Returns true when the slots
    /// changed. A dummy, and a control whose slots do not lie inside the universe, leaves them alone.
    bool updateDMX(Slots levels, std::uint64_t now);

private:
    void stepFade(std::uint64_t now);
};

using LevelArray = std::vector<LevelState>;

/// What a tick made of the levels of one fixture.
struct LevelsUpdate {
    bool slotsChanged = false;
    bool needsRedraw = false; ///< of one level at least
};

/// updateDMX() for one level after the other.
LevelsUpdate updateLevels(LevelArray& levels, Slots slots, std::uint64_t now);
