#pragma once

#include <cstdint>

/// What went out lately.
struct OutputStatus {
    int universes = 0;               ///< that were sent
    double datagramsPerSecond = 0.0; ///< of all of them; 0 while it is not known yet
    int error = 0;                   ///< errno of a universe whose last send failed; 0 when none did
};

class Engine;

/// Tells from time to time what the universes send. Looking is all it does: sends themselves only count.
class OutputWatch {
public:
    /// The output as it is now. A universe whose last attempt is longer ago than a refresh takes counts for
    /// nothing.
    OutputStatus look(const Engine& engine);

private:
    struct Count {
        std::uint64_t sent = 0;            ///< datagrams
        std::uint64_t lastNanoseconds = 0; ///< when the last of them was due; 0 when that is long ago
    };

    void updateRate(const Count& now);

    Count before_;
    double datagramsPerSecond_ = 0.0;
};
