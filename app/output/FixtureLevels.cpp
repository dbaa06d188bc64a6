#include "output/FixtureLevels.h"

#include "output/Engine.h"

FixtureLevels::Held::Held(FixtureLevels& levels) : lock_(levels.engine_.lock_), array_(levels.array_) {}

void FixtureLevels::setPlaces(std::int32_t universe, std::span<const SlotPlace> places) {
    const std::lock_guard hold(engine_.lock_);
    for (std::size_t i = 0; i < places.size(); ++i) {
        array_.setPlace(i, places[i]);
    }
    universe_ = universe;
    if (target_) {
        target_ = &engine_.universes_.getUniverse(universe);
        engine_.clearUndrivenSlots();
    }
}
