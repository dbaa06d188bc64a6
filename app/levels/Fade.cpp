#include "levels/Fade.h"

void Fade::start(std::uint32_t from, std::uint32_t target, float seconds, std::uint64_t now) {
    targetValue = target;
    currValue = from;
    slewRate = seconds != 0 ? (targetValue - currValue) / static_cast<double>(seconds) : 0;
    startTime = now;
}
