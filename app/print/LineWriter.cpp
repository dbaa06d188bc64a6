#include "print/LineWriter.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>

namespace {

// Whoever started the program may have set the descriptor not to wait.
bool waitForRoom(int descriptor) {
    pollfd room{.fd = descriptor, .events = POLLOUT, .revents = 0};
    return poll(&room, 1, -1) > 0 || errno == EINTR;
}

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN ? !waitForRoom(descriptor) : errno != EINTR) {
            return false;
        }
    }
    return true;
}

std::string told(std::size_t lines) {
    return "Faderhall: " + std::to_string(lines) + (lines == 1 ? " line" : " lines") +
           " could not be printed\n";
}

} // namespace

void LineWriter::write(const PrintedLine& line) {
    std::size_t& missing = missing_.at(line.descriptor == STDOUT_FILENO ? 0 : 1);
    missing += line.dropped;
    if (missing > 0 && writeAll(line.descriptor, told(missing))) {
        missing = 0;
    }
    if (!line.text.empty() && (missing > 0 || !writeAll(line.descriptor, line.text))) {
        ++missing;
    }
}
