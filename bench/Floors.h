#pragma once

#include <QWidget>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// The least that a machine can do for the same work; every figure is told beside one of these, measured in
/// the same run, so that the ratio holds on a busy machine too.
namespace Floors {

/// One pass of compare and store over records of 32 contiguous bytes.
class Scan {
public:
    explicit Scan(std::size_t recordCount) : records_(recordCount) {}
    void run();

private:
    struct Record {
        std::uint32_t value = 0;
        std::uint32_t stored = 0;
        std::array<std::uint32_t, 6> rest{};
    };
    static_assert(sizeof(Record) == 32);
    std::vector<Record> records_;
};

/// A loopback socket that is bound and never read: what is sent to it costs the sending and no more.
class Receiver {
public:
    /// At an IPv4 address in host order; with port 0 the system picks one.
    Receiver(std::uint32_t address, std::uint16_t port);
    ~Receiver();
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;
    std::uint16_t port() const;

private:
    int socket_;
};

/// A loop of sendto over ready packets of 530 bytes to such a receiver.
class Send {
public:
    explicit Send(std::size_t packetCount);
    ~Send();
    Send(const Send&) = delete;
    Send& operator=(const Send&) = delete;
    void run();

private:
    std::vector<std::array<std::uint8_t, 530>> packets_;
    Receiver receiver_;
    int socket_;
};

/// One widget as large as that many faders, in which two rectangles are filled for each.
class Fill : public QWidget {
public:
    explicit Fill(int faderCount);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int faderCount_;
};

} // namespace Floors
