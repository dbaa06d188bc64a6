#include "controls/LevelArray.h"

#include <utility>

std::size_t LevelArray::add(std::uint32_t value) {
    levels_.push_back({.value = value, .place = {}});
    fades_.emplace_back();
    return levels_.size() - 1;
}

bool LevelArray::goTo(std::size_t index, std::uint32_t target, float seconds, std::uint64_t now) {
    Level& level = levels_[index];
    Fade& fade = fades_[index].fade;
    const std::uint32_t oldValue = level.value;
    fade.start(oldValue, target, seconds, now);
    if (fade.running()) {
        fading_ = true;
    } else {
        level.value = target;
    }
    return target != oldValue;
}

bool LevelArray::updateDMX(std::size_t index, Slots universe, std::uint64_t now) {
    stepFade(index, now);
    return encode(universe, levels_[index].place, levels_[index].value);
}

bool LevelArray::updateDMX(Slots universe, std::uint64_t now) {
    if (std::exchange(fading_, false)) {
        for (std::size_t i = 0; i < fades_.size(); ++i) {
            stepFade(i, now);
        }
    }
    bool changed = false;
    for (const Level& level : levels_) {
        changed |= encode(universe, level.place, level.value);
    }
    return changed;
}

void LevelArray::stepFade(std::size_t index, std::uint64_t now) {
    Movement& movement = fades_[index];
    if (!movement.fade.running() || movement.held) {
        return;
    }
    fading_ = true; // so that one that ends now is looked at once more, which does no harm
    const std::uint32_t value = movement.fade.step(now);
    if (value != levels_[index].value) {
        levels_[index].value = value;
        movement.needsRedraw = true;
        needsRedraw_ = true;
    }
}

bool LevelArray::takeRedraw(std::size_t index) {
    return std::exchange(fades_[index].needsRedraw, false);
}

bool LevelArray::takeRedraw() {
    return std::exchange(needsRedraw_, false);
}
