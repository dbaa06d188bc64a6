#pragma once

#include <QByteArray>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <utility>

/// A pipe that nobody reads unless told so.
class TestPipe {
public:
    TestPipe() { isOpen_ = ::pipe2(ends_.data(), O_CLOEXEC) == 0; }
    ~TestPipe() {
        closeReader();
        ::close(ends_[1]);
    }
    TestPipe(const TestPipe&) = delete;
    TestPipe& operator=(const TestPipe&) = delete;
    TestPipe(TestPipe&&) = delete;
    TestPipe& operator=(TestPipe&&) = delete;

    bool isOpen() const { return isOpen_; }
    int writer() const { return ends_[1]; }
    void closeReader() {
        if (const int reader = std::exchange(ends_[0], -1); reader >= 0) {
            ::close(reader);
        }
    }

    /// The next line, without its newline; waits for it.
    QByteArray line() {
        while (!read_.contains('\n')) {
            std::array<char, 4096> part{};
            const auto length = ::read(ends_[0], part.data(), part.size());
            if (length <= 0) {
                return "no line";
            }
            read_.append(part.data(), static_cast<qsizetype>(length));
        }
        const qsizetype end = read_.indexOf('\n');
        QByteArray first = read_.left(end);
        read_.remove(0, end + 1);
        return first;
    }

    /// Reads what is there and waits for nothing.
    void empty() {
        std::array<char, 4096> part{};
        pollfd ready{.fd = ends_[0], .events = POLLIN, .revents = 0};
        while (::poll(&ready, 1, 0) > 0 && ::read(ends_[0], part.data(), part.size()) > 0) {
        }
    }

private:
    std::array<int, 2> ends_{-1, -1};
    bool isOpen_ = false;
    QByteArray read_;
};

/// A pipe in place of a stream of the program's as long as it lives.
class Redirection {
public:
    Redirection(std::FILE* stream, const TestPipe& pipe) : stream_(stream), original_(::dup(fileno(stream))) {
        std::fflush(stream);
        ::dup2(pipe.writer(), fileno(stream));
    }
    ~Redirection() {
        std::fflush(stream_);
        ::dup2(original_, fileno(stream_));
        ::close(original_);
    }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;
    Redirection(Redirection&&) = delete;
    Redirection& operator=(Redirection&&) = delete;

private:
    std::FILE* stream_;
    int original_;
};
