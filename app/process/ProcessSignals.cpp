#include "process/ProcessSignals.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::array quitSignals = {SIGTERM, SIGINT, SIGHUP};
constexpr int frontSignal = SIGUSR1;

// A signal handler may do next to nothing: it writes the signal's number, and the event loop reads it.
std::array<int, 2> gPipe = {-1, -1};

void handleQuitSignalsBy(void (*handler)(int)) {
    for (const int signal : quitSignals) {
        std::signal(signal, handler);
    }
}

void passOn(int signal) {
    const int interruptedErrno = errno; // whoever is interrupted may be about to read it
    if (signal != frontSignal) {
        handleQuitSignalsBy(SIG_DFL); // the first signal asks; whoever sends a second one means it
    }
    const char byte = static_cast<char>(signal);
    [[maybe_unused]] const auto written = ::write(gPipe[1], &byte, sizeof byte);
    errno = interruptedErrno;
}

} // namespace

ProcessSignals::ProcessSignals() {
    if (::pipe(gPipe.data()) != 0) {
        return; // out of descriptors: signals end the program at once, as they would without us
    }
    for (const int end : gPipe) {
        fcntl(end, F_SETFL, O_NONBLOCK); // a full pipe must not hold up the handler
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    handleQuitSignalsBy(passOn);
    std::signal(frontSignal, passOn);
    if (QAbstractEventDispatcher::instance()) {
        listen();
    }
}

void ProcessSignals::listen() {
    if (gPipe[0] >= 0 && !isListening_) {
        auto* const notifier = new QSocketNotifier(gPipe[0], QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, &ProcessSignals::readPipe);
        isListening_ = true;
    }
}

ProcessSignals::~ProcessSignals() {
    handleQuitSignalsBy(SIG_DFL);
    ignoreFrontRequests();
    for (int& end : gPipe) {
        ::close(std::exchange(end, -1));
    }
}

void ProcessSignals::ignoreFrontRequests() {
    std::signal(frontSignal, SIG_IGN);
}

void ProcessSignals::requestFront(qint64 process) {
    ::kill(static_cast<pid_t>(process), frontSignal);
}

void ProcessSignals::readPipe() {
    char byte = 0;
    while (::read(gPipe[0], &byte, sizeof byte) == sizeof byte) {
        if (byte == frontSignal) {
            emit frontRequested();
        } else {
            emit quitRequested();
        }
    }
}
