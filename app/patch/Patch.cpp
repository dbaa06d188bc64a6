#include "patch/Patch.h"

#include "levels/Encoding.h"
#include "plist/Reading.h"
#include "rig/ControlDefinition.h"
#include "rig/DMXControl.h"
#include "rig/Fixtures.h"
#include "rig/NameStack.h"
#include "rig/Placement.h"
#include "rig/Profiles.h"
#include "rig/ViewLayout.h"

#include <algorithm>

namespace {

struct Expanded {
    PatchedFixture fixture;
    ExpansionSize size;
};

void addressControls(PatchedFixture& fixture) {
    std::vector<LayoutItem> items;
    items.reserve(fixture.controls.size());
    for (const PatchedControl& control : fixture.controls) {
        items.push_back({.channels = control.channels});
    }
    const std::vector<std::uint32_t> addresses = consecutiveAddresses(fixture.address, items);
    for (std::size_t i = 0; i < items.size(); ++i) {
        fixture.controls[i].slot = addresses[i];
    }
}

PatchedControl controlFrom(const QVariantMap& entry, NameStack& names) {
    const ControlDefinition definition = ControlDefinition::fromEntry(entry);
    if (definition.newlayer) {
        names.setLayerNum(names.layerNum() + 1);
    }
    return {.key = definition.dummy ? QString() : names.key() + "." + names.resolvedName(definition.name),
            .slot = 0,
            .channels = definition.channels,
            .dummy = definition.dummy};
}

Expanded expanded(const Placement& placement, const Profiles& profiles, ExpansionSize limit) {
    Expanded result;
    PatchedFixture& fixture = result.fixture;
    fixture.name = placement.name();
    fixture.universe = placement.universe();
    fixture.address = placement.address();
    NameStack names;
    names.startWith(fixture.name);
    names.setLayerNum(placement.layer());
    result.size = expandProfile(
        placement.profiles(), profiles, names,
        [&](const QVariantMap& entry) { fixture.controls.push_back(controlFrom(entry, names)); }, limit,
        [&](const ExpansionFault& fault) {
            fixture.complete = fixture.complete && fault.kind != ExpansionFault::TooLarge;
        });
    addressControls(fixture);
    return result;
}

} // namespace

bool PatchedControl::drives() const {
    return !dummy && slotPlace(slot, channels).inside();
}

std::uint64_t PatchedFixture::slotCount() const {
    std::uint64_t count = 0;
    for (const PatchedControl& control : controls) {
        count += control.channels;
    }
    return count;
}

PatchedFixture patchedFixture(const Placement& placement, const Profiles& profiles, ExpansionSize limit) {
    return expanded(placement, profiles, limit).fixture;
}

std::vector<PatchedFixture> patchedFixtures(const QVariantList& placements, const Profiles& profiles,
                                            ExpansionSize& left) {
    std::vector<PatchedFixture> patch;
    patch.reserve(static_cast<std::size_t>(placements.size()));
    for (const QVariant& placement : placements) {
        auto [fixture, size] = expanded(Placement::fromEntry(placement), profiles,
                                        {.entries = std::min(left.entries, largestFixture.entries),
                                         .characters = std::min(left.characters, largestFixture.characters)});
        left.entries -= size.entries;
        left.characters -= size.characters;
        patch.push_back(std::move(fixture));
    }
    return patch;
}

PatchedFixture patchedFixture(const Fixture& fixture) {
    PatchedFixture patched{.name = fixture.name(),
                           .universe = static_cast<std::int32_t>(fixture.universe()),
                           .address = fixture.address(),
                           .controls = {}};
    patched.controls.reserve(fixture.controls().size());
    for (const auto& control : fixture.controls()) {
        patched.controls.push_back({.key = {},
                                    .slot = control->address(),
                                    .channels = control->channels(),
                                    .dummy = control->dummy()});
    }
    return patched;
}

std::vector<PatchedFixture> presentPatch(const Fixtures& fixtures) {
    std::vector<PatchedFixture> patch;
    patch.reserve(fixtures.count());
    for (const auto& fixture : fixtures.rows()) {
        patch.push_back(patchedFixture(*fixture));
    }
    return patch;
}
