#include "Floors.h"

#include "artnet/SocketAddress.h"

#include <QPainter>

#include <benchmark/benchmark.h>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::uint32_t loopback = INADDR_LOOPBACK;

std::uint16_t boundPort(int socket) {
    sockaddr_in bound{};
    socklen_t size = sizeof bound;
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&bound), &size);
    return ntohs(bound.sin_port);
}

} // namespace

namespace Floors {

void Scan::run() {
    std::uint32_t changed = 0;
    for (Record& record : records_) {
        changed += record.value != record.stored ? 1 : 0;
        record.stored = record.value;
    }
    benchmark::DoNotOptimize(changed);
    benchmark::ClobberMemory();
}

Send::Send(std::size_t packetCount)
    : packets_(packetCount), socket_(::socket(AF_INET, SOCK_DGRAM, 0)),
      receiver_(::socket(AF_INET, SOCK_DGRAM, 0)) {
    const sockaddr_in any = socketAddress(loopback, 0);
    if (::bind(receiver_, reinterpret_cast<const sockaddr*>(&any), sizeof any) == 0) {
        port_ = boundPort(receiver_);
    }
}

Send::~Send() {
    ::close(socket_);
    ::close(receiver_);
}

void Send::run() {
    const sockaddr_in target = socketAddress(loopback, port_);
    for (const auto& packet : packets_) {
        ::sendto(socket_, packet.data(), packet.size(), 0, reinterpret_cast<const sockaddr*>(&target),
                 sizeof target);
    }
}

void fill(QPaintDevice& surface, int faderCount) {
    constexpr QSizeF half(73, 15);
    constexpr int rows = 32;
    QPainter painter(&surface);
    for (int i = 0; i < faderCount; ++i) {
        const QPointF corner = QPoint(i / rows * 150 + 2, i % rows * 19 + 2);
        painter.fillRect(QRectF(corner, half), Qt::darkGray);
        painter.fillRect(QRectF(corner + QPointF(half.width(), 0), half), Qt::lightGray);
    }
}

} // namespace Floors
