#pragma once

#include <QLatin1StringView>

/// Under what the parts of a stored level stand, in a cue and in what is remembered of a run: the fader's
/// key, its level, and the seconds in which it goes there.
namespace recordKeys {
inline constexpr QLatin1StringView key("key");
inline constexpr QLatin1StringView value("value");
inline constexpr QLatin1StringView time("time");
} // namespace recordKeys
