#pragma once

#include <QJsonObject>

#include <cstdint>
#include <optional>
#include <vector>

/// The level at which a channel of the Open Fixture Library's format rests, a byte for each of its slots, the
/// highest first; zeros when it names none. A number counts in the channel's resolution, or its
/// "dmxValueResolution"; a text is a percentage. Nothing when it is neither or out of range.
std::optional<std::vector<std::uint8_t>> defaultBytes(const QJsonObject& channel, std::size_t byteCount);
