#include "settings/ShowKeeper.h"

#include "settings/RecoveryFile.h"

#include <system_error>

ShowKeeper::ShowKeeper(RecoveryFile& file, std::function<ShowSnapshot()> presentShow)
    : file_(file), presentShow_(std::move(presentShow)) {
    timer_.setTimerType(Qt::PreciseTimer); // a coarse one may be early
    connect(&timer_, &QTimer::timeout, this, &ShowKeeper::keep);
}

ShowKeeper::~ShowKeeper() {
    stop();
}

void ShowKeeper::start(std::chrono::milliseconds pause) {
    timer_.start(pause);
}

void ShowKeeper::stop() {
    timer_.stop();
    if (writing_.valid()) {
        writing_.wait();
    }
}

void ShowKeeper::keep() {
    if (isWriting()) {
        return; // a slow disk
    }
    const bool hasFailed = writing_.valid() && !writing_.get();
    if (!isChanged_ && !hasFailed) {
        return;
    }
    try {
        writing_ = std::async(std::launch::async,
                              [&file = file_, show = presentShow_()] { return file.write(show); });
        isChanged_ = false;
    } catch (const std::system_error&) {
        isChanged_ = true; // no thread to be had; the next time, perhaps
    }
}

bool ShowKeeper::isWriting() const {
    return writing_.valid() && writing_.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
}
