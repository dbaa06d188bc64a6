#include "process/BusGreeting.h"

#include <QList>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

namespace {

using Moment = std::chrono::steady_clock::time_point;

enum class Answer { NotThere, Given, None };

#ifdef MSG_NOSIGNAL
constexpr int sendFlags = MSG_NOSIGNAL;
#else
constexpr int sendFlags = 0;
#endif

/// The name of the socket in the system's form; nothing when the address is no socket of this machine. The
/// name of an abstract one begins with a zero byte.
std::optional<QByteArray> socketName(const QByteArray& address) {
    constexpr QByteArrayView transport("unix:");
    if (!address.startsWith(transport)) {
        return std::nullopt;
    }
    for (const QByteArray& option : address.sliced(transport.size()).split(',')) {
        const qsizetype equals = option.indexOf('=');
        const QByteArray value = QByteArray::fromPercentEncoding(option.sliced(equals + 1));
        if (option.startsWith("path=")) {
            return value;
        }
        if (option.startsWith("abstract=")) {
            return '\0' + value;
        }
    }
    return std::nullopt;
}

// A call that waits gives up after what is left; false when nothing is.
bool limit(int socket, Moment until) {
    const auto left =
        std::chrono::duration_cast<std::chrono::microseconds>(until - std::chrono::steady_clock::now());
    if (left.count() <= 0) {
        return false;
    }
    timeval wait{};
    wait.tv_sec = static_cast<time_t>(left.count() / 1'000'000);
    wait.tv_usec = static_cast<suseconds_t>(left.count() % 1'000'000);
    return setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &wait, sizeof wait) == 0 &&
           setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait) == 0;
}

// Waits also for room among those who wait to be accepted.
Answer connectTo(int socket, const QByteArray& name, Moment until) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() >= static_cast<qsizetype>(sizeof address.sun_path)) {
        return Answer::NotThere;
    }
    std::copy(name.begin(), name.end(), address.sun_path);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path)) +
                        static_cast<socklen_t>(name.size()) + (name.startsWith('\0') ? 0 : 1);
    while (limit(socket, until)) {
        if (connect(socket, reinterpret_cast<const sockaddr*>(&address), length) == 0) {
            return Answer::Given;
        }
        if (errno != EINTR && errno != EAGAIN) {
            return Answer::NotThere;
        }
    }
    return Answer::None;
}

// The first line of the D-Bus Specification's "Authentication Protocol": we are this user.
QByteArray greeting() {
    return '\0' + QByteArray("AUTH EXTERNAL ") + QByteArray::number(getuid()).toHex() + "\r\n";
}

// Whatever the line says, and a connection that is closed too: nobody waits any longer.
Answer awaitLine(int socket, Moment until) {
    std::array<char, 512> part{};
    while (limit(socket, until)) {
        const ssize_t length = recv(socket, part.data(), part.size(), 0);
        const bool hasEnded = length == 0 || (length < 0 && errno != EINTR && errno != EAGAIN);
        if (hasEnded || (length > 0 && std::memchr(part.data(), '\n', static_cast<std::size_t>(length)))) {
            return Answer::Given;
        }
    }
    return Answer::None;
}

Answer greet(int socket, const QByteArray& name, Moment until) {
    const Answer connected = connectTo(socket, name, until);
    if (connected != Answer::Given) {
        return connected;
    }
    const QByteArray line = greeting();
    if (send(socket, line.constData(), static_cast<std::size_t>(line.size()), sendFlags) != line.size()) {
        return Answer::Given; // it has closed the connection: an empty socket takes a line
    }
    return awaitLine(socket, until);
}

} // namespace

bool isSilentBus(const QByteArray& address, Moment until) {
    for (const QByteArray& one : address.split(';')) {
        const std::optional<QByteArray> name = socketName(one);
        if (!name) {
            return false;
        }
        const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        if (socket < 0) {
            return false;
        }
        const Answer answer = greet(socket, *name, until);
        close(socket);
        if (answer != Answer::NotThere) { // the first that takes the connection is the one that is used
            return answer == Answer::None;
        }
    }
    return false;
}
