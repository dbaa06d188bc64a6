#include "rigging/PatchEditor.h"

#include "fixtures/ControlView.h"
#include "fixtures/Profiles.h"
#include "fixtures/WindowPlaces.h"
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

// New views stand behind all others until they are moved to their rows.
void PatchEditor::insertFixtures(std::size_t row, std::span<const KeptFixture> fixtures) {
    if (fixtures.empty()) {
        return;
    }
    emit rowsAboutToBeInserted(static_cast<int>(row), lastRow(row, fixtures.size()));
    const std::size_t end = ControlView::count();
    for (std::size_t i = 0; i < fixtures.size(); ++i) {
        if (fixtures[i].windowPlace) {
            places_.setPlace(ControlView::autosavenameOfRow(end + i), *fixtures[i].windowPlace);
        }
    }
    const QVariantList placements = placementsOf(fixtures);
    ControlView::controlViewsWithSettings(placements, profiles_, places_);
    for (std::size_t i = 0; i < fixtures.size(); ++i) {
        ControlView::moveView(end + i, row + i);
        restoreControls(fixtures[i], *ControlView::controlViews()->at(row + i));
    }
    settings_.insertPlacements(static_cast<qsizetype>(row), placements);
    emit rowsInserted();
}

std::vector<KeptFixture> PatchEditor::takeFixtures(std::size_t row, std::size_t count) {
    emit rowsAboutToBeRemoved(static_cast<int>(row), lastRow(row, count));
    const QVariantList placements = settings_.views();
    std::vector<KeptFixture> fixtures;
    for (std::size_t i = row; i < row + count; ++i) {
        fixtures.push_back(
            keptFixture(*ControlView::controlViews()->at(i), placements.value(static_cast<qsizetype>(i))));
    }
    for (std::size_t i = row + count; i-- > row;) {
        ControlView::removeView(i);
    }
    settings_.removePlacements(static_cast<qsizetype>(row), static_cast<qsizetype>(count));
    emit rowsRemoved();
    return fixtures;
}

bool PatchEditor::setNumber(std::size_t row, PlacementNumber number, int value) {
    std::optional<Placement> placement = settings_.placement(static_cast<qsizetype>(row));
    if (row >= ControlView::count() || !placement) {
        return false;
    }
    ControlView& view = *ControlView::controlViews()->at(row);
    if (number == PlacementNumber::Universe) {
        placement->setUniverse(value);
        view.setUniverse(static_cast<std::uint32_t>(value));
    } else {
        placement->setAddress(value);
        view.setAddress(static_cast<std::uint32_t>(value));
    }
    settings_.setPlacement(static_cast<qsizetype>(row), *placement);
    view.rescanControls();
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
