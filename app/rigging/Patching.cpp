#include "rigging/Patching.h"

#include "plist/Reading.h"
#include "rig/Fixtures.h"
#include "rig/Placement.h"
#include "rigging/AddFixtures.h"
#include "rigging/MoveFixture.h"
#include "rigging/RemoveFixtures.h"

#include <algorithm>

namespace {

// "Remove Spot", "Remove 3 Fixtures".
QString stepText(const QString& verb, qsizetype count, const QString& name) {
    return count == 1 ? verb + ' ' + name : QString("%1 %2 Fixtures").arg(verb).arg(count);
}

std::vector<KeptProfile> newProfiles(const QVariantMap& profiles) {
    std::vector<KeptProfile> kept;
    for (auto profile = profiles.begin(); profile != profiles.end(); ++profile) {
        kept.push_back({.name = profile.key(), .inSettings = profile.value(), .inTable = profile.value()});
    }
    return kept;
}

} // namespace

Patching::Patching(Settings& settings, Profiles& profiles, Fixtures& fixtures, WindowPlaces& places)
    : editor_(settings, profiles, fixtures, places) {
    connect(&history_, &QUndoStack::indexChanged, this, &Patching::patchChanged);
}

// The end of the history is no step.
Patching::~Patching() {
    history_.disconnect(this);
}

void Patching::addFixtures(const NewFixtures& fixtures) {
    if (fixtures.placements.isEmpty()) {
        return;
    }
    std::vector<KeptFixture> kept;
    for (const QVariant& placement : fixtures.placements) {
        kept.push_back({.placement = placement, .levels = {}, .selected = {}, .windowPlace = {}});
    }
    const QString name = Placement::fromEntry(fixtures.placements.first()).name();
    history_.push(new AddFixtures(editor_, stepText("Add", fixtures.placements.size(), name), std::move(kept),
                                  newProfiles(fixtures.profiles))); // which the history owns
}

void Patching::addProfiles(const QVariantMap& profiles, const QString& source) {
    history_.push(new AddFixtures(editor_, "Import " + source, {}, newProfiles(profiles)));
}

void Patching::removeFixtures(std::vector<std::size_t> rows) {
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    std::erase_if(rows, [this](std::size_t row) { return row >= editor_.fixtures().count(); });
    if (!rows.empty()) {
        const QString text =
            stepText("Remove", std::ssize(rows), editor_.fixtures().at(rows.front())->name());
        history_.push(new RemoveFixtures(editor_, text, rows));
    }
}

bool Patching::moveFixture(std::size_t row, PlacementNumber number, int value) {
    const Fixture* const fixture = editor_.fixtures().at(row);
    if (!fixture) {
        return false;
    }
    const auto before =
        static_cast<int>(number == PlacementNumber::Universe ? fixture->universe() : fixture->address());
    if (before == value) {
        editor_.setNumber(row, number, value);
        return false;
    }
    const int steps = history_.index();
    history_.push(new MoveFixture(editor_, "Move " + fixture->name(),
                                  {.row = row, .number = number, .before = before, .after = value}));
    return history_.index() > steps;
}
