#include "console/Bell.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

Bell::Bell() {
    if (::pipe(pipe_.data()) != 0) {
        return; // out of descriptors: nothing is heard, and nothing but the picture waits for it
    }
    for (const int end : pipe_) {
        fcntl(end, F_SETFL, O_NONBLOCK); // a full pipe rings as it is
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
}

Bell::~Bell() {
    for (const int end : pipe_) {
        ::close(end);
    }
}

void Bell::ring() const {
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(pipe_[1], &byte, sizeof byte);
}

void Bell::listen() {
    if (pipe_[0] >= 0) {
        const auto* const notifier = new QSocketNotifier(pipe_[0], QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, &Bell::hear);
    }
}

void Bell::hear() {
    std::array<char, 64> bytes{};
    while (::read(pipe_[0], bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size())) {
    }
    emit rang();
}
