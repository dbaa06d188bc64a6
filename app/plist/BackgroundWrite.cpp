#include "plist/BackgroundWrite.h"

#include <chrono>
#include <system_error>

bool BackgroundWrite::start(std::function<bool()> write) {
    try {
        writing_ = std::async(std::launch::async, std::move(write));
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

bool BackgroundWrite::isRunning() const {
    return writing_.valid() && writing_.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
}

bool BackgroundWrite::finish() {
    return !writing_.valid() || writing_.get();
}
