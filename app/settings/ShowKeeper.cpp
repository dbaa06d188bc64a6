#include "settings/ShowKeeper.h"

#include "settings/RecoveryFile.h"

ShowKeeper::ShowKeeper(RecoveryFile& file, std::function<ShowSnapshot()> presentShow)
    : file_(file), presentShow_(std::move(presentShow)) {
    timer_.setTimerType(Qt::PreciseTimer); // a coarse one may be early
    connect(&timer_, &QTimer::timeout, this, &ShowKeeper::keep);
}

void ShowKeeper::start(std::chrono::milliseconds pause) {
    timer_.start(pause);
}

void ShowKeeper::stop() {
    timer_.stop();
    takeResult();
}

void ShowKeeper::keep() {
    if (writing_.isRunning()) {
        return; // a slow disk
    }
    takeResult();
    if (isChanged_) {
        isChanged_ = !writing_.start([&file = file_, show = presentShow_()] { return file.write(show); });
    }
}

// What failed is as good as changed.
void ShowKeeper::takeResult() {
    isChanged_ = !writing_.finish() || isChanged_;
}
