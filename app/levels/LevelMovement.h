#pragma once

#include <cstdint>

/// The level that a drag comes to, `pixels` to the right of where the level was `startValue`; a drag to the
/// left is negative. A drag across the control's whole width is the whole range, 0..max.
std::uint32_t draggedLevel(std::uint32_t startValue, double pixels, int width, std::uint32_t max);

/// The step that a turn of the wheel makes, truncated. `delta` is in notches of a plain wheel; finer turns
/// count tenfold, and all of them 200 times with Command.
std::int64_t wheelStep(double delta, bool command);

/// The level one step on, within 0..max. A level beyond its range, which a cue or a paste can bring, stays
/// where it is when the step leads further out.
std::uint32_t steppedLevel(std::uint32_t level, std::int64_t step, std::uint32_t max);
