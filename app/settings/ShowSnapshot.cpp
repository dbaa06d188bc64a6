#include "settings/ShowSnapshot.h"

#include "rig/Faders.h"

std::vector<KeptLevel> presentLevels(const Faders& faders) {
    std::vector<KeptLevel> levels;
    for (const DMXControl* const fader : faders.sorted()) {
        if (const std::uint32_t value = fader->value(); value != fader->defaultValue()) {
            levels.push_back({.key = fader->key(), .value = value});
        }
    }
    return levels;
}

void restoreLevels(const std::vector<KeptLevel>& levels, const Faders& faders) {
    for (const auto& [key, value] : levels) {
        if (DMXControl* const fader = faders.find(key)) {
            fader->setDMXValue(value, 0);
        }
    }
}
