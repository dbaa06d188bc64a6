#pragma once

#include <QByteArrayView>

#include <cstddef>
#include <cstdint>

/// The largest property-list file that is read, in bytes.
inline constexpr std::size_t largestPropertyListFile = std::size_t{16} * 1024 * 1024;

/// What a property list may cost before it is parsed.
struct GatekeeperLimits {
    std::size_t maxBytes = largestPropertyListFile;
    /// Dictionaries and arrays that lie within each other.
    int maxDepth = 64;
    /// Keys and values, each counted as often as it is reached.
    int maxNodes = 1'000'000;
    /// What takes the parser time that grows with a square: the pairs of keys that share a dictionary, all of
    /// which it compares when the keys collide or repeat, and for each entity in a text the text's length in
    /// pieces of 256 bytes, because it moves the rest of the text up. So much takes a few seconds at worst;
    /// one dictionary of 14,142 keys comes to it.
    std::uint64_t maxWork = 100'000'000;
};

/// Whether these bytes are a property list that can be parsed safely: XML or binary (version 00), well
/// formed, and within the limits. Anything else is refused, also what a lenient parser would take.
bool passesGatekeeper(QByteArrayView bytes, const GatekeeperLimits& limits = {});

/// Whether the bytes claim to be a binary property list.
bool isBinaryPropertyList(QByteArrayView bytes);
