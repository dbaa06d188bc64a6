#pragma once

#include "controls/Encoding.h"
#include "controls/Fade.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// The levels of one fixture's controls, side by side, so that the tick walks plain data and asks no widget.
/// What it goes through in every tick is no more than level and slots; the fades stand in an array of their
/// own, which it passes by while none is running.
class LevelArray {
public:
    /// Appends a level that stands still and drives no slot; returns its index.
    std::size_t add(std::uint32_t value);

    /// The output level, 0..max; what a profile or cue puts beyond max stays.
    std::uint32_t value(std::size_t index) const { return levels_[index].value; }
    void setValue(std::size_t index, std::uint32_t value) { levels_[index].value = value; }
    /// The slots that the level is written into.
    void setPlace(std::size_t index, SlotPlace place) { levels_[index].place = place; }
    /// A fade that is held does not advance.
    void holdFade(std::size_t index, bool held);
    const Fade& fade(std::size_t index) const { return movements_[index].fade; }

    /// Goes to `target` over `seconds`, at once when there is no time or nothing to go. `now` is in
    /// monotonic nanoseconds. Returns true when the target is a new level.
    bool goTo(std::size_t index, std::uint32_t target, float seconds, std::uint64_t now);

    /// Advances a running fade to `now` and writes the level into its slots. Returns true when the slots
    /// changed. A level without a place inside the universe leaves them alone.
    bool updateDMX(std::size_t index, Slots universe, std::uint64_t now);
    /// The same for one level after the other; true when a slot changed.
    bool updateDMX(Slots universe, std::uint64_t now);

    /// True when a fade changed the level since this was last asked.
    bool takeRedraw(std::size_t index);
    /// True when a fade changed any level since this was last asked; takes nothing from the levels.
    bool takeRedraw();

private:
    struct Level {
        std::uint32_t value = 0;
        SlotPlace place;
    };
    struct Movement {
        Fade fade;
        bool held = false;
        bool needsRedraw = false;
    };

    bool stepFades(std::size_t first, std::size_t count, std::uint64_t now);

    std::vector<Level> levels_;
    std::vector<Movement> movements_;
    bool fading_ = false; ///< some fade may be running
    bool needsRedraw_ = false;
};
