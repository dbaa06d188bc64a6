#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// DMX512: the slots of one universe, slot 1 at index 0.
inline constexpr std::size_t slotsPerUniverse = 512;
using Slots = std::span<std::uint8_t, slotsPerUniverse>;

/// True when a control of `channels` slots (2 or more counts as 2, anything else as 1) that starts at the
/// 0-based slot `address` lies inside its universe. Never wraps, whatever the address.
inline bool liesInsideUniverse(std::uint32_t address, std::uint32_t channels) {
    const std::uint32_t slotCount = channels >= 2 ? 2 : 1;
    return address <= slotsPerUniverse - slotCount;
}

/// The level that stands in the slots: two slots, coarse byte first, when `channels` is 2 or more, else
/// one. The slots must lie inside the universe.
inline std::uint32_t readLevel(Slots levels, std::uint32_t address, std::uint32_t channels) {
    if (channels >= 2) {
        return static_cast<std::uint32_t>(levels[address] << 8 | levels[address + 1]);
    }
    return levels[address];
}

/// Writes the low 16 bits of `value`, coarse byte first, when `channels` is exactly 2, else the low 8 bits.
/// The slots must lie inside the universe.
inline void writeLevel(Slots levels, std::uint32_t address, std::uint32_t channels, std::uint32_t value) {
    if (channels == 2) {
        levels[address] = static_cast<std::uint8_t>(value >> 8);
        levels[address + 1] = static_cast<std::uint8_t>(value);
    } else {
        levels[address] = static_cast<std::uint8_t>(value);
    }
}
