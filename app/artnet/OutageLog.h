#pragma once

#include <cstdint>

/// Tells on standard error when datagrams of whatever universe find no way out and when they do again, a line
/// for each. What comes and goes within a second is one outage, so that a network on the brink does not fill
/// a log.
class OutageLog {
public:
    /// Takes in what became of a datagram: 0 when it was sent, otherwise the system's error number.
    void note(int error);

private:
    bool isOut_ = false;
    std::uint64_t lastFailure_ = 0; ///< nanoseconds of the monotonic clock
};
