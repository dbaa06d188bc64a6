#include "Floors.h"

#include "artnet/SocketAddress.h"

#include <QPainter>

#include <benchmark/benchmark.h>

#include <cstdio>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::uint32_t loopback = INADDR_LOOPBACK;

// As faders stand in a fixture's window.
constexpr int rows = 32;
constexpr int columnWidth = 150;
constexpr int rowHeight = 19;

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

Receiver::Receiver(std::uint32_t address, std::uint16_t port) : socket_(::socket(AF_INET, SOCK_DGRAM, 0)) {
    const sockaddr_in place = socketAddress(address, port);
    if (::bind(socket_, reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0) {
        std::perror("a benchmark's receiver");
    }
}

Receiver::~Receiver() {
    ::close(socket_);
}

std::uint16_t Receiver::port() const {
    sockaddr_in bound{};
    socklen_t size = sizeof bound;
    ::getsockname(socket_, reinterpret_cast<sockaddr*>(&bound), &size);
    return ntohs(bound.sin_port);
}

Send::Send(std::size_t packetCount)
    : packets_(packetCount), receiver_(loopback, 0), socket_(::socket(AF_INET, SOCK_DGRAM, 0)) {}

Send::~Send() {
    ::close(socket_);
}

void Send::run() {
    const sockaddr_in target = socketAddress(loopback, receiver_.port());
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
