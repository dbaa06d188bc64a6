#include "rigging/PatchEditor.h"

#include "rig/Fixtures.h"
#include "rig/Profiles.h"
#include "rig/WindowPlaces.h"
#include "settings/Settings.h"

namespace {

int lastRow(std::size_t row, std::size_t count) {
    return static_cast<int>(row + count) - 1;
}

QVariantList placementsOf(std::span<const KeptFixture> fixtures) {
    QVariantList placements;
    for (const KeptFixture& fixture : fixtures) {
        placements.append(fixture.placement);
    }
    return placements;
}

} // namespace

void PatchEditor::insertFixtures(std::size_t row, std::span<const KeptFixture> fixtures) {
    if (fixtures.empty()) {
        return;
    }
    emit rowsAboutToBeInserted(static_cast<int>(row), lastRow(row, fixtures.size()));
    takeUpPlaces(row, fixtures);
    const QVariantList placements = placementsOf(fixtures);
    fixtures_.insert(row, placements, [&] {
        for (std::size_t i = 0; i < fixtures.size(); ++i) {
            restoreControls(fixtures[i], *fixtures_.at(row + i));
        }
    });
    settings_.insertPlacements(static_cast<qsizetype>(row), placements);
    emit rowsInserted();
}

// The windows' places are remembered by row: those below move down with their windows.
void PatchEditor::takeUpPlaces(std::size_t row, std::span<const KeptFixture> fixtures) {
    const std::size_t end = fixtures_.count();
    for (std::size_t i = 0; i < fixtures.size(); ++i) {
        if (fixtures[i].windowPlace) {
            places_.setPlace(autosavenameOfRow(end + i), *fixtures[i].windowPlace);
        }
    }
    if (row < end) {
        rotatePlaces(places_, row, end, end + fixtures.size());
    }
}

std::vector<KeptFixture> PatchEditor::takeFixtures(std::size_t row, std::size_t count) {
    emit rowsAboutToBeRemoved(static_cast<int>(row), lastRow(row, count));
    const QVariantList placements = settings_.views();
    std::vector<KeptFixture> fixtures;
    for (std::size_t i = row; i < row + count; ++i) {
        fixtures.push_back(keptFixture(*fixtures_.at(i), placements.value(static_cast<qsizetype>(i))));
        fixtures.back().windowPlace = places_.place(autosavenameOfRow(i));
    }
    const std::size_t end = fixtures_.count();
    fixtures_.remove(row, count);
    if (row + count < end) {
        rotatePlaces(places_, row, row + count, end);
    }
    settings_.removePlacements(static_cast<qsizetype>(row), static_cast<qsizetype>(count));
    emit rowsRemoved();
    return fixtures;
}

bool PatchEditor::setNumber(std::size_t row, PlacementNumber number, int value) {
    std::optional<Placement> placement = settings_.placement(static_cast<qsizetype>(row));
    Fixture* const fixture = fixtures_.at(row);
    if (!fixture || !placement) {
        return false;
    }
    if (number == PlacementNumber::Universe) {
        placement->setUniverse(value);
        fixture->setUniverse(static_cast<std::uint32_t>(value));
    } else {
        placement->setAddress(value);
        fixture->setAddress(static_cast<std::uint32_t>(value));
    }
    settings_.setPlacement(static_cast<qsizetype>(row), *placement);
    fixture->rescanControls();
    emit fixtureMoved(static_cast<int>(row), number);
    return true;
}

std::vector<KeptProfile> PatchEditor::exchangeProfiles(std::span<const KeptProfile> profiles) {
    std::vector<KeptProfile> before;
    const QVariantMap userProfiles = settings_.userProfiles();
    for (const auto& [name, inSettings, inTable] : profiles) {
        before.push_back(
            {.name = name, .inSettings = userProfiles.value(name), .inTable = profiles_.profile(name)});
        settings_.setUserProfile(name, inSettings);
        profiles_.setProfile(name, inTable);
    }
    return before;
}
