#pragma once

#include "controls/LevelArray.h"

#include <cstdint>
#include <memory>

struct ControlDefinition;

/// The level of one control with all that governs it, under a control's names: a handle on one element of
/// its fixture's level array, and what the tick does not need of it. Knows no widget.
class ControlLevel {
public:
    /// Adds a level at its default to the array, which lives as long as any level in it.
    ControlLevel(const std::shared_ptr<LevelArray>& levels, const ControlDefinition& definition);

    /// Slots: 1, or 2 for a 16-bit control; a dummy may count any number.
    std::uint32_t channels() const { return _channels; }
    void setChannels(std::uint32_t channels);
    std::uint32_t value() const { return levels_->value(index_); }
    void setValue(std::uint32_t value) { levels_->setValue(index_, value); }
    /// Fade time in seconds for the next new level.
    float time() const { return _time; }
    void setTime(float time) { _time = time; }
    /// 255, or 65535 for a 16-bit control.
    std::uint32_t max() const { return _max; }
    void setMax(std::uint32_t max) { _max = max; }
    /// Drives no slot, and stands still.
    bool dummy() const { return _dummy; }
    void setDummy(bool dummy);
    /// 0-based index of the first slot.
    std::uint32_t address() const { return _address; }
    void setAddress(std::uint32_t address);

    const Fade& fade() const { return levels_->fade(index_); }
    std::uint32_t restLevel() const { return defaultValue; }
    bool notDefault() const { return value() != defaultValue; }

    /// Goes to `value` over `time` seconds, which becomes the fade time; true when that is a new level.
    bool goTo(std::uint32_t value, float time);
    /// Advances a running fade and writes the level into the slots; true when a slot changed.
    bool updateDMX(Slots universe);
    /// True when a fade changed the level since this was last asked.
    bool takeRedraw() { return levels_->takeRedraw(index_); }

private:
    void takePlace();

    std::shared_ptr<LevelArray> levels_;
    std::uint32_t index_;
    std::uint32_t _address = 0;
    std::uint32_t _channels;
    std::uint32_t _max;
    std::uint32_t defaultValue;
    float _time = 0;
    bool _dummy;
};
