#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <span>

/// What became of a universe's sends.
struct SendRecord {
    std::uint64_t sent = 0;            ///< datagrams that the system took
    std::uint64_t lastNanoseconds = 0; ///< of the monotonic clock, at the last attempt; 0 before the first
    int error = 0;                     ///< errno of the last attempt, 0 when it succeeded
};

/// One Art-Net universe, kept as the ArtDmx datagram that is ready to go out: levels are written straight
/// into its last 512 bytes, and a send fills in only what changes from one datagram to the next.
class DMX_Universe {
public:
    /// An ArtDmx packet (Art-Net 4): an 18-byte header, then the 512 slots.
    static constexpr std::size_t packetSize = 530;
    static constexpr std::size_t slotCount = 512;

    DMX_Universe();

    /// The slots, DMX slot n (1..512) at index n - 1. Valid as long as the universe lives.
    std::span<std::uint8_t, slotCount> dmx();
    std::span<const std::uint8_t, slotCount> dmx() const;
    /// Puts every slot that is not among `kept`, DMX slot n at bit n - 1, to 0; when one of them was not, the
    /// universe needs transmission.
    void clearSlotsExcept(const std::bitset<slotCount>& kept);
    /// The datagram as it stands: header and slots.
    std::span<const std::uint8_t, packetSize> packet() const { return buf; }

    /// Offers the universe to be sent to port 6454 of an IPv4 address in host order. It goes out when it is
    /// active and either needs transmission or was last sent a second or more ago. Returns 0 when nothing was
    /// sent, otherwise the bytes sent or -1. Both flags are cleared even by a send that failed, so that a
    /// dead network is tried once a second and not thirty times.
    std::int32_t sendWithSocket(int socket, std::uint32_t toAddress);

    /// The whole number; only its low 8 bits go out on the wire.
    std::uint32_t universe() const { return _universe; }
    void setUniverse(std::uint32_t universe) { _universe = universe; }
    /// Some slot changed since the last send.
    bool needsTX() const { return _needsTX; }
    void setNeedsTX(bool needsTX) { _needsTX = needsTX; }
    /// Some fixture wrote its levels here since the last send.
    bool active() const { return _active; }
    void setActive(bool active) { _active = active; }

    const SendRecord& sendRecord() const { return sendRecord_; }

private:
    void noteSend(bool succeeded);
    bool isDue() const;
    void advanceSequence();
    void writeHeader();

    std::array<std::uint8_t, packetSize> buf{};
    std::uint64_t last_tx = 0;
    bool _needsTX = false;
    bool _active = false;
    std::uint32_t _universe = 0;
    SendRecord sendRecord_;
};
