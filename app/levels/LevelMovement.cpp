#include "levels/LevelMovement.h"

#include <algorithm>
#include <cmath>

std::uint32_t draggedLevel(std::uint32_t startValue, double pixels, int width, std::uint32_t max) {
    // Single precision, so that a drag across the whole width comes to exactly the whole range.
    const float perPixel = static_cast<float>(max) / static_cast<float>(std::max(width, 1));
    const float dragged = static_cast<float>(startValue) + static_cast<float>(pixels) * perPixel;
    return static_cast<std::uint32_t>(std::clamp<double>(dragged, 0, max));
}

std::int64_t wheelStep(double delta, bool command) {
    constexpr double fineDelta = 1.0;
    constexpr double fineMultiplier = 10;
    constexpr double commandMultiplier = 200;
    const double multiplier = std::abs(delta) < fineDelta ? fineMultiplier : 1;
    return static_cast<std::int64_t>(delta * multiplier * (command ? commandMultiplier : 1));
}

std::uint32_t steppedLevel(std::uint32_t level, std::int64_t step, std::uint32_t max) {
    if (step > 0 && level < max) {
        return static_cast<std::uint32_t>(std::min<std::int64_t>(level + step, max));
    }
    if (step < 0) {
        return static_cast<std::uint32_t>(std::max<std::int64_t>(level + step, 0));
    }
    return level;
}
