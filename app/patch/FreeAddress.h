#pragma once

#include <cstdint>
#include <optional>
#include <span>

struct PatchedFixture;

/// The lowest 1-based address from which the `wanted` number of slots of the universe is free, taken neither
/// by a control nor by a blank; nothing when there is none. No slots fit at address 1.
std::optional<std::uint32_t> firstFreeAddress(std::span<const PatchedFixture> patch, std::int32_t universe,
                                              std::uint64_t wanted);
