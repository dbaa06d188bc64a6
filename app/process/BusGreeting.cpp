#include "process/BusGreeting.h"

#include <QList>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
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

// What the toolkit says next and waits for: the D-Bus Specification's "Message Bus Messages", Hello. A method
// call (little-endian, protocol 1, no body, serial 1) whose header fields are path, destination, interface
// and member.
QByteArray hello() {
    const auto text = [](char field, char type, QByteArrayView value) {
        const std::array<char, 8> head{field, 1, type, 0, static_cast<char>(value.size()), 0, 0, 0};
        return QByteArray(head.data(), std::ssize(head)).append(value).append('\0');
    };
    QByteArray fields;
    const auto add = [&fields](const QByteArray& field) {
        fields.append((8 - fields.size() % 8) % 8, '\0').append(field);
    };
    add(text(1, 'o', "/org/freedesktop/DBus"));
    add(text(6, 's', "org.freedesktop.DBus"));
    add(text(2, 's', "org.freedesktop.DBus"));
    add(text(3, 's', "Hello"));
    QByteArray message("l\x01\0\x01\0\0\0\0\x01\0\0\0", 12);
    message.append(static_cast<char>(fields.size())).append(3, '\0').append(fields);
    return message.append((8 - message.size() % 8) % 8, '\0');
}

bool say(int socket, const QByteArray& text) {
    return send(socket, text.constData(), static_cast<std::size_t>(text.size()), sendFlags) == text.size();
}

// What comes until `isEnough`; all of nothing when the connection is closed, and nothing at all without an
// answer.
std::optional<QByteArray> await(int socket, Moment until, bool (*isEnough)(const QByteArray&)) {
    QByteArray heard;
    std::array<char, 512> part{};
    while (limit(socket, until)) {
        const ssize_t length = recv(socket, part.data(), part.size(), 0);
        if (length == 0 || (length < 0 && errno != EINTR && errno != EAGAIN)) {
            return QByteArray();
        }
        heard.append(part.data(), std::max<qsizetype>(length, 0));
        if (isEnough(heard)) {
            return heard;
        }
    }
    return std::nullopt;
}

Answer greet(int socket, const QByteArray& name, Moment until) {
    const Answer connected = connectTo(socket, name, until);
    if (connected != Answer::Given) {
        return connected;
    }
    if (!say(socket, greeting())) {
        return Answer::Given; // it has closed the connection: an empty socket takes a line
    }
    const auto line = await(socket, until, [](const QByteArray& heard) { return heard.contains('\n'); });
    if (!line || !line->startsWith("OK")) {
        return line ? Answer::Given : Answer::None; // nobody waits for a bus that wants nothing to do with us
    }
    if (!say(socket, "BEGIN\r\n" + hello())) {
        return Answer::Given;
    }
    return await(socket, until, [](const QByteArray& heard) { return !heard.isEmpty(); }) ? Answer::Given
                                                                                          : Answer::None;
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
