#pragma once

#include <cstdint>

/// How often what moves is drawn: with every tick, as long as that takes no more than its share of one core,
/// and less often past that. All in nanoseconds.
class DrawingPace {
public:
    /// Of one core, for all that the thread does which draws: with what 64 fading universes take to be sent,
    /// a quarter.
    static constexpr double share = 1.0 / 6;

    /// Notes that drawing is asked for at the moment `now` of the monotonic clock, when the thread has used
    /// `processorTime` in all.
    void asked(std::uint64_t now, std::uint64_t processorTime);
    /// No pause is longer, and what was used longer ago than this counts for nothing: it need not have been
    /// drawing.
    static constexpr std::uint64_t longestPause = 1'000'000'000;

    /// How long to wait, at such a moment, until drawing may be asked for again; 0 when it may at once.
    std::uint64_t pause(std::uint64_t now, std::uint64_t processorTime) const;

private:
    std::uint64_t lastAsked_ = 0;
    std::uint64_t usedThen_ = 0;
};

/// The processor time that the calling thread has used so far, in nanoseconds.
std::uint64_t threadProcessorNanoseconds();
