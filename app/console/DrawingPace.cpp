#include "console/DrawingPace.h"

#include <algorithm>
#include <ctime>

void DrawingPace::asked(std::uint64_t now, std::uint64_t processorTime) {
    lastAsked_ = now;
    usedThen_ = processorTime;
}

std::uint64_t DrawingPace::pause(std::uint64_t now, std::uint64_t processorTime) const {
    if (now - lastAsked_ > longestPause) {
        return 0;
    }
    const auto used = static_cast<double>(processorTime - usedThen_);
    const std::uint64_t due = lastAsked_ + static_cast<std::uint64_t>(used / share);
    return due > now ? std::min(due - now, longestPause) : 0;
}

std::uint64_t threadProcessorNanoseconds() {
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<std::uint64_t>(used.tv_sec) * 1'000'000'000 + static_cast<std::uint64_t>(used.tv_nsec);
}
