#include "patch/FreeAddress.h"

#include "levels/Encoding.h"
#include "patch/Patch.h"

#include <algorithm>
#include <bitset>

namespace {

using SlotSet = std::bitset<slotsPerUniverse>;

SlotSet takenSlots(std::span<const PatchedFixture> patch, std::int32_t universe) {
    SlotSet taken;
    for (const PatchedFixture& fixture : patch) {
        if (fixture.universe != universe) {
            continue;
        }
        for (const PatchedControl& control : fixture.controls) {
            const std::uint64_t end = std::min<std::uint64_t>(control.end(), slotsPerUniverse);
            for (std::uint64_t slot = control.slot; slot < end; ++slot) {
                taken.set(slot);
            }
        }
    }
    return taken;
}

} // namespace

std::optional<std::uint32_t> firstFreeAddress(std::span<const PatchedFixture> patch, std::int32_t universe,
                                              std::uint64_t wanted) {
    const SlotSet taken = takenSlots(patch, universe);
    std::uint64_t first = 0; // of the gap that is being looked at
    for (std::uint64_t slot = 0; slot - first < wanted; ++slot) {
        if (slot == slotsPerUniverse) {
            return std::nullopt;
        }
        if (taken.test(slot)) {
            first = slot + 1;
        }
    }
    return static_cast<std::uint32_t>(first + 1);
}
