#pragma once

#include <cmath>
#include <cstdint>

/// A linear movement of one level towards a target, stepped whenever somebody asks for the level.
struct Fade {
    double targetValue = 0;
    double currValue = 0;        ///< the present value with its fraction
    double slewRate = 0;         ///< value units per second, signed; 0: no fade is running
    std::uint64_t startTime = 0; ///< monotonic nanoseconds of the start or of the last step

    bool running() const { return slewRate != 0; }

    /// Starts from the integer level `from` towards `target` over `seconds`, at the moment `now` (monotonic
    /// nanoseconds). A fade in progress is forgotten, its fraction too. Without a time, or with nothing to
    /// go, no fade runs afterwards. A negative time runs the wrong way and is over at the first step; a time
    /// that is not a number counts as a time.
    void start(std::uint32_t from, std::uint32_t target, float seconds, std::uint64_t now);

    /// Moves on to the moment `now` and returns the level there, truncated; never past the target. A fade
    /// is over once it has run past its target: one that lands on it exactly rests there for one more step.
    /// Without a number to go by (a time that is not a number) the level is 0.
    std::uint32_t step(std::uint64_t now) {
        currValue += slewRate * (1e-9 * static_cast<double>(now - startTime));
        startTime = now;
        if (ranPastTarget()) {
            slewRate = 0;
            currValue = targetValue;
        }
        return truncated(currValue);
    }

private:
    bool ranPastTarget() const {
        return (slewRate > 0 && currValue > targetValue) || (slewRate < 0 && targetValue > currValue);
    }

    // A fade stays between two levels; without a number to go by it has none, and its cast would be
    // undefined.
    static std::uint32_t truncated(double value) {
        return std::isnan(value) ? 0 : static_cast<std::uint32_t>(value);
    }
};
