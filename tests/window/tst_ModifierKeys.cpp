#include "window/ModifierKeys.h"

#include <QGuiApplication>
#include <QTest>

namespace {

Qt::KeyboardModifiers gHeld;

} // namespace

class tst_ModifierKeys : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { setModifierKeys(nullptr); }

    void optionIsHeldWhateverElseIs_data();
    void optionIsHeldWhateverElseIs();
    void itIsReadAnewEachTime();
    void theReadingThatStoodThereComesBack();
};

void tst_ModifierKeys::optionIsHeldWhateverElseIs_data() {
    QTest::addColumn<Qt::KeyboardModifiers>("held");
    QTest::addColumn<bool>("option");

    QTest::newRow("no key") << Qt::KeyboardModifiers() << false;
    QTest::newRow("Option") << Qt::KeyboardModifiers(Qt::AltModifier) << true;
    QTest::newRow("Option and Command") << (Qt::AltModifier | Qt::ControlModifier) << true;
    QTest::newRow("Command") << Qt::KeyboardModifiers(Qt::ControlModifier) << false;
    QTest::newRow("Shift and Command") << (Qt::ShiftModifier | Qt::ControlModifier) << false;
    QTest::newRow("the other Alt key") << Qt::KeyboardModifiers(Qt::GroupSwitchModifier) << false;
}

void tst_ModifierKeys::optionIsHeldWhateverElseIs() {
    QFETCH(const Qt::KeyboardModifiers, held);
    QFETCH(const bool, option);

    gHeld = held;
    setModifierKeys([] { return gHeld; });
    QCOMPARE(optionKeyIsHeld(), option);
}

void tst_ModifierKeys::itIsReadAnewEachTime() {
    setModifierKeys([] { return gHeld; });
    gHeld = Qt::AltModifier;
    QVERIFY(optionKeyIsHeld());
    gHeld = Qt::NoModifier;
    QVERIFY(!optionKeyIsHeld());
}

void tst_ModifierKeys::theReadingThatStoodThereComesBack() {
    const ModifierKeys always = [] { return Qt::KeyboardModifiers(Qt::AltModifier); };
    const ModifierKeys keyboard = setModifierKeys(always);
    QVERIFY(optionKeyIsHeld());
    QVERIFY(setModifierKeys(keyboard) == always);
    QVERIFY(!optionKeyIsHeld()); // nobody holds a key on a display that has none
    setModifierKeys(always);
    QVERIFY(setModifierKeys(nullptr) == always);
    QVERIFY(!optionKeyIsHeld());
}

QTEST_MAIN(tst_ModifierKeys)
#include "tst_ModifierKeys.moc"
