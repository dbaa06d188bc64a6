#include "adding/PlacementNote.h"

#include "adding/FixtureOrder.h"
#include "patch/Overlaps.h"
#include "patch/Patch.h"
#include "rig/ShownText.h"

#include <vector>

namespace {

QString placeText(const FixtureOrder& order, std::span<const PatchedFixture> copies) {
    const QString first = shownName(copies.front().name);
    const QString names = copies.size() == 1 ? first : first + " to " + shownName(copies.back().name);
    const std::uint64_t slotCount = order.slotsEach * copies.size();
    if (slotCount == 0) {
        return names + " takes no slot.";
    }
    const SlotRange taken{.first = static_cast<std::uint64_t>(order.address) - 1, .count = slotCount};
    return QString("%1: %2 of universe %3.").arg(names, slotText(taken), QString::number(order.universe));
}

// The others of an overlap in which one of the copies, which stand behind them, takes part.
QString sharedText(const Overlap& overlap, std::span<const PatchedFixture> fixtures, std::size_t others) {
    QStringList names;
    for (const std::size_t fixture : overlap.fixtures) {
        if (fixture < others) {
            names.append(shownName(fixtures[fixture].name));
        }
    }
    return QString(" Shared with %1: %2.").arg(names.join(", "), slotText(overlap.slotRange));
}

} // namespace

QString placementNote(const FixtureOrder& order, std::span<const PatchedFixture> copies,
                      std::span<const PatchedFixture> patch) {
    std::vector<PatchedFixture> fixtures;
    for (const PatchedFixture& fixture : patch) {
        if (fixture.universe == order.universe) {
            fixtures.push_back(fixture);
        }
    }
    const std::size_t others = fixtures.size();
    fixtures.insert(fixtures.end(), copies.begin(), copies.end());
    QString note = placeText(order, copies);
    for (const Overlap& overlap : overlaps(fixtures)) {
        if (overlap.fixtures.back() >= others && overlap.fixtures.front() < others) {
            note += sharedText(overlap, fixtures, others);
        }
    }
    return note;
}
