#pragma once

#include <QByteArrayView>

#include <cstddef>

/// The largest property-list file that is read, in bytes.
inline constexpr std::size_t largestPropertyListFile = std::size_t{16} * 1024 * 1024;

/// What a property list may cost before it is parsed.
struct GatekeeperLimits {
    std::size_t maxBytes = largestPropertyListFile;
    /// Dictionaries and arrays that lie within each other.
    int maxDepth = 64;
    /// Keys and values, each counted as often as it is reached.
    int maxNodes = 1'000'000;
    /// Keys of one dictionary. The parser's work on colliding or repeated keys grows with the square of it.
    int maxEntries = 10'000;
};

/// Whether these bytes are a property list that can be parsed safely: XML or binary (version 00), well
/// formed, and within the limits. Anything else is refused, also what a lenient parser would take.
bool passesGatekeeper(QByteArrayView bytes, const GatekeeperLimits& limits = {});

/// Whether the bytes claim to be a binary property list.
bool isBinaryPropertyList(QByteArrayView bytes);
