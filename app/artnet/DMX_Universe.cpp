#include "artnet/DMX_Universe.h"

#include "artnet/SocketAddress.h"
#include "clock/MonotonicClock.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr std::uint16_t artNetPort = 6454;
constexpr std::uint64_t refreshNanoseconds = 1'000'000'000;
constexpr std::size_t headerSize = 18;

// Header fields of ArtDmx that are written on each send.
constexpr std::size_t sequenceOffset = 12;
constexpr std::size_t subUniOffset = 14;
constexpr std::size_t lengthOffset = 16;

constexpr std::array<std::uint8_t, headerSize> art_hdr = {
    'A',  'r',  't', '-', 'N', 'e', 't', 0, // ID
    0x00, 0x50,                             // OpCode, low byte first
    0,    14,                               // ProtVer, high byte first
    0,    0,    0,   0,   0,   0,           // Sequence, Physical, SubUni, Net and Length: zero until a send
};

} // namespace

DMX_Universe::DMX_Universe() {
    std::ranges::copy(art_hdr, buf.begin());
}

std::span<std::uint8_t, DMX_Universe::slotCount> DMX_Universe::dmx() {
    return std::span(buf).subspan<headerSize, slotCount>();
}

std::span<const std::uint8_t, DMX_Universe::slotCount> DMX_Universe::dmx() const {
    return std::span(buf).subspan<headerSize, slotCount>();
}

void DMX_Universe::clearSlotsExcept(const std::bitset<slotCount>& kept) {
    const auto levels = dmx();
    for (std::size_t slot = 0; slot < slotCount; ++slot) {
        if (!kept.test(slot) && levels[slot] != 0) {
            levels[slot] = 0;
            _needsTX = true;
        }
    }
}

std::int32_t DMX_Universe::sendWithSocket(int socket, std::uint32_t toAddress) {
    if (!_active || !isDue()) {
        return 0;
    }
    writeHeader();
    const sockaddr_in destination = socketAddress(toAddress, artNetPort);
    const auto sent = sendto(socket, buf.data(), buf.size(), 0,
                             reinterpret_cast<const sockaddr*>(&destination), sizeof destination);
    noteSend(sent >= 0);
    _needsTX = false;
    _active = false;
    return static_cast<std::int32_t>(sent);
}

// Right after the attempt, while errno is its own.
void DMX_Universe::noteSend(bool succeeded) {
    sendRecord_.error = succeeded ? 0 : errno;
    sendRecord_.sent += succeeded ? 1 : 0;
    last_tx = monotonicNanoseconds();
    sendRecord_.lastNanoseconds = last_tx;
}

bool DMX_Universe::isDue() const {
    return _needsTX || monotonicNanoseconds() - last_tx >= refreshNanoseconds;
}

void DMX_Universe::advanceSequence() {
    // Leaving 0 takes two steps: a stream runs 2, 3, ... 255, 0, 2, and 1 never goes out.
    std::uint8_t& sequence = buf[sequenceOffset];
    sequence = static_cast<std::uint8_t>(sequence + (sequence == 0 ? 2 : 1));
}

void DMX_Universe::writeHeader() {
    advanceSequence();
    buf[subUniOffset] = static_cast<std::uint8_t>(_universe);
    buf[lengthOffset] = slotCount >> 8;
    buf[lengthOffset + 1] = slotCount & 0xFF;
}
