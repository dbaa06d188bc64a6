#include "patch/Overlaps.h"

#include "levels/Encoding.h"
#include "patch/Patch.h"

#include <array>
#include <map>

namespace {

using Places = std::vector<std::size_t>;
using Drivers = std::array<Places, slotsPerUniverse>;

// By universe, so that only one universe's slots are in memory at a time.
std::map<std::int32_t, Places> fixturesByUniverse(std::span<const PatchedFixture> patch) {
    std::map<std::int32_t, Places> fixtures;
    for (std::size_t place = 0; place < patch.size(); ++place) {
        fixtures[patch[place].universe].push_back(place);
    }
    return fixtures;
}

void addDriver(const PatchedFixture& fixture, std::size_t place, Drivers& drivers) {
    for (const PatchedControl& control : fixture.controls) {
        if (!control.drives()) {
            continue;
        }
        for (std::uint64_t slot = control.slot; slot < control.end(); ++slot) {
            drivers[slot].push_back(place);
        }
    }
}

void appendOverlaps(std::int32_t universe, const Drivers& drivers, std::vector<Overlap>& found) {
    const Places* previous = nullptr;
    for (std::size_t slot = 0; slot < drivers.size(); ++slot) {
        const Places& fixtures = drivers[slot];
        if (fixtures.size() < 2) {
            previous = nullptr;
        } else if (previous && *previous == fixtures) {
            ++found.back().slotRange.count;
        } else {
            found.push_back(
                {.universe = universe, .slotRange = {.first = slot, .count = 1}, .fixtures = fixtures});
            previous = &fixtures;
        }
    }
}

} // namespace

QString slotText(const SlotRange& slotRange) {
    const QString first = QString::number(slotRange.first + 1);
    if (slotRange.count == 1) {
        return "slot " + first;
    }
    return QString("slots %1 to %2").arg(first, QString::number(slotRange.first + slotRange.count));
}

std::vector<Overlap> overlaps(std::span<const PatchedFixture> patch) {
    std::vector<Overlap> found;
    Drivers drivers;
    for (const auto& [universe, fixtures] : fixturesByUniverse(patch)) {
        for (Places& slotDrivers : drivers) {
            slotDrivers.clear();
        }
        for (const std::size_t place : fixtures) {
            addDriver(patch[place], place, drivers);
        }
        appendOverlaps(universe, drivers, found);
    }
    return found;
}

std::vector<SlotRange> unheardSlots(const PatchedFixture& fixture) {
    std::vector<SlotRange> unheard;
    for (const PatchedControl& control : fixture.controls) {
        if (control.dummy || control.drives()) {
            continue;
        }
        if (!unheard.empty() && unheard.back().first + unheard.back().count == control.slot) {
            unheard.back().count += control.channels;
        } else {
            unheard.push_back({.first = control.slot, .count = control.channels});
        }
    }
    return unheard;
}
