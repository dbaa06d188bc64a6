#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>

/// A receiver on one loopback address, such as a lighting node would be. Every test program listens on an
/// address of its own, so that test programs may run side by side.
class DatagramListener {
public:
    /// Binds 127.0.0.<lastOctet>; check isListening() before use.
    explicit DatagramListener(std::uint8_t lastOctet, std::uint16_t port = 6454);
    ~DatagramListener();
    DatagramListener(const DatagramListener&) = delete;
    DatagramListener& operator=(const DatagramListener&) = delete;

    bool isListening() const { return listening_; }
    /// The address in host order, as sends want it.
    std::uint32_t address() const { return address_; }

    /// Takes what has arrived, in order of arrival, without waiting.
    QList<QByteArray> takeArrived();
    /// Takes what has arrived as soon as there are at least `count` datagrams, or what there is after two
    /// seconds.
    QList<QByteArray> waitFor(qsizetype count);

private:
    std::uint32_t address_;
    int socket_;
    bool listening_;
    QByteArray buffer_;
};
