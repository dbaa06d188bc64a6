#pragma once

#include <cstdint>

/// Opens the UDP socket that every datagram goes out through: allowed to broadcast, never waiting, and with
/// room for the datagrams of a large rig's tick. With port 0 the system picks the source port on the first
/// send, any other port is bound on all interfaces. Returns the descriptor, -1 when there is none to be had.
/// Failures are printed on standard output; a refused port or broadcast option leaves a socket that still
/// sends to single addresses.
int createSocket(std::uint16_t port);
