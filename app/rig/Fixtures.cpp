#include "rig/Fixtures.h"

#include "output/Engine.h"
#include "rig/Faders.h"
#include "rig/Placement.h"

#include <QSet>

#include <algorithm>
#include <iterator>

namespace {

// Keys begin with the fixture's name and a point; the name may hold points itself.
bool mayShareKeys(const Fixture& one, const Fixture& other) {
    const QString a = one.name() + '.';
    const QString b = other.name() + '.';
    return a.startsWith(b) || b.startsWith(a);
}

QSet<QString> keysOf(const Fixture& fixture) {
    QSet<QString> keys;
    for (const auto& control : fixture.controls()) {
        keys.insert(control->key());
    }
    return keys;
}

} // namespace

Fixtures::Fixtures(Engine& engine, Faders& faders, const Profiles& profiles)
    : engine_(engine), faders_(faders), profiles_(profiles) {}

Fixtures::~Fixtures() {
    engine_.setPatch({});
    faders_.clear();
}

std::size_t Fixtures::rowOf(const Fixture& fixture) const {
    const auto found = std::ranges::find(rows_, &fixture, &std::unique_ptr<Fixture>::get);
    return static_cast<std::size_t>(found - rows_.begin());
}

// --- Coming and going ----------------------------------------------------------------------------------

Fixture& Fixtures::add(const QVariantMap& placement) {
    insert(count(), {placement});
    return *rows_.back();
}

void Fixtures::insert(std::size_t row, const QVariantList& placements, const std::function<void()>& prepare) {
    Rows fixtures = made(placements);
    const std::size_t count = fixtures.size();
    const auto place = rows_.begin() + static_cast<std::ptrdiff_t>(row);
    const bool isLast = place == rows_.end();
    rows_.insert(place, std::move_iterator(fixtures.begin()), std::move_iterator(fixtures.end()));
    for (std::size_t i = row; !isLast && i < row + count; ++i) {
        registerInRowOrder(*rows_[i]);
    }
    if (prepare) {
        prepare();
    }
    publish();
    emit inserted(row, count);
}

void Fixtures::remove(std::size_t row, std::size_t count) {
    emit aboutToBeRemoved(row, count);
    const auto first = rows_.begin() + static_cast<std::ptrdiff_t>(row);
    const auto last = first + static_cast<std::ptrdiff_t>(count);
    const Rows leaving{std::move_iterator(first), std::move_iterator(last)};
    rows_.erase(first, last);
    publish();
    for (const auto& fixture : leaving) {
        for (const auto& control : fixture->controls()) {
            faders_.remove(*control);
        }
        registerInRowOrder(*fixture);
        forgetSelectionOf(*fixture);
    }
}

void Fixtures::replaceAll(const QVariantList& placements, const std::function<void()>& prepare) {
    emit aboutToBeRemoved(0, count());
    const Rows leaving = std::exchange(rows_, {});
    faders_.clear();
    rows_ = made(placements);
    if (prepare) {
        prepare();
    }
    publish();
    emit inserted(0, count());
}

Fixtures::Rows Fixtures::made(const QVariantList& placements) {
    Rows fixtures;
    fixtures.reserve(static_cast<std::size_t>(placements.size()));
    for (const QVariant& placement : placements) {
        fixtures.push_back(std::make_unique<Fixture>(Placement::fromEntry(placement), profiles_, faders_,
                                                     std::make_shared<FixtureLevels>(engine_),
                                                     roomForFixture(fixtures)));
    }
    return fixtures;
}

// What the other fixtures leave of the largest rig.
ExpansionSize Fixtures::roomForFixture(const Rows& made) const {
    ExpansionSize left = largestRig;
    for (const Rows* const fixtures : {&rows_, &made}) {
        for (const auto& fixture : *fixtures) {
            left.entries -= fixture->expanded().entries;
            left.characters -= fixture->expanded().characters;
        }
    }
    return {.entries = std::min(left.entries, largestFixture.entries),
            .characters = std::min(left.characters, largestFixture.characters)};
}

// Of all faders with one key the one in the last row is found, as after a start.
void Fixtures::registerInRowOrder(const Fixture& changed) const {
    const QSet<QString> keys = keysOf(changed);
    for (const auto& fixture : rows_) {
        if (!mayShareKeys(*fixture, changed)) {
            continue;
        }
        for (const auto& control : fixture->controls()) {
            if (keys.contains(control->key())) {
                faders_.put(*control);
            }
        }
    }
}

// A selection that was saved may be another fixture's fader, where several share a key.
void Fixtures::forgetSelectionOf(const Fixture& leaving) const {
    for (const auto& fixture : rows_) {
        if (fixture->selectedControl() && &fixture->selectedControl()->fixture() == &leaving) {
            fixture->setSelectedControl(nullptr);
        }
    }
}

void Fixtures::publish() {
    Engine::Patch patch;
    patch.reserve(rows_.size());
    for (const auto& fixture : rows_) {
        patch.push_back(fixture->sharedLevels());
    }
    engine_.setPatch(std::move(patch));
}

void Fixtures::tellMoved() const {
    for (const auto& fixture : rows_) {
        fixture->tellMoved();
    }
}
