#include "rig/Fixture.h"

#include "rig/ControlDefinition.h"
#include "rig/Faders.h"
#include "rig/FixtureObserver.h"
#include "rig/Placement.h"
#include "rig/Profiles.h"

#include <algorithm>

namespace {

std::vector<LayoutItem> layoutItems(const FixtureControls& controls) {
    std::vector<LayoutItem> items;
    items.reserve(controls.size());
    for (const auto& control : controls) {
        items.push_back(
            {.header = control->header(), .hide = control->hide(), .channels = control->channels()});
    }
    return items;
}

} // namespace

Fixture::Fixture(const Placement& placement, const Profiles& profiles, Faders& faders,
                 std::shared_ptr<FixtureLevels> levels, ExpansionSize room)
    : faders_(faders), levels_(std::move(levels)), name_(placement.name()), address_(placement.address()),
      universe_(static_cast<std::uint32_t>(placement.universe())) {
    setLayerNum(placement.layer());
    loadProfile(placement.profiles(), profiles, room);
}

Fixture::~Fixture() {
    for (const auto& control : controls_) {
        faders_.remove(*control);
    }
}

void Fixture::loadProfile(const QVariantList& entries, const Profiles& profiles, ExpansionSize room) {
    names_.startWith(name_);
    const auto add = [this](const QVariantMap& entry) {
        const auto definition = ControlDefinition::fromEntry(entry);
        const auto index = static_cast<std::uint32_t>(controls_.size());
        const auto& control = controls_.emplace_back(std::make_unique<DMXControl>(definition, *this, index));
        addLevel(definition);
        if (!control->dummy()) {
            faders_.add(*control);
        }
    };
    expanded_ = expandProfile(entries, profiles, names_, add, room);
    controls_.shrink_to_fit();
    frames_ = layout_.layOut(layoutItems(controls_));
    setControlAddresses();
}

void Fixture::addLevel(const ControlDefinition& definition) {
    auto held = levels_->held();
    held->holdFade(held->add(definition.defaultValue), definition.dummy);
}

void Fixture::setControlAddresses() {
    const std::vector<std::uint32_t> addresses = consecutiveAddresses(address_, layoutItems(controls_));
    std::vector<SlotPlace> places;
    places.reserve(controls_.size());
    for (std::size_t i = 0; i < controls_.size(); ++i) {
        controls_[i]->setAddress(addresses[i]);
        places.push_back(controls_[i]->place());
    }
    levels_->setPlaces(static_cast<std::int32_t>(universe_), places);
}

void Fixture::rescanControls() {
    setControlAddresses();
    for (FixtureObserver* const observer : observers_) {
        observer->fixtureMoved();
    }
}

QString Fixture::title() const {
    // In one go, so that a "%1" in a fixture's name stays what it is.
    return QString("%1 Univ: %2 Addr: %3")
        .arg(name_, QString::number(static_cast<int>(universe_)),
             QString::number(static_cast<int>(address_)));
}

// --- Layout and selection ------------------------------------------------------------------------------

DMXControl* Fixture::controlAt(QPoint place) const {
    const auto isThere = [&](const auto& control) {
        return !control->hide() && frames_[control->index()].contains(place);
    };
    const auto found = std::ranges::find_if(controls_, isThere);
    return found == controls_.end() ? nullptr : found->get();
}

// Comes back to this fader at the latest, which is no dummy.
DMXControl& Fixture::neighbourOf(const DMXControl& control, bool backwards) const {
    const std::size_t count = controls_.size();
    std::size_t next = control.index();
    do {
        next = (next + (backwards ? count - 1 : 1)) % count;
    } while (controls_[next]->dummy());
    return *controls_[next];
}

DMXControl* Fixture::endControl(bool last) const {
    const auto selectable = [](const auto& control) { return !control->dummy(); };
    if (last) {
        const auto found = std::find_if(controls_.rbegin(), controls_.rend(), selectable);
        return found == controls_.rend() ? nullptr : found->get();
    }
    const auto found = std::ranges::find_if(controls_, selectable);
    return found == controls_.end() ? nullptr : found->get();
}

// --- Who shows it --------------------------------------------------------------------------------------

void Fixture::addObserver(FixtureObserver& observer) {
    observers_.push_back(&observer);
}

void Fixture::removeObserver(FixtureObserver& observer) {
    std::erase(observers_, &observer);
}

// Where nobody looks, which levels moved is not gone into: a cue moves all that there are.
void Fixture::tellMoved() {
    const auto sees = [](const FixtureObserver* observer) { return observer->seesLevels(); };
    if (std::ranges::none_of(observers_, sees)) {
        if (levels_->held()->takeHasMoved()) {
            std::ranges::for_each(observers_, &FixtureObserver::levelsMissed);
        }
        return;
    }
    std::vector<std::uint32_t> moved;
    levels_->held()->takeMoved(moved);
    for (const std::uint32_t index : moved) {
        tellChanged(*controls_[index]);
    }
}

void Fixture::tellChanged(DMXControl& control) const {
    for (FixtureObserver* const observer : observers_) {
        observer->controlChanged(control);
    }
}

void Fixture::tellEntryChanged(DMXControl& control) const {
    for (FixtureObserver* const observer : observers_) {
        observer->entryChanged(control);
    }
}
