#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

/// A line to be written, with its newline, to standard output (1) or standard error (2).
struct PrintedLine {
    int descriptor;
    std::string text;
    std::size_t dropped = 0; ///< when there is no text: so many lines are missing here
};

/// Lines on their way from whoever prints them to the one thread that writes them. When the writer does not
/// keep up, lines are dropped until all that waited is on its way, and a count of them stands in their place:
/// one gap is easier to read than many.
class LineQueue {
public:
    /// `bytes` is how much may wait. A line that is longer by itself is taken when nothing else waits.
    explicit LineQueue(std::size_t bytes) : limit_(bytes) {}

    /// Takes the line or drops it, and waits for neither a reader nor a writer.
    void push(int descriptor, std::string_view line);

    /// Waits for the next line, which counts as being written until the next call; nothing once the queue is
    /// closed and empty.
    std::optional<PrintedLine> next();

    /// Wakes the writer up to write what is left and end.
    void close();

    /// Waits until everything is written or the time is over; true when it is written.
    bool waitUntilWritten(std::chrono::milliseconds atMost);

private:
    static std::size_t sizeOf(const PrintedLine& line) { return sizeof line + line.text.size(); }
    void drop(int descriptor);

    const std::size_t limit_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<PrintedLine> lines_;
    std::size_t size_ = 0; ///< of all that waits or is being written
    std::size_t beingWritten_ = 0;
    bool isDropping_ = false;
    bool isClosed_ = false;
};
