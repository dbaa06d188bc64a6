#pragma once

#include <netinet/in.h>

#include <cstdint>

/// The socket address of an IPv4 address in host order (first dotted octet in the most significant byte)
/// and a port in host order; every byte that neither of them fills is zero.
sockaddr_in socketAddress(std::uint32_t address, std::uint16_t port);
