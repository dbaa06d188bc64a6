#include "controls/Fade.h"

#include <cmath>

namespace {

// A fade stays between two levels; without a number to go by it has none, and its cast would be undefined.
std::uint32_t truncatedLevel(double value) {
    return std::isnan(value) ? 0 : static_cast<std::uint32_t>(value);
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
