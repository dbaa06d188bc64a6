#include "rig/SlotOwner.h"

#include "rig/Fixtures.h"

#include <algorithm>

namespace {

bool drives(const DMXControl& control, std::size_t slotIndex) {
    const std::size_t first = control.address();
    const std::size_t end = first + control.channels();
    return !control.dummy() && first <= slotIndex && slotIndex < end && end <= slotsPerUniverse;
}

// Of several the last one.
DMXControl* controlIn(const Fixture& fixture, std::size_t slotIndex) {
    const auto& controls = fixture.controls();
    const auto found = std::find_if(controls.rbegin(), controls.rend(),
                                    [&](const auto& control) { return drives(*control, slotIndex); });
    return found == controls.rend() ? nullptr : found->get();
}

} // namespace

SlotOwner ownerOfSlot(const Fixtures& fixtures, std::int32_t universe, std::size_t slotIndex) {
    SlotOwner owner;
    for (const auto& fixture : fixtures.rows()) {
        if (static_cast<std::int32_t>(fixture->universe()) != universe) {
            continue;
        }
        if (DMXControl* const control = controlIn(*fixture, slotIndex)) {
            owner = {.fixture = fixture.get(), .control = control};
        }
    }
    return owner;
}
