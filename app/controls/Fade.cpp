#include "controls/Fade.h"

#include <cmath>

namespace {

// The range stands for levels that a hostile profile or cue can ask for; a cast outside it is undefined.
std::uint32_t truncatedLevel(double value) {
    constexpr double highest = 4294967295.0;
    if (std::isnan(value) || value <= 0)
        return 0;
    return value >= highest ? UINT32_MAX : static_cast<std::uint32_t>(value);
}

} // namespace

void Fade::start(std::uint32_t from, std::uint32_t target, float seconds, std::uint64_t now) {
    targetValue = target;
    currValue = from;
    slewRate = seconds != 0 ? (targetValue - currValue) / static_cast<double>(seconds) : 0;
    startTime = now;
}

std::uint32_t Fade::step(std::uint64_t now) {
    currValue += slewRate * (1e-9 * static_cast<double>(now - startTime));
    startTime = now;
    if (ranPastTarget()) {
        slewRate = 0;
        currValue = targetValue;
    }
    return truncatedLevel(currValue);
}

bool Fade::ranPastTarget() const {
    return (slewRate > 0 && currValue > targetValue) || (slewRate < 0 && targetValue > currValue);
}
