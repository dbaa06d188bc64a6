#include "controls/Encoding.h"

bool liesInsideUniverse(std::uint32_t address, std::uint32_t channels) {
    const std::uint32_t slotCount = channels >= 2 ? 2 : 1;
    return address <= slotsPerUniverse - slotCount;
}

std::uint32_t readLevel(Slots levels, std::uint32_t address, std::uint32_t channels) {
    if (channels >= 2)
        return static_cast<std::uint32_t>(levels[address] << 8 | levels[address + 1]);
    return levels[address];
}

void writeLevel(Slots levels, std::uint32_t address, std::uint32_t channels, std::uint32_t value) {
    if (channels == 2) {
        levels[address] = static_cast<std::uint8_t>(value >> 8);
        levels[address + 1] = static_cast<std::uint8_t>(value);
    } else {
        levels[address] = static_cast<std::uint8_t>(value);
    }
}
