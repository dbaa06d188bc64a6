#pragma once

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <thread>

/// A socket that takes connections as a message bus does, and says to the first one what it is told to say;
/// by itself nothing.
class BusSocket {
public:
    BusSocket() : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        const QByteArray path = QFile::encodeName(folder_.filePath("bus"));
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        std::copy(path.begin(), path.end(), name.sun_path);
        isOpen_ = bind(socket_, reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0 &&
                  listen(socket_, 8) == 0;
    }
    ~BusSocket() {
        if (answering_.joinable()) {
            answering_.join();
        }
        ::close(socket_);
    }
    BusSocket(const BusSocket&) = delete;
    BusSocket& operator=(const BusSocket&) = delete;
    BusSocket(BusSocket&&) = delete;
    BusSocket& operator=(BusSocket&&) = delete;

    bool isOpen() const { return isOpen_; }
    QString folder() const { return folder_.path(); }
    QByteArray address() const { return "unix:path=" + QFile::encodeName(folder_.filePath("bus")); }

    /// Answers the first connection, waits until it is closed and closes it.
    void answer(const QByteArray& line) {
        answering_ = std::thread([this, line] {
            const int connection = accept(socket_, nullptr, nullptr);
            take(connection);
            if (!line.isEmpty()) {
                send(connection, line.constData(), static_cast<std::size_t>(line.size()), MSG_NOSIGNAL);
                take(connection);
            }
            ::close(connection);
        });
    }
    /// Answers the first connection with a line and then says nothing more until that is closed.
    void answerOnce(const QByteArray& line) {
        answering_ = std::thread([this, line] {
            const int connection = accept(socket_, nullptr, nullptr);
            take(connection);
            send(connection, line.constData(), static_cast<std::size_t>(line.size()), MSG_NOSIGNAL);
            while (take(connection)) {
            }
            ::close(connection);
        });
    }
    /// What the connection that was answered has said.
    QByteArray taken() {
        answering_.join();
        return taken_;
    }

private:
    bool take(int connection) {
        std::array<char, 512> part{};
        const auto length = recv(connection, part.data(), part.size(), 0);
        taken_.append(part.data(), std::max<qsizetype>(length, 0));
        return length > 0;
    }

    QTemporaryDir folder_;
    int socket_;
    bool isOpen_ = false;
    std::thread answering_;
    QByteArray taken_;
};
