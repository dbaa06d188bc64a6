#include "settings/ShowSnapshot.h"

#include "controls/DMXControl.h"

std::vector<KeptLevel> presentLevels() {
    std::vector<KeptLevel> levels;
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        if (control->notDefault()) {
            levels.push_back({.key = key, .value = control->value()});
        }
    }
    return levels;
}

void restoreLevels(const std::vector<KeptLevel>& levels) {
    const auto& controls = DMXControl::controlsByName();
    for (const auto& [key, value] : levels) {
        if (const auto found = controls.find(key); found != controls.end()) {
            found->second->setDMXValue(value, 0);
        }
    }
}
