#pragma once

#include "output/Engine.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// The places of so many 8-bit levels, one slot after the other from DMX slot `first` (1..512) on.
inline std::vector<SlotPlace> placesFrom(std::uint32_t first, std::size_t count) {
    std::vector<SlotPlace> places;
    for (std::size_t i = 0; i < count; ++i) {
        places.push_back(slotPlace(first - 1 + static_cast<std::uint32_t>(i), 1));
    }
    return places;
}

/// So many 8-bit levels, all at 0, in the slots from `first` on; not part of the engine's patch yet.
inline std::shared_ptr<FixtureLevels> makeLevels(Engine& engine, std::int32_t universe, std::uint32_t first,
                                                 std::size_t count = 1) {
    auto levels = std::make_shared<FixtureLevels>(engine);
    for (std::size_t i = 0; i < count; ++i) {
        levels->held()->add(0);
    }
    levels->setPlaces(universe, placesFrom(first, count));
    return levels;
}
