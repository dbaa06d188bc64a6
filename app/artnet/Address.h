#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Reads a dotted IPv4 address into host order, first octet in the most significant byte: 192.168.1.255 is
/// 0xC0A801FF. Blanks and a sign may stand before each number, the points follow their number directly, and
/// whatever comes after the fourth number is ignored. Nothing when a number is missing or outside 0..255,
/// however many digits it has.
std::optional<std::uint32_t> parseAddress(std::string_view text);

/// The dotted form of an address in host order, without leading zeros.
std::string printAddress(std::uint32_t address);
