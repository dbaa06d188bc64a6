#include "window/Sheets.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

namespace {

const SheetText newCueText{
    .message = "Enter new cue number", .informativeText = {}, .fieldLabel = "Cue number"};
const SheetText loadText{
    .message = "Load Configuration", .informativeText = "Tour & <b>Co</b>", .fieldLabel = "Universe offset"};

QStringList shownTexts(const QDialog& sheet) {
    QStringList texts;
    for (const QLabel* label : sheet.findChildren<QLabel*>()) {
        texts.append(label->text());
    }
    return texts;
}

QPushButton* button(const QDialog& sheet, QDialogButtonBox::StandardButton which) {
    return sheet.findChild<QDialogButtonBox*>()->button(which);
}

} // namespace

class tst_Sheets : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aSheetSaysWhatItAsksFor();
    void aConfigurationsNameIsShownAsItIs();
    void anOverlongNameIsCut();
    void theFieldHasTheKeysAtOnce();
    void okIsTheDefaultButton();
    void onlyItsWindowWaits();

    void okHandsTheTextOverAsTyped_data();
    void okHandsTheTextOverAsTyped();
    void okHandsTheNumberOver_data();
    void okHandsTheNumberOver();
    void aNumberThatIsTakenAwayAgainIsZero_data();
    void aNumberThatIsTakenAwayAgainIsZero();
    void everyNumberSheetStartsAtZero();
    void aNumberIsReadTheSameInEveryLocale();
    void cancellingHandsNothingOver_data();
    void cancellingHandsNothingOver();

    void aSecondSheetBringsTheFirstToTheFront();
    void theAnswerMayOpenTheNextSheet();
    void aQuestionIsAnsweredByItsButton();
    void aReportIsOnlyRead();
    void aSheetGoesWhenItIsAnswered();
    void aSheetGoesWithItsWindow();

private:
    QDialog* openText() {
        return openTextSheet(*window_, newCueText, [this](const QString& text) { texts_.append(text); });
    }
    QDialog* openNumber() {
        return openNumberSheet(*window_, loadText, [this](int number) { numbers_.append(number); });
    }

    std::unique_ptr<QWidget> window_;
    QStringList texts_;
    QList<int> numbers_;
};

void tst_Sheets::init() {
    texts_.clear();
    numbers_.clear();
    window_ = std::make_unique<QWidget>();
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void tst_Sheets::cleanup() {
    window_.reset();
    QLocale::setDefault(QLocale::c());
}

void tst_Sheets::aSheetSaysWhatItAsksFor() {
    QCOMPARE(shownTexts(*openText()), (QStringList{"Enter new cue number", "Cue number"}));
}

void tst_Sheets::aConfigurationsNameIsShownAsItIs() {
    const QDialog* const sheet = openNumber();
    QCOMPARE(shownTexts(*sheet), (QStringList{"Load Configuration", "Tour & <b>Co</b>", "Universe offset"}));
    for (const QLabel* label : sheet->findChildren<QLabel*>()) {
        QVERIFY(label->text() == "Universe offset" || label->textFormat() == Qt::PlainText);
    }
}

void tst_Sheets::anOverlongNameIsCut() {
    const SheetText text{
        .message = "Load Configuration", .informativeText = QString(10000, u'x'), .fieldLabel = {}};
    const QDialog* const sheet = openNumberSheet(*window_, text, [](int) {});
    QCOMPARE(shownTexts(*sheet).at(1), QString(200, u'x') + u'…');
}

void tst_Sheets::theFieldHasTheKeysAtOnce() {
    QDialog* const sheet = openText();
    QTRY_COMPARE(QApplication::activeWindow(), sheet);
    QVERIFY(sheet->findChild<QLineEdit*>()->hasFocus());
    sheet->reject();
    QDialog* const number = openNumber();
    QTRY_COMPARE(QApplication::activeWindow(), number);
    QVERIFY(number->findChild<QSpinBox*>()->hasFocus());
}

void tst_Sheets::okIsTheDefaultButton() {
    const QDialog* const sheet = openText();
    QVERIFY(button(*sheet, QDialogButtonBox::Ok)->isDefault());
    QVERIFY(!button(*sheet, QDialogButtonBox::Cancel)->isDefault());
}

void tst_Sheets::onlyItsWindowWaits() {
    QWidget fixtureWindow;
    QLineEdit field(&fixtureWindow);
    QLineEdit waiting(window_.get());
    waiting.show();
    fixtureWindow.show();
    QDialog* const sheet = openText();
    QCOMPARE(sheet->windowModality(), Qt::WindowModal);
    QCOMPARE(sheet->parentWidget(), window_.get());
    fixtureWindow.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&fixtureWindow));
    QTest::mouseClick(fixtureWindow.windowHandle(), Qt::LeftButton, {}, field.geometry().center());
    QVERIFY(field.hasFocus());
    QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, {}, waiting.geometry().center());
    QVERIFY(!waiting.hasFocus());
}

void tst_Sheets::okHandsTheTextOverAsTyped_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("byKey");

    QTest::newRow("a number, Return") << "2.5" << true;
    QTest::newRow("a number, OK") << "2.5" << false;
    QTest::newRow("blanks around") << " 2 " << true;
    QTest::newRow("no number") << "A&B" << true;
    QTest::newRow("nothing") << "" << true;
}

void tst_Sheets::okHandsTheTextOverAsTyped() {
    QFETCH(const QString, typed);
    QFETCH(const bool, byKey);

    QDialog* const sheet = openText();
    auto* const field = sheet->findChild<QLineEdit*>();
    QCOMPARE(field->text(), QString());
    QTest::keyClicks(field, typed);
    QCOMPARE(texts_, QStringList());
    if (byKey) {
        QTest::keyClick(field, Qt::Key_Return);
    } else {
        QTest::mouseClick(button(*sheet, QDialogButtonBox::Ok), Qt::LeftButton);
    }
    QCOMPARE(texts_, QStringList{typed});
    QVERIFY(!sheet->isVisible());
}

void tst_Sheets::okHandsTheNumberOver_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("number");

    QTest::newRow("nothing typed") << QString() << 0;
    QTest::newRow("digits") << "2" << 2;
    QTest::newRow("negative") << "-3" << -3;
    QTest::newRow("no number") << "two" << 0;
    QTest::newRow("a sign alone") << "-" << 0;
    QTest::newRow("the largest") << "2147483647" << 2147483647;
    QTest::newRow("the smallest") << "-2147483648" << -2147483647 - 1;
    QTest::newRow("a digit too many does not go in") << "21474836470" << 2147483647;
}

void tst_Sheets::okHandsTheNumberOver() {
    QFETCH(const QString, typed);
    QFETCH(const int, number);

    QDialog* const sheet = openNumber();
    auto* const field = sheet->findChild<QSpinBox*>();
    QTest::keyClicks(field, typed);
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(numbers_, QList<int>{number});
    QVERIFY(!sheet->isVisible());
}

void tst_Sheets::aNumberThatIsTakenAwayAgainIsZero_data() {
    QTest::addColumn<QString>("left");

    QTest::newRow("nothing is left") << "";
    QTest::newRow("a sign is left") << "-";
}

void tst_Sheets::aNumberThatIsTakenAwayAgainIsZero() {
    QFETCH(const QString, left);

    auto* const field = openNumber()->findChild<QSpinBox*>();
    QTest::keyClicks(field, "12");
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, left);
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(numbers_, QList<int>{0});
}

void tst_Sheets::everyNumberSheetStartsAtZero() {
    QDialog* const first = openNumber();
    QTest::keyClicks(first->findChild<QSpinBox*>(), "7");
    first->accept();
    QDialog* const second = openNumber();
    QVERIFY(second != first);
    QCOMPARE(second->findChild<QSpinBox*>()->value(), 0);
    second->accept();
    QCOMPARE(numbers_, (QList<int>{7, 0}));
}

void tst_Sheets::aNumberIsReadTheSameInEveryLocale() {
    // Digits and the minus sign of their own.
    for (const auto language : {QLocale::Arabic, QLocale::Persian, QLocale::Swedish, QLocale::German}) {
        QLocale::setDefault(QLocale(language));
        QDialog* const sheet = openNumber();
        auto* const field = sheet->findChild<QSpinBox*>();
        QCOMPARE(field->text(), QString("0"));
        QTest::keyClicks(field, "-1234");
        QCOMPARE(field->text(), QString("-1234"));
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(numbers_.takeLast(), -1234);
    }
}

void tst_Sheets::cancellingHandsNothingOver_data() {
    QTest::addColumn<bool>("number");
    QTest::addColumn<QString>("way");

    for (const bool number : {false, true}) {
        const QByteArray kind = number ? "number" : "text";
        QTest::newRow(kind + ", Escape") << number << "Escape";
        QTest::newRow(kind + ", Cancel") << number << "Cancel";
        QTest::newRow(kind + ", closed") << number << "close";
    }
}

void tst_Sheets::cancellingHandsNothingOver() {
    QFETCH(const bool, number);
    QFETCH(const QString, way);

    QDialog* const sheet = number ? openNumber() : openText();
    QTest::keyClicks(sheet->focusWidget(), "7");
    if (way == "Escape") {
        QTest::keyClick(sheet, Qt::Key_Escape);
    } else if (way == "Cancel") {
        QTest::mouseClick(button(*sheet, QDialogButtonBox::Cancel), Qt::LeftButton);
    } else {
        sheet->close();
    }
    QVERIFY(!sheet->isVisible());
    QCOMPARE(texts_, QStringList());
    QCOMPARE(numbers_, QList<int>());
}

void tst_Sheets::aSecondSheetBringsTheFirstToTheFront() {
    QWidget fixtureWindow;
    QDialog* const first = openText();
    QTest::keyClicks(first->findChild<QLineEdit*>(), "2");
    fixtureWindow.show();
    fixtureWindow.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&fixtureWindow));

    QCOMPARE(openText(), first);
    QTRY_COMPARE(QApplication::activeWindow(), first);
    QCOMPARE(openNumber(), first);
    QCOMPARE(window_->findChildren<QDialog*>().size(), 1);
    QCOMPARE(first->findChild<QLineEdit*>()->text(), QString("2"));
    first->accept();
    QCOMPARE(texts_, QStringList{"2"});
    QCOMPARE(numbers_, QList<int>());
}

void tst_Sheets::theAnswerMayOpenTheNextSheet() {
    QPointer<QDialog> next;
    QDialog* const first =
        openTextSheet(*window_, newCueText, [this, &next](const QString&) { next = openNumber(); });
    first->accept();
    QVERIFY(next);
    QVERIFY(next != first);
    QVERIFY(next->isVisible());
    next->accept();
    QCOMPARE(numbers_, QList<int>{0});
}

void tst_Sheets::aQuestionIsAnsweredByItsButton() {
    int answers = 0;
    const SheetText text{.message = "Remove?", .informativeText = "Spot\nWash", .fieldLabel = {}};
    QDialog* sheet = openQuestionSheet(*window_, text, "Remove", [&] { ++answers; });
    QCOMPARE(shownTexts(*sheet), (QStringList{"Remove?", "Spot", "Wash"}));
    QTest::keyClick(sheet, Qt::Key_Escape);
    QCOMPARE(answers, 0);
    sheet = openQuestionSheet(*window_, text, "Remove", [&] { ++answers; });
    QTest::keyClick(sheet, Qt::Key_Return);
    QCOMPARE(answers, 1);
}

void tst_Sheets::aReportIsOnlyRead() {
    QDialog* const sheet = openReportSheet(
        *window_, {.message = "Imported", .informativeText = {}, .fieldLabel = {}}, {"One", "<b>Two</b>"});
    auto* const lines = sheet->findChild<QPlainTextEdit*>();
    QCOMPARE(lines->toPlainText(), QString("One\n<b>Two</b>"));
    QVERIFY(lines->isReadOnly());
    QTest::keyClick(sheet, Qt::Key_Return);
    QVERIFY(!sheet->isVisible());
}

void tst_Sheets::aSheetGoesWhenItIsAnswered() {
    const QPointer<QDialog> accepted = openText();
    accepted->accept();
    QTRY_VERIFY(!accepted);
    const QPointer<QDialog> rejected = openText();
    rejected->reject();
    QTRY_VERIFY(!rejected);
}

void tst_Sheets::aSheetGoesWithItsWindow() {
    const QPointer<QDialog> sheet = openText();
    window_.reset();
    QVERIFY(!sheet);
    QCOMPARE(texts_, QStringList());
}

QTEST_MAIN(tst_Sheets)
#include "tst_Sheets.moc"
