#pragma once

#include "library/ModeControls.h"

#include <span>

/// A head whose controls are repeated by another head of the mode.
struct RepeatedHead {
    std::size_t firstControl = 0; ///< index among the mode's controls
    std::size_t controlCount = 0;
    std::size_t kind = 0; ///< from 0; the same for heads that are the same
};

/// The heads of a mode that can be entered as one profile several times, in the order of their slots: each
/// covers whole controls without a gap, there is a second one that is the same but for a number in the names,
/// and that number, if there is one, counts these heads from 1.
std::vector<RepeatedHead> repeatedHeads(const std::vector<std::vector<int>>& heads,
                                        std::span<const ModeControl> controls);

/// The controls of a head under names that are unique in it and leave out the number that all of them bear.
std::vector<ModeControl> namedWithinHead(std::span<const ModeControl> controls);
