#include "window/AddressField.h"

#include <QApplication>
#include <QFocusEvent>
#include <QSignalSpy>
#include <QTest>

class tst_AddressField : public QObject {
    Q_OBJECT

private slots:
    void returnHandsTheTextOver_data();
    void returnHandsTheTextOver();
    void theTextGoesAsTyped_data();
    void theTextGoesAsTyped();
    void withoutReturnNothingIsHandedOver();
    void whatTheTextBecameMayBeShownWhileItIsHandedOver();
    void aLevelTypedAfterReturnMakesNoOtherAddress();
    void aLevelTypedWhenTheWindowComesToTheFrontMakesNoOtherAddress();
    void aClickPutsTheCursorIntoTheText();
};

void tst_AddressField::returnHandsTheTextOver_data() {
    QTest::addColumn<Qt::Key>("key");

    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter on the keypad") << Qt::Key_Enter;
}

void tst_AddressField::returnHandsTheTextOver() {
    QFETCH(const Qt::Key, key);

    AddressField field;
    QSignalSpy handedOver(&field, &AddressField::txChange);
    QTest::keyClicks(&field, "10.0.0.255");
    QTest::keyClick(&field, key);
    QCOMPARE(handedOver.size(), 1);
    QCOMPARE(handedOver.at(0).at(0).toString(), QString("10.0.0.255"));
    QTest::keyClick(&field, key);
    QCOMPARE(handedOver.size(), 2);
}

void tst_AddressField::theTextGoesAsTyped_data() {
    QTest::addColumn<QString>("text");

    QTest::newRow("blanks") << " 10.0.0.1 ";
    QTest::newRow("nothing") << "";
    QTest::newRow("no address") << "somewhere";
}

void tst_AddressField::theTextGoesAsTyped() {
    QFETCH(const QString, text);

    AddressField field;
    QSignalSpy handedOver(&field, &AddressField::txChange);
    QTest::keyClicks(&field, text);
    QTest::keyClick(&field, Qt::Key_Return);
    QCOMPARE(handedOver.size(), 1);
    QCOMPARE(handedOver.at(0).at(0).toString(), text);
}

void tst_AddressField::withoutReturnNothingIsHandedOver() {
    QWidget window;
    auto* const field = new AddressField(&window);
    auto* const other = new QLineEdit(&window);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const QSignalSpy handedOver(field, &AddressField::txChange);
    field->setFocus();
    QTest::keyClicks(field, "10.0.0.255");
    other->setFocus();
    field->setText("10.0.0.1");
    QCOMPARE(handedOver.size(), 0);
}

void tst_AddressField::whatTheTextBecameMayBeShownWhileItIsHandedOver() {
    AddressField field;
    connect(&field, &AddressField::txChange, &field, [&field] { field.setText("10.1.1.1"); });
    QTest::keyClicks(&field, "010.1.1.1");
    QTest::keyClick(&field, Qt::Key_Return);
    QCOMPARE(field.text(), QString("10.1.1.1"));
}

void tst_AddressField::aLevelTypedAfterReturnMakesNoOtherAddress() {
    AddressField field;
    connect(&field, &AddressField::txChange, &field, [&field] { field.setText("127.0.0.1"); });
    QTest::keyClicks(&field, "127.0.0.1");
    QTest::keyClick(&field, Qt::Key_Return);
    QTest::keyClicks(&field, "50");
    QCOMPARE(field.text(), QString("50"));
}

void tst_AddressField::aLevelTypedWhenTheWindowComesToTheFrontMakesNoOtherAddress() {
    AddressField field;
    field.setText("127.0.0.1");
    QFocusEvent windowCame(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&field, &windowCame);
    QTest::keyClicks(&field, "50");
    QCOMPARE(field.text(), QString("50"));
}

void tst_AddressField::aClickPutsTheCursorIntoTheText() {
    AddressField field;
    field.setText("127.0.0.1");
    field.show();
    field.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&field));
    QTest::mouseClick(&field, Qt::LeftButton, {}, QPoint(field.width() - 5, field.height() / 2));
    QTest::keyClicks(&field, "2");
    QCOMPARE(field.text(), QString("127.0.0.12"));
}

QTEST_MAIN(tst_AddressField)
#include "tst_AddressField.moc"
