#include "library/OpenFixtureDefault.h"

#include <QString>

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t largestResolution = 4; // bytes

// "8bit" is 1. Without one the channel's own.
std::optional<std::size_t> resolutionOf(const QJsonObject& channel, std::size_t byteCount) {
    const QJsonValue resolution = channel.value("dmxValueResolution");
    if (resolution.isUndefined()) {
        return byteCount;
    }
    const QStringList known{"8bit", "16bit", "24bit", "32bit"};
    const qsizetype index = known.indexOf(resolution.toString());
    return index < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(index) + 1);
}

// From 0 to 1; nothing for what is no percentage.
std::optional<double> shareOf(const QString& percentage) {
    bool isNumber = false;
    const double percent = percentage.chopped(percentage.isEmpty() ? 0 : 1).toDouble(&isNumber);
    if (!isNumber || !percentage.endsWith('%') || !(percent >= 0 && percent <= 100)) {
        return std::nullopt;
    }
    return percent / 100;
}

std::optional<std::uint64_t> valueOf(const QJsonValue& level, std::uint64_t largest) {
    if (level.isString()) {
        const std::optional<double> share = shareOf(level.toString());
        return share ? std::optional(
                           static_cast<std::uint64_t>(std::llround(*share * static_cast<double>(largest))))
                     : std::nullopt;
    }
    const double number = level.toDouble(-1);
    if (!(number >= 0 && number <= static_cast<double>(largest)) || number != std::floor(number)) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(number);
}

} // namespace

std::optional<std::vector<std::uint8_t>> defaultBytes(const QJsonObject& channel, std::size_t byteCount) {
    std::vector<std::uint8_t> bytes(byteCount);
    const QJsonValue level = channel.value("defaultValue");
    if (level.isUndefined()) {
        return bytes;
    }
    const std::optional<std::size_t> resolution = resolutionOf(channel, byteCount);
    if (!resolution || *resolution > largestResolution) {
        return std::nullopt;
    }
    const std::optional<std::uint64_t> value = valueOf(level, (std::uint64_t{1} << (8 * *resolution)) - 1);
    if (!value) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < std::min(byteCount, *resolution); ++i) {
        bytes[i] = static_cast<std::uint8_t>(*value >> (8 * (*resolution - 1 - i)));
    }
    return bytes;
}
