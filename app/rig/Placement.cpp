#include "rig/Placement.h"

#include "plist/Reading.h"

Placement Placement::fromEntry(const QVariant& entry) {
    Placement placement;
    placement.entry_ = mapValue(entry);
    placement.name_ = stringValue(placement.entry_.value(placementKeys::name));
    placement.universe_ = integerValue(placement.entry_.value(placementKeys::universe));
    placement.address_ = unsignedValue(placement.entry_.value(placementKeys::address));
    placement.layer_ = unsignedValue(placement.entry_.value(placementKeys::layer));
    placement.profiles_ = listValue(placement.entry_.value(placementKeys::profiles));
    return placement;
}

void Placement::setName(const QString& name) {
    name_ = name;
    entry_.insert(placementKeys::name, name);
}

void Placement::setUniverse(int universe) {
    universe_ = universe;
    entry_.insert(placementKeys::universe, qlonglong{universe});
}

void Placement::setAddress(int address) {
    address_ = static_cast<std::uint32_t>(address);
    entry_.insert(placementKeys::address, qlonglong{address});
}

void Placement::setLayer(int layer) {
    layer_ = static_cast<std::uint32_t>(layer);
    entry_.insert(placementKeys::layer, qlonglong{layer});
}

void Placement::setProfiles(const QVariantList& profiles) {
    profiles_ = profiles;
    entry_.insert(placementKeys::profiles, profiles);
}
