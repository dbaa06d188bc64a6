#pragma once

#include <cstddef>
#include <memory>

class LineQueue;

/// As long as it lives, what is printed is written by a thread of its own, so that a terminal that stands
/// still or a full pipe holds nobody up. To be made by main() before anything prints in another thread; only
/// one may exist at a time.
class BackgroundPrinter {
public:
    /// `bytes` is how much may wait to be written.
    explicit BackgroundPrinter(std::size_t bytes = std::size_t{1} << 20);
    /// Gives what is left a moment to be written. A thread that is held up goes with the process.
    ~BackgroundPrinter();
    BackgroundPrinter(const BackgroundPrinter&) = delete;
    BackgroundPrinter& operator=(const BackgroundPrinter&) = delete;
    BackgroundPrinter(BackgroundPrinter&&) = delete;
    BackgroundPrinter& operator=(BackgroundPrinter&&) = delete;

private:
    std::shared_ptr<LineQueue> queue_;
};
