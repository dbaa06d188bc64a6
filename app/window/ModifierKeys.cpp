#include "window/ModifierKeys.h"

#include <QGuiApplication>

#include <utility>

namespace {

ModifierKeys gModifierKeys = QGuiApplication::queryKeyboardModifiers;

} // namespace

bool optionKeyIsHeld() {
    return gModifierKeys() & Qt::AltModifier;
}

ModifierKeys setModifierKeys(ModifierKeys keys) {
    return std::exchange(gModifierKeys, keys ? keys : QGuiApplication::queryKeyboardModifiers);
}
