#include "panels/ControlKeys.h"

#include <QTest>

namespace {

constexpr Qt::KeyboardModifiers plain = Qt::NoModifier;
constexpr Qt::KeyboardModifiers keypad = Qt::KeypadModifier;
constexpr Qt::KeyboardModifiers shift = Qt::ShiftModifier;
constexpr Qt::KeyboardModifiers option = Qt::AltModifier;
constexpr Qt::KeyboardModifiers command = Qt::ControlModifier;

// As a key would come in with the text that the layout gives it.
struct Key {
    int code;
    Qt::KeyboardModifiers modifiers;
    QString text;
};

KeyMeaning meaning(const Key& key) {
    return meaningOf(QKeyEvent(QEvent::KeyPress, key.code, key.modifiers, key.text));
}

} // namespace

Q_DECLARE_METATYPE(Key)
Q_DECLARE_METATYPE(KeyAction)

class tst_ControlKeys : public QObject {
    Q_OBJECT

private slots:
    void aKeyHasItsAction_data();
    void aKeyHasItsAction();
    void digitsAndPointsAreTyped_data();
    void digitsAndPointsAreTyped();
    void otherKeysMeanNothing_data();
    void otherKeysMeanNothing();
    void withCommandNoKeyMeansAnything_data();
    void withCommandNoKeyMeansAnything();
};

void tst_ControlKeys::aKeyHasItsAction_data() {
    QTest::addColumn<Key>("key");
    QTest::addColumn<KeyAction>("action");

    QTest::newRow("=") << Key{Qt::Key_Equal, plain, "="} << KeyAction::FadeToDefault;
    QTest::newRow("= that needs Shift") << Key{Qt::Key_Equal, shift, "="} << KeyAction::FadeToDefault;
    QTest::newRow("Option =") << Key{Qt::Key_Equal, option, "="} << KeyAction::ClearTime;
    QTest::newRow("Option Shift =") << Key{Qt::Key_Equal, option | shift, "="} << KeyAction::ClearTime;
    QTest::newRow("Tab") << Key{Qt::Key_Tab, plain, "\t"} << KeyAction::SelectNext;
    QTest::newRow("Shift Tab") << Key{Qt::Key_Backtab, shift, ""} << KeyAction::SelectNext;
    QTest::newRow("down") << Key{Qt::Key_Down, plain, ""} << KeyAction::SelectNext;
    QTest::newRow("up") << Key{Qt::Key_Up, plain, ""} << KeyAction::SelectPrevious;
    QTest::newRow("Delete") << Key{Qt::Key_Backspace, plain, "\b"} << KeyAction::RemoveLast;
    QTest::newRow("Escape") << Key{Qt::Key_Escape, plain, "\x1b"} << KeyAction::CancelEntry;
    QTest::newRow("right") << Key{Qt::Key_Right, plain, ""} << KeyAction::StepUp;
    QTest::newRow("left") << Key{Qt::Key_Left, plain, ""} << KeyAction::StepDown;
    QTest::newRow("keypad +") << Key{Qt::Key_Plus, keypad, "+"} << KeyAction::StepUp;
    QTest::newRow("keypad -") << Key{Qt::Key_Minus, keypad, "-"} << KeyAction::StepDown;
    // Some desktops count the arrows to the keypad, and so they are while Num Lock is off.
    QTest::newRow("right of the keypad") << Key{Qt::Key_Right, keypad, ""} << KeyAction::StepUp;
    QTest::newRow("left of the keypad") << Key{Qt::Key_Left, keypad, ""} << KeyAction::StepDown;
    QTest::newRow("up of the keypad") << Key{Qt::Key_Up, keypad, ""} << KeyAction::SelectPrevious;
    QTest::newRow("down of the keypad") << Key{Qt::Key_Down, keypad, ""} << KeyAction::SelectNext;
    QTest::newRow("Return") << Key{Qt::Key_Return, plain, "\r"} << KeyAction::ApplyEntry;
    QTest::newRow("Enter") << Key{Qt::Key_Enter, keypad, "\r"} << KeyAction::ApplyEntry;
    QTest::newRow("s") << Key{Qt::Key_S, plain, "s"} << KeyAction::ApplyEntryAsTime;
    QTest::newRow("S") << Key{Qt::Key_S, shift, "S"} << KeyAction::ApplyEntryAsTime;
}

void tst_ControlKeys::aKeyHasItsAction() {
    QFETCH(const Key, key);
    QFETCH(const KeyAction, action);
    QCOMPARE(meaning(key).action, action);
}

void tst_ControlKeys::digitsAndPointsAreTyped_data() {
    QTest::addColumn<Key>("key");
    QTest::addColumn<char>("character");

    QTest::newRow("0") << Key{Qt::Key_0, plain, "0"} << '0';
    QTest::newRow("5") << Key{Qt::Key_5, plain, "5"} << '5';
    QTest::newRow("9") << Key{Qt::Key_9, plain, "9"} << '9';
    QTest::newRow("a digit that needs Shift") << Key{Qt::Key_Eacute, shift, "2"} << '2';
    QTest::newRow("point") << Key{Qt::Key_Period, plain, "."} << '.';
    QTest::newRow("keypad 0") << Key{Qt::Key_0, keypad, "0"} << '0';
    QTest::newRow("keypad 9") << Key{Qt::Key_9, keypad, "9"} << '9';
    QTest::newRow("keypad point") << Key{Qt::Key_Period, keypad, "."} << '.';
    QTest::newRow("keypad comma") << Key{Qt::Key_Comma, keypad, ","} << '.';
    QTest::newRow("keypad decimal key, Num Lock off") << Key{Qt::Key_Delete, keypad, "\x7f"} << '.';
}

void tst_ControlKeys::digitsAndPointsAreTyped() {
    QFETCH(const Key, key);
    QCOMPARE(meaning(key).action, KeyAction::Type);
    QTEST(meaning(key).character, "character");
}

void tst_ControlKeys::otherKeysMeanNothing_data() {
    QTest::addColumn<Key>("key");

    QTest::newRow("letter") << Key{Qt::Key_A, plain, "a"};
    QTest::newRow("comma") << Key{Qt::Key_Comma, plain, ","};
    QTest::newRow("plus of the main block") << Key{Qt::Key_Plus, plain, "+"};
    QTest::newRow("minus of the main block") << Key{Qt::Key_Minus, plain, "-"};
    QTest::newRow("keypad =") << Key{Qt::Key_Equal, keypad, "="};
    QTest::newRow("keypad *") << Key{Qt::Key_Asterisk, keypad, "*"};
    QTest::newRow("forward delete") << Key{Qt::Key_Delete, plain, "\x7f"};
    QTest::newRow("space") << Key{Qt::Key_Space, plain, " "};
    QTest::newRow("Shift alone") << Key{Qt::Key_Shift, shift, ""};
    QTest::newRow("F1") << Key{Qt::Key_F1, plain, ""};
    QTest::newRow("two characters at once") << Key{0, plain, "12"};
    QTest::newRow("digit of another script") << Key{0, plain, QString(QChar(0x0661))};
    QTest::newRow("superscript two") << Key{0, plain, QString(QChar(0x00B2))};
}

void tst_ControlKeys::otherKeysMeanNothing() {
    QFETCH(const Key, key);
    QCOMPARE(meaning(key).action, KeyAction::None);
}

void tst_ControlKeys::withCommandNoKeyMeansAnything_data() {
    QTest::addColumn<Key>("key");

    QTest::newRow("=") << Key{Qt::Key_Equal, command, "="};
    QTest::newRow("Option =") << Key{Qt::Key_Equal, command | option, "="};
    QTest::newRow("Tab") << Key{Qt::Key_Tab, command, "\t"};
    QTest::newRow("Shift Tab") << Key{Qt::Key_Backtab, command | shift, ""};
    QTest::newRow("right") << Key{Qt::Key_Right, command, ""};
    QTest::newRow("keypad +") << Key{Qt::Key_Plus, command | keypad, "+"};
    QTest::newRow("keypad 5") << Key{Qt::Key_5, command | keypad, "5"};
    QTest::newRow("digit") << Key{Qt::Key_5, command, "5"};
    QTest::newRow("S") << Key{Qt::Key_S, command, "\x13"};
    QTest::newRow("Return") << Key{Qt::Key_Return, command, "\r"};
    QTest::newRow("Delete") << Key{Qt::Key_Backspace, command, "\x7f"};
    QTest::newRow("Escape") << Key{Qt::Key_Escape, command, "\x1b"};
}

void tst_ControlKeys::withCommandNoKeyMeansAnything() {
    QFETCH(const Key, key);
    QCOMPARE(meaning(key).action, KeyAction::None);
}

QTEST_GUILESS_MAIN(tst_ControlKeys) // the application object owns the keyboard that the events name
#include "tst_ControlKeys.moc"
