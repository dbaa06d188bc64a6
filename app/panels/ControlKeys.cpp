#include "panels/ControlKeys.h"

namespace {

KeyMeaning type(char character) {
    return {.action = KeyAction::Type, .character = character};
}

// The keypad types digits and a point whatever the layout prints on it: a decimal comma, for example, or
// Delete while Num Lock is off.
KeyMeaning keypadMeaning(int key) {
    switch (key) {
    case Qt::Key_Plus:
        return {.action = KeyAction::StepUp};
    case Qt::Key_Minus:
        return {.action = KeyAction::StepDown};
    case Qt::Key_Period:
    case Qt::Key_Comma:
    case Qt::Key_Delete:
        return type('.');
    default:
        if (key >= Qt::Key_0 && key <= Qt::Key_9) {
            return type(static_cast<char>('0' + (key - Qt::Key_0)));
        }
        return {};
    }
}

KeyMeaning commandMeaning(int key, Qt::KeyboardModifiers modifiers) {
    switch (key) {
    case Qt::Key_Equal:
        return {.action = modifiers & Qt::AltModifier ? KeyAction::ClearTime : KeyAction::FadeToDefault};
    case Qt::Key_Tab:
    case Qt::Key_Backtab: // Shift does not turn the direction round
    case Qt::Key_Down:
        return {.action = KeyAction::SelectNext};
    case Qt::Key_Up:
        return {.action = KeyAction::SelectPrevious};
    case Qt::Key_Backspace:
        return {.action = KeyAction::RemoveLast};
    case Qt::Key_Escape:
        return {.action = KeyAction::CancelEntry};
    case Qt::Key_Right:
        return {.action = KeyAction::StepUp};
    case Qt::Key_Left:
        return {.action = KeyAction::StepDown};
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return {.action = KeyAction::ApplyEntry};
    default:
        return {};
    }
}

KeyMeaning textMeaning(const QString& text) {
    if (text.size() != 1) {
        return {};
    }
    const char16_t character = text.front().unicode();
    if (character == u's' || character == u'S') {
        return {.action = KeyAction::ApplyEntryAsTime};
    }
    if (character == u'.' || (character >= u'0' && character <= u'9')) {
        return type(static_cast<char>(character));
    }
    return {};
}

} // namespace

KeyMeaning meaningOf(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    if (modifiers & Qt::ControlModifier) {
        return {};
    }
    if (modifiers & Qt::KeypadModifier) {
        const KeyMeaning meaning = keypadMeaning(event.key());
        if (meaning.action != KeyAction::None) {
            return meaning;
        }
        if (event.key() == Qt::Key_Equal) { // only the "=" of the main block goes to the default
            return {};
        }
    }
    const KeyMeaning meaning = commandMeaning(event.key(), modifiers);
    return meaning.action != KeyAction::None ? meaning : textMeaning(event.text());
}
