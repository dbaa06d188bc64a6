#include "check/PatchCheck.h"

#include "check/Report.h"
#include "levels/Encoding.h"
#include "patch/Overlaps.h"
#include "patch/Patch.h"
#include "rig/ShownText.h"

#include <QHash>

#include <algorithm>
#include <map>
#include <set>
#include <vector>

namespace {

using Places = std::vector<std::size_t>;

QString fixtureIn(std::span<const PatchedFixture> patch, std::size_t index) {
    return fixtureAt(index, patch[index].name);
}

QString fixturesIn(std::span<const PatchedFixture> patch, const Places& places) {
    QStringList names;
    for (const std::size_t index : places) {
        names.append(fixtureIn(patch, index));
    }
    return listed(names);
}

QString addressRemedy(const PatchedFixture& fixture) {
    const std::uint64_t count = fixture.slotCount();
    if (count > slotsPerUniverse) {
        return QString("give it a profile of %1 slots at most").arg(slotsPerUniverse);
    }
    return QString("give it an address from 1 to %1").arg(slotsPerUniverse + 1 - count);
}

void checkRange(const PatchedFixture& fixture, const QString& place, Report& report) {
    if (!fixture.complete) {
        report.add(place, "comes to more faders than a fixture, or a rig, may have", "take some out");
    }
    const std::vector<SlotRange> unheard = unheardSlots(fixture);
    if (unheard.empty()) {
        return;
    }
    QStringList ranges;
    for (const SlotRange& slotRange : unheard) {
        ranges.append(slotText(slotRange));
    }
    const auto address = static_cast<std::int32_t>(fixture.address);
    const QString where = address < 0 ? QString("address %1").arg(address) : listed(ranges);
    report.add(place, QString("%1 outside the universe's 512: what should go there is not sent").arg(where),
               addressRemedy(fixture));
}

void checkOverlaps(std::span<const PatchedFixture> patch, const QString& place, Report& report) {
    for (const Overlap& overlap : overlaps(patch)) {
        report.add(place + QString("universe %1, %2").arg(overlap.universe).arg(slotText(overlap.slotRange)),
                   "shared by " + fixturesIn(patch, overlap.fixtures) + ", of which the last is heard",
                   "move one of them");
    }
}

// A datagram carries the low byte of its universe's number and no more.
void checkUniverses(std::span<const PatchedFixture> patch, const QString& place, Report& report) {
    std::map<std::uint8_t, std::set<std::int32_t>> universes;
    for (const PatchedFixture& fixture : patch) {
        if (std::ranges::any_of(fixture.controls, &PatchedControl::drives)) {
            universes[static_cast<std::uint8_t>(fixture.universe)].insert(fixture.universe);
        }
    }
    for (const auto& [sent, meeting] : universes) {
        if (meeting.size() < 2) {
            continue;
        }
        QStringList numbers;
        for (const std::int32_t universe : meeting) {
            numbers.append(QString::number(universe));
        }
        report.add(
            place + "universes " + listed(numbers),
            QString("leave under the same number, %1, by which no receiver tells them apart").arg(sent),
            "keep to universes from 0 to 255");
    }
}

/// The fixtures, once each, that have faders under the key, if there are two such faders.
std::map<Places, QStringList> sharedKeys(std::span<const PatchedFixture> patch) {
    QHash<QString, Places> fixturesOf;
    for (std::size_t index = 0; index < patch.size(); ++index) {
        for (const PatchedControl& control : patch[index].controls) {
            if (!control.dummy) {
                fixturesOf[control.key].push_back(index);
            }
        }
    }
    std::map<Places, QStringList> shared;
    for (auto [key, places] : fixturesOf.asKeyValueRange()) {
        if (places.size() > 1) {
            places.erase(std::unique(places.begin(), places.end()), places.end());
            shared[places].append(key);
        }
    }
    return shared;
}

void checkKeys(std::span<const PatchedFixture> patch, const QString& place, Report& report) {
    for (auto& [places, keys] : sharedKeys(patch)) {
        QStringList names;
        for (const QString& key : QStringList(keys.begin(), keys.end())) {
            names.append(quoted(key));
        }
        names.sort();
        report.add(place + fixturesIn(patch, places),
                   "several faders under " + listed(names) + ", of which cues reach the last",
                   places.size() > 1 ? "give the fixtures different names"
                                     : "give the faders different names");
    }
}

} // namespace

QString fixtureAt(std::size_t index, const QString& name) {
    const QString fixture = QString("fixture %1").arg(index + 1);
    return name.isEmpty() ? fixture : fixture + " " + quoted(name);
}

void checkPatch(std::span<const PatchedFixture> patch, const QString& place, Report& report) {
    for (std::size_t index = 0; index < patch.size(); ++index) {
        checkRange(patch[index], place + fixtureIn(patch, index), report);
    }
    checkOverlaps(patch, place, report);
    checkUniverses(patch, place, report);
    checkKeys(patch, place, report);
}
