#include "process/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>

void openMissingStreams() {
    for (const int stream : std::array{STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0) {
            ::open("/dev/null", O_RDWR); // takes the lowest number that is free
        }
    }
}

void outliveFailedWrites() {
    for (const int signal : std::array{SIGPIPE, SIGXFSZ, SIGTTOU}) {
        std::signal(signal, SIG_IGN);
    }
}
