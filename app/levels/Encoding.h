#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// DMX512: the slots of one universe, slot 1 at index 0.
inline constexpr std::size_t slotsPerUniverse = 512;
using Slots = std::span<std::uint8_t, slotsPerUniverse>;

/// Where a control's level stands in its universe, worked out once so that the tick only reads and writes.
struct SlotPlace {
    std::uint16_t slot = 0; ///< index of the first one
    std::uint8_t read = 0;  ///< how many slots are read: 1, or 2, coarse byte first; 0: outside the universe
    std::uint8_t written = 0; ///< how many are written, likewise

    bool inside() const { return read != 0; }
};

/// The place of a control of `channels` slots that starts at the 0-based slot `address`. Two or more channels
/// are read as two slots, but only exactly two are written as two. Never wraps, whatever the address.
constexpr SlotPlace slotPlace(std::uint32_t address, std::uint32_t channels) {
    const std::uint8_t read = channels >= 2 ? 2 : 1;
    if (address > slotsPerUniverse - read) {
        return {};
    }
    return {.slot = static_cast<std::uint16_t>(address),
            .read = read,
            .written = static_cast<std::uint8_t>(channels == 2 ? 2 : 1)};
}

/// The level that stands at a place inside the universe.
inline std::uint32_t readLevel(Slots levels, SlotPlace place) {
    if (place.read == 2) {
        return static_cast<std::uint32_t>(levels[place.slot] << 8 | levels[place.slot + 1U]);
    }
    return levels[place.slot];
}

/// Writes the low 16 bits of `value` into two slots, or the low 8 bits into one, at a place inside the
/// universe.
inline void writeLevel(Slots levels, SlotPlace place, std::uint32_t value) {
    if (place.written == 2) {
        levels[place.slot] = static_cast<std::uint8_t>(value >> 8);
        levels[place.slot + 1U] = static_cast<std::uint8_t>(value);
    } else {
        levels[place.slot] = static_cast<std::uint8_t>(value);
    }
}

/// Writes the level into its place, if it has one inside the universe and another level stands there; true
/// when it did.
inline bool encode(Slots levels, SlotPlace place, std::uint32_t value) {
    if (!place.inside() || readLevel(levels, place) == value) {
        return false;
    }
    writeLevel(levels, place, value);
    return true;
}
