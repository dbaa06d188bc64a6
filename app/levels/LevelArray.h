#pragma once

#include "levels/Encoding.h"
#include "levels/Fade.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

/// The levels of one fixture's faders, side by side, so that the tick walks plain data. What it goes through
/// in every tick is no more than level and slots; the fades stand in an array of their own, which it passes
/// by while none is running. Each level remembers that it moved until somebody asks, whatever moved it.
class LevelArray {
public:
    /// Appends a level that stands still and drives no slot; returns its index.
    std::size_t add(std::uint32_t value);
    std::size_t size() const { return levels_.size(); }

    /// The output level, 0..max; what a profile or cue puts beyond max stays.
    std::uint32_t value(std::size_t index) const { return levels_[index].value; }
    /// Sets the level at once; a fade that is running goes on from its own. True when that is a new level.
    bool setValue(std::size_t index, std::uint32_t value);
    /// The slots that the level is written into.
    SlotPlace place(std::size_t index) const { return levels_[index].place; }
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

    /// True when any level moved since this was last taken.
    bool hasMoved() const { return hasMoved_; }
    bool takeHasMoved() { return std::exchange(hasMoved_, false); }
    /// Appends the index of every level that moved since they were last taken.
    void takeMoved(std::vector<std::uint32_t>& moved);

private:
    struct Level {
        std::uint32_t value = 0;
        SlotPlace place;
    };
    struct Movement {
        Fade fade;
        bool held = false;
        bool hasMoved = false;
    };

    /// Among which levels those are that moved, so that few are looked at where few did. Empty: none.
    struct Range {
        std::size_t first = std::numeric_limits<std::size_t>::max();
        std::size_t last = 0; ///< behind it
    };

    void noteMoved(std::size_t first, std::size_t count);
    bool stepFades(std::size_t first, std::size_t count, std::uint64_t now);

    std::vector<Level> levels_;
    std::vector<Movement> movements_;
    bool fading_ = false; ///< some fade may be running
    bool hasMoved_ = false;
    Range moved_; ///< since they were last taken one by one
};
