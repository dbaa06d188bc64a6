#include "controls/LevelState.h"

bool LevelState::goTo(std::uint32_t target, float seconds, std::uint64_t now) {
    const std::uint32_t oldValue = value;
    time = seconds;
    fade.start(value, target, seconds, now);
    if (!fade.running()) {
        value = target;
    }
    return target != oldValue;
}

bool LevelState::updateDMX(Slots levels, std::uint64_t now) {
    if (dummy) {
        return false;
    }
    if (fade.running()) {
        stepFade(now);
    }
    if (!liesInsideUniverse(address, channels) || readLevel(levels, address, channels) == value) {
        return false;
    }
    writeLevel(levels, address, channels, value);
    return true;
}

void LevelState::stepFade(std::uint64_t now) {
    const std::uint32_t next = fade.step(now);
    needsRedraw = needsRedraw || next != value;
    value = next;
}

LevelsUpdate updateLevels(LevelArray& levels, Slots slots, std::uint64_t now) {
    LevelsUpdate update;
    for (LevelState& level : levels) {
        update.slotsChanged |= level.updateDMX(slots, now);
        update.needsRedraw |= level.needsRedraw;
    }
    return update;
}
