#include "output/Universes.h"

DMX_Universe& Universes::getUniverse(std::int32_t number) {
    const auto [entry, isNew] = universes_.try_emplace(number);
    if (isNew) {
        entry->second.setUniverse(static_cast<std::uint32_t>(number));
    }
    return entry->second;
}

const DMX_Universe* Universes::find(std::int32_t number) const {
    const auto found = universes_.find(number);
    return found == universes_.end() ? nullptr : &found->second;
}
