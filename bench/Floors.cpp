#include "Floors.h"

#include "artnet/SocketAddress.h"

#include <QPainter>

#include <benchmark/benchmark.h>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::uint32_t loopback = INADDR_LOOPBACK;

// As faders stand in a fixture's window.
constexpr int rows = 32;
constexpr int columnWidth = 150;
constexpr int rowHeight = 19;

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

Fill::Fill(int faderCount) : faderCount_(faderCount) {
    resize((faderCount + rows - 1) / rows * columnWidth, rows * rowHeight);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void Fill::paintEvent(QPaintEvent*) {
    constexpr QSizeF half(73, 15);
    constexpr QPointF inset(2, 2);
    QPainter painter(this);
    for (int i = 0; i < faderCount_; ++i) {
        const QPointF corner = inset + QPoint(i / rows * columnWidth, i % rows * rowHeight);
        painter.fillRect(QRectF(corner, half), Qt::darkGray);
        painter.fillRect(QRectF(corner + QPointF(half.width(), 0), half), Qt::lightGray);
    }
}

} // namespace Floors
