#pragma once

#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <optional>
#include <vector>

class Faders;

/// The level of the control that is registered under `key`.
struct KeptLevel {
    QString key;
    std::uint32_t value = 0;
};

/// What the operator has made, as it stands at one moment. Values only: whoever holds it needs neither
/// controls nor settings any more, and may be another thread.
struct ShowSnapshot {
    std::optional<QVariantMap> settings; ///< the rig with its patch and cues
    QString configName;
    std::optional<QString> currCue;
    std::vector<KeptLevel> levels; ///< of the controls away from their defaults
};

/// The levels of all faders that are away from their defaults, in the order of their keys.
std::vector<KeptLevel> presentLevels(const Faders& faders);

/// Sets every fader that is named to its level, at once; keys that name none are passed over.
void restoreLevels(const std::vector<KeptLevel>& levels, const Faders& faders);
