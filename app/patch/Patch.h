#pragma once

#include "rig/ProfileExpansion.h"

#include <QString>
#include <QVariantList>

#include <cstdint>
#include <vector>

class Fixture;
class Fixtures;
class Placement;
class Profiles;

/// A control as it is patched: the slots that it takes, counted from 0; they may lie past the universe.
struct PatchedControl {
    QString key; ///< under which cues and saved levels know it; null for a dummy
    std::uint32_t slot = 0;
    std::uint32_t channels = 1;
    bool dummy = false; ///< a blank or a label: takes its slots and drives none

    std::uint64_t end() const { return std::uint64_t{slot} + channels; }
    /// Whether it is heard: a control that does not lie in the universe as a whole sends nothing.
    bool drives() const;
    bool operator==(const PatchedControl&) const = default;
};

/// A fixture as it is patched, with its controls in the order of its profile.
struct PatchedFixture {
    QString name;
    std::int32_t universe = 0;
    std::uint32_t address = 0; ///< 1-based, as the operator writes it; 0 stands for 1
    std::vector<PatchedControl> controls;
    bool complete = true; ///< false when its profile unfolds to more than a fixture, or the rig, may hold

    /// From its first slot to its last, blanks included.
    std::uint64_t slotCount() const;
    bool operator==(const PatchedFixture&) const = default;
};

/// What the placement comes to, which is what a view made from it comes to. Makes no view, prints nothing.
PatchedFixture patchedFixture(const Placement& placement, const Profiles& profiles,
                              ExpansionSize limit = largestFixture);
/// The same for one placement after the other, all together within `left`, off which is taken what they use.
std::vector<PatchedFixture> patchedFixtures(const QVariantList& placements, const Profiles& profiles,
                                            ExpansionSize& left);

/// A fixture as it stands now, its controls without keys.
PatchedFixture patchedFixture(const Fixture& fixture);
/// All fixtures by rows.
std::vector<PatchedFixture> presentPatch(const Fixtures& fixtures);
