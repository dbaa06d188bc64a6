// Any profile table: expanded, laid out, addressed and encoded, without a window.

#include "Require.h"
#include "RigMaker.h"
#include "levels/LevelArray.h"
#include "rig/ControlDefinition.h"
#include "rig/NameStack.h"
#include "rig/ProfileExpansion.h"
#include "rig/Profiles.h"
#include "rig/ViewLayout.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <array>

namespace {

// Cells of a byte around the slots tell a write that goes beyond them even where the sanitizer cannot.
struct GuardedSlots {
    std::array<std::uint8_t, 8> before{};
    std::array<std::uint8_t, slotsPerUniverse> levels{};
    std::array<std::uint8_t, 8> after{};

    bool isIntact() const { return before == decltype(before){} && after == decltype(after){}; }
};

LayoutItem itemFor(const ControlDefinition& definition) {
    return {.header = definition.header, .hide = definition.hide, .channels = definition.channels};
}

std::vector<ControlDefinition> expanded(RigMaker& maker) {
    Profiles profiles;
    profiles.setTable(maker.profiles());
    NameStack names;
    names.startWith("F");
    std::vector<ControlDefinition> definitions;
    const auto add = [&](const QVariantMap& entry) {
        definitions.push_back(ControlDefinition::fromEntry(entry));
        names.setLayerNum(names.layerNum() + (definitions.back().newlayer ? 1 : 0));
        names.resolvedName(definitions.back().name);
    };
    const ExpansionSize size = expandProfile(maker.entries(), profiles, names, add);
    require(size.entries <= largestFixture.entries && names.key() == "F");
    return definitions;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider bytes(data, size);
    const auto startAddress = bytes.ConsumeIntegral<std::uint32_t>();
    const auto target = bytes.ConsumeIntegral<std::uint32_t>();
    const auto seconds = bytes.ConsumeFloatingPoint<float>();
    const auto later = bytes.ConsumeIntegral<std::uint64_t>();
    RigMaker maker(bytes);
    const std::vector<ControlDefinition> definitions = expanded(maker);

    std::vector<LayoutItem> items;
    items.reserve(definitions.size());
    for (const ControlDefinition& definition : definitions) {
        items.push_back(itemFor(definition));
    }
    ViewLayout layout;
    require(layout.layOut(items).size() == items.size());
    const std::vector<std::uint32_t> addresses = consecutiveAddresses(startAddress, items);
    require(addresses.size() == items.size());

    GuardedSlots universe;
    LevelArray levels;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const ControlDefinition& definition = definitions[i];
        levels.add(definition.defaultValue);
        levels.holdFade(i, definition.dummy);
        levels.setPlace(i, definition.dummy ? SlotPlace() : slotPlace(addresses[i], definition.channels));
        levels.goTo(i, target, seconds, 0);
    }
    for (const std::uint64_t now : {std::uint64_t{1}, later, std::uint64_t{0}}) {
        levels.updateDMX(universe.levels, now);
        require(universe.isIntact());
    }
    return 0;
}
