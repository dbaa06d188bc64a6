#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

struct PatchedFixture;

/// Slots that follow one another, counted from 0; they may lie past the universe.
struct SlotRange {
    std::uint64_t first = 0;
    std::uint64_t count = 0;
    bool operator==(const SlotRange&) const = default;
};

/// The range as the operator counts, from 1: "slot 5", "slots 5 to 8".
QString slotText(const SlotRange& slotRange);

/// Slots of a universe that several fixtures drive. A blank drives none. In each slot the last of the
/// fixtures is heard.
struct Overlap {
    std::int32_t universe = 0;
    SlotRange slotRange;
    std::vector<std::size_t> fixtures; ///< their places in the patch, two or more, ascending
    bool operator==(const Overlap&) const = default;
};

/// All overlaps of the patch, by universe and slot: neighbouring slots of the same fixtures as one.
std::vector<Overlap> overlaps(std::span<const PatchedFixture> patch);

/// The slots of those controls of the fixture that should drive some and do not, because they do not lie in
/// the universe as a whole; in ascending order.
std::vector<SlotRange> unheardSlots(const PatchedFixture& fixture);
