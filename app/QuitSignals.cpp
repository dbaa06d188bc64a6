#include "QuitSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::array quitSignals = {SIGTERM, SIGINT, SIGHUP};

// A signal handler may do next to nothing: it writes a byte, and the event loop reads it.
std::array<int, 2> gPipe = {-1, -1};

void passOn(int signal) {
    const int interruptedErrno = errno; // whoever is interrupted may be about to read it
    // The first signal asks; whoever sends a second one means it.
    std::signal(signal, SIG_DFL);
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(gPipe[1], &byte, sizeof byte);
    errno = interruptedErrno;
}

} // namespace

QuitSignals::QuitSignals(const std::function<void()>& quit) {
    if (::pipe(gPipe.data()) != 0) {
        return; // out of descriptors: signals end the program at once, as they would without us
    }
    auto* const notifier = new QSocketNotifier(gPipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [notifier, quit] {
        notifier->setEnabled(false);
        quit();
    });
    for (const int signal : quitSignals) {
        std::signal(signal, passOn);
    }
}

QuitSignals::~QuitSignals() {
    for (const int signal : quitSignals) {
        std::signal(signal, SIG_DFL);
    }
    for (int& end : gPipe) {
        ::close(std::exchange(end, -1));
    }
}
