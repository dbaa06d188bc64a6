#include "settings/ShowSnapshot.h"

#include "controls/DMXControl.h"

std::vector<ControlLevel> presentLevels() {
    std::vector<ControlLevel> levels;
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        if (control->notDefault()) {
            levels.push_back({.key = key, .value = control->value()});
        }
    }
    return levels;
}

void restoreLevels(const std::vector<ControlLevel>& levels) {
    const auto& controls = DMXControl::controlsByName();
    for (const auto& [key, value] : levels) {
        if (const auto found = controls.find(key); found != controls.end()) {
            found->second->setDMXValue(value, 0);
        }
    }
}
