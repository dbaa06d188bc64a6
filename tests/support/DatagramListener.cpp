#include "support/DatagramListener.h"

#include <QDeadlineTimer>

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>

namespace {

constexpr qsizetype LargestDatagram = 65536;
constexpr std::chrono::seconds Patience{2};

} // namespace

DatagramListener::DatagramListener(std::uint8_t lastOctet, std::uint16_t port)
    : address_(INADDR_LOOPBACK - 1 + lastOctet), socket_(::socket(AF_INET, SOCK_DGRAM, 0)) {
    sockaddr_in local{};
#ifdef __APPLE__
    local.sin_len = sizeof local;
#endif
    local.sin_family = AF_INET;
    local.sin_port = htons(port);
    local.sin_addr.s_addr = htonl(address_);
    buffer_.resize(LargestDatagram);
    listening_ = bind(socket_, reinterpret_cast<const sockaddr*>(&local), sizeof local) == 0;
}

DatagramListener::~DatagramListener() {
    close(socket_);
}

QList<QByteArray> DatagramListener::takeArrived() {
    QList<QByteArray> arrived;
    for (;;) {
        const auto size =
            recv(socket_, buffer_.data(), static_cast<std::size_t>(buffer_.size()), MSG_DONTWAIT);
        if (size < 0) {
            return arrived;
        }
        arrived.append(buffer_.first(size));
    }
}

QList<QByteArray> DatagramListener::waitFor(qsizetype count) {
    QList<QByteArray> arrived = takeArrived();
    const QDeadlineTimer deadline(Patience);
    while (arrived.size() < count && !deadline.hasExpired()) {
        pollfd readable{.fd = socket_, .events = POLLIN, .revents = 0};
        poll(&readable, 1, static_cast<int>(deadline.remainingTime()));
        arrived += takeArrived();
    }
    return arrived;
}
