#include "rigging/Patching.h"

#include "fixtures/ControlView.h"
#include "fixtures/Placement.h"
#include "rigging/AddFixtures.h"
#include "rigging/MoveFixture.h"
#include "rigging/RemoveFixtures.h"

#include <algorithm>

namespace {

QString nameInRow(std::size_t row) {
    return ControlView::controlViews()->at(row)->name();
}

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

Patching::Patching(Settings& settings, Profiles& profiles, WindowPlaces& places)
    : editor_(settings, profiles, places) {
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
    std::erase_if(rows, [](std::size_t row) { return row >= ControlView::count(); });
    if (!rows.empty()) {
        const QString text = stepText("Remove", std::ssize(rows), nameInRow(rows.front()));
        history_.push(new RemoveFixtures(editor_, text, rows));
    }
}

bool Patching::moveFixture(std::size_t row, PlacementNumber number, int value) {
    if (row >= ControlView::count()) {
        return false;
    }
    const ControlView& view = *ControlView::controlViews()->at(row);
    const auto before =
        static_cast<int>(number == PlacementNumber::Universe ? view.universe() : view.address());
    if (before == value) {
        editor_.setNumber(row, number, value);
        return false;
    }
    const int steps = history_.index();
    history_.push(new MoveFixture(editor_, "Move " + view.name(),
                                  {.row = row, .number = number, .before = before, .after = value}));
    return history_.index() > steps;
}
