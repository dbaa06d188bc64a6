#include "levels/LevelArray.h"

#include <algorithm>
#include <span>
#include <utility>

std::size_t LevelArray::add(std::uint32_t value) {
    levels_.push_back({.value = value, .place = {}});
    movements_.emplace_back();
    return levels_.size() - 1;
}

void LevelArray::noteMoved(std::size_t first, std::size_t count) {
    hasMoved_ = true;
    moved_ = {.first = std::min(moved_.first, first), .last = std::max(moved_.last, first + count)};
}

bool LevelArray::setValue(std::size_t index, std::uint32_t value) {
    if (levels_[index].value == value) {
        return false;
    }
    levels_[index].value = value;
    movements_[index].hasMoved = true;
    noteMoved(index, 1);
    return true;
}

void LevelArray::holdFade(std::size_t index, bool held) {
    movements_[index].held = held;
    fading_ = fading_ || !held; // what is let go may be a fade under way
}

bool LevelArray::goTo(std::size_t index, std::uint32_t target, float seconds, std::uint64_t now) {
    Fade& fade = movements_[index].fade;
    const std::uint32_t oldValue = levels_[index].value;
    fade.start(oldValue, target, seconds, now);
    if (fade.running()) {
        fading_ = true;
    } else {
        setValue(index, target);
    }
    return target != oldValue;
}

bool LevelArray::updateDMX(std::size_t index, Slots universe, std::uint64_t now) {
    stepFades(index, 1, now);
    return encode(universe, levels_[index].place, levels_[index].value);
}

bool LevelArray::updateDMX(Slots universe, std::uint64_t now) {
    if (fading_) {
        fading_ = stepFades(0, levels_.size(), now);
    }
    bool changed = false;
    for (const Level& level : levels_) {
        changed |= encode(universe, level.place, level.value);
    }
    return changed;
}

bool LevelArray::stepFades(std::size_t first, std::size_t count, std::uint64_t now) {
    const std::span levels = std::span(levels_).subspan(first, count);
    const std::span movements = std::span(movements_).subspan(first, count);
    bool fading = false;
    bool moved = false;
    for (std::size_t i = 0; i < count; ++i) {
        Movement& movement = movements[i];
        if (movement.held || !movement.fade.running()) {
            continue;
        }
        const std::uint32_t value = movement.fade.step(now);
        if (value != levels[i].value) {
            levels[i].value = value;
            movement.hasMoved = true;
            moved = true;
        }
        fading |= movement.fade.running();
    }
    if (moved) {
        noteMoved(first, count);
    }
    return fading;
}

void LevelArray::takeMoved(std::vector<std::uint32_t>& moved) {
    if (!takeHasMoved()) {
        return;
    }
    const Range range = std::exchange(moved_, {});
    for (std::size_t i = range.first; i < range.last; ++i) {
        if (std::exchange(movements_[i].hasMoved, false)) {
            moved.push_back(static_cast<std::uint32_t>(i));
        }
    }
}
