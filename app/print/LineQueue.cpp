#include "print/LineQueue.h"

#include <algorithm>
#include <utility>

void LineQueue::push(int descriptor, std::string_view line) {
    PrintedLine printed{.descriptor = descriptor, .text = {}};
    printed.text.reserve(line.size() + 1);
    printed.text.append(line).push_back('\n');
    const std::size_t size = sizeOf(printed);
    const std::lock_guard lock(mutex_);
    isDropping_ = isDropping_ || (size_ > 0 && size_ + size > limit_);
    if (isDropping_) {
        drop(descriptor);
        return;
    }
    size_ += size;
    lines_.push_back(std::move(printed));
    changed_.notify_all();
}

// Nothing but counts follows the first one, which is one for each descriptor at most.
void LineQueue::drop(int descriptor) {
    for (auto line = lines_.rbegin(); line != lines_.rend() && line->dropped > 0; ++line) {
        if (line->descriptor == descriptor) {
            ++line->dropped;
            return;
        }
    }
    lines_.push_back({.descriptor = descriptor, .text = {}, .dropped = 1});
    size_ += sizeOf(lines_.back());
}

std::optional<PrintedLine> LineQueue::next() {
    std::unique_lock lock(mutex_);
    size_ -= std::exchange(beingWritten_, 0);
    if (size_ == 0) {
        changed_.notify_all();
    }
    changed_.wait(lock, [this] { return isClosed_ || !lines_.empty(); });
    if (lines_.empty()) {
        return std::nullopt;
    }
    PrintedLine line = std::move(lines_.front());
    lines_.pop_front();
    isDropping_ = isDropping_ && !lines_.empty();
    beingWritten_ = sizeOf(line);
    return line;
}

void LineQueue::close() {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    changed_.notify_all();
}

bool LineQueue::waitUntilWritten(std::chrono::milliseconds atMost) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, atMost, [this] { return size_ == 0; });
}
