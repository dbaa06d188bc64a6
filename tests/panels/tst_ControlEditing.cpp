#include "TestPanel.h"
#include "support/TestClock.h"

#include <QLabel>
#include <QTest>

#include <array>
#include <memory>

namespace {

constexpr std::uint64_t Second = 1'000'000'000;

using SlotArray = std::array<std::uint8_t, 512>;

QLabel* fieldIn(const QWidget& view) {
    return view.findChild<QLabel*>("gEditView");
}

// What the entry field shows in a view; null when it is not there.
QString shownIn(const QWidget& view) {
    const QLabel* const field = fieldIn(view);
    return field && field->isVisible() ? field->text() : QString();
}

// Keys as the window system sends them: to the window, which knows who has the focus.
void type(const QWidget& window, const char* characters) {
    for (const char* character = characters; *character; ++character) {
        QTest::keyClick(window.windowHandle(), *character);
    }
}

void press(const QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(window.windowHandle(), key, modifiers);
}

} // namespace

/// Faders in the window in front, edited by the keyboard.
class tst_ControlEditing : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aTypedLevelFadesOverTheControlsTime();
    void aTypedLevelWithoutATimeIsTakenAtOnce();
    void aTypedLevelBeyondTheMaximumIsTheMaximum();
    void aNumberEndedWithSIsTheFadeTime_data();
    void aNumberEndedWithSIsTheFadeTime();
    void sixDigitsApplyNothing();
    void sWithNothingTypedMakesTheNextNumberATime();
    void theTimeModeBelongsToOneControl();
    void aTypedTimeRedrawsTheTint();
    void thePresentLevelTypedAgainLeavesARunningFade();
    void endEditTellsWhetherALevelWasApplied();

    void rightAndLeftStepWithinTheRange_data();
    void rightAndLeftStepWithinTheRange();
    void stepsAreImmediateAndRedrawn();
    void aStepDuringAFadeIsOverwrittenByIt();
    void aLevelBeyondItsRangeIsNotSteppedFurther();
    void equalFadesBackToTheDefault();
    void optionEqualClearsTheTime();
    void equalDropsTheTypedNumber();
    void commandCombinationsBelongToTheMenus_data();
    void commandCombinationsBelongToTheMenus();
    void keysWithoutAMeaningArePassedOn();

    void theFieldShowsWhatIsTyped();
    void theFieldIsWhiteOnBlueWithoutBorder();
    void theFieldStandsAboveTheRightEnd();
    void deleteTakesTheLastCharacterAndThenTheField();
    void deleteWithNothingTypedHidesNothingNew();
    void escapeDropsTheTypedNumber();
    void aSingleCharacterMoreThanSixIsNotShown();

    void tabAndShiftTabBothGoForward();
    void theSelectionWrapsAround();
    void downAndUpGoForwardAndBackward();
    void dummiesAreSkipped();
    void aLoneControlStaysSelected();
    void movingOnAppliesTheTypedNumber_data();
    void movingOnAppliesTheTypedNumber();

private:
    std::unique_ptr<TestPanel> panel_;
    DMXControl* pan_ = nullptr;  // 8 bit
    DMXControl* tilt_ = nullptr; // 16 bit
    DMXControl* zoom_ = nullptr;
};

void tst_ControlEditing::init() {
    panel_ = std::make_unique<TestPanel>(
        QVariantList{labelEntry("Position"), controlEntry("Pan"), wideEntry("Tilt", 1000),
                     QVariantMap{{"blank", qlonglong{1}}}, controlEntry("Zoom", 50)});
    pan_ = &panel_->fader("Pan");
    tilt_ = &panel_->fader("Tilt");
    zoom_ = &panel_->fader("Zoom");
    QVERIFY(panel_->bringToFront());
    panel_->view().select(*pan_);
    QVERIFY(panel_->hasKeys(*pan_));
}

void tst_ControlEditing::cleanup() {
    panel_.reset();
}

void tst_ControlEditing::aTypedLevelFadesOverTheControlsTime() {
    TestClock clock(0);
    SlotArray levels{};
    pan_->setTime(2);
    type(panel_->view(), "128");
    press(panel_->view(), Qt::Key_Return);
    QCOMPARE(pan_->value(), 0U);
    clock.set(Second);
    pan_->updateDMX(levels);
    QCOMPARE(pan_->value(), 64U);
    clock.set(3 * Second);
    pan_->updateDMX(levels);
    QCOMPARE(pan_->value(), 128U);
    QCOMPARE(pan_->time(), 2.0F);
}

void tst_ControlEditing::aTypedLevelWithoutATimeIsTakenAtOnce() {
    type(panel_->view(), "128");
    press(panel_->view(), Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(pan_->value(), 128U);
}

void tst_ControlEditing::aTypedLevelBeyondTheMaximumIsTheMaximum() {
    type(panel_->view(), "300");
    press(panel_->view(), Qt::Key_Return);
    QCOMPARE(pan_->value(), 255U);
    panel_->view().select(*tilt_);
    type(panel_->view(), "99999");
    press(panel_->view(), Qt::Key_Return);
    QCOMPARE(tilt_->value(), 65535U);
}

void tst_ControlEditing::aNumberEndedWithSIsTheFadeTime_data() {
    QTest::addColumn<QByteArray>("characters");
    QTest::addColumn<float>("seconds");

    QTest::newRow("2.5s") << QByteArray("2.5s") << 2.5F;
    QTest::newRow("2.5S") << QByteArray("2.5S") << 2.5F;
    QTest::newRow("0s") << QByteArray("0s") << 0.0F;
    QTest::newRow("a point alone is no time") << QByteArray(".s") << 7.0F;
    QTest::newRow("six characters are no time") << QByteArray("2.5000s") << 7.0F;
}

void tst_ControlEditing::aNumberEndedWithSIsTheFadeTime() {
    QFETCH(const QByteArray, characters);
    pan_->setTime(7);
    pan_->setValue(9);
    type(panel_->view(), characters.constData());
    QTEST(pan_->time(), "seconds");
    QCOMPARE(pan_->value(), 9U);
    QVERIFY(!pan_->fade().running());
    QVERIFY(!fieldIn(panel_->view()));
}

void tst_ControlEditing::sixDigitsApplyNothing() {
    pan_->setTime(2);
    type(panel_->view(), "000128");
    press(panel_->view(), Qt::Key_Return);
    QCOMPARE(pan_->value(), 0U);
    QVERIFY(!pan_->fade().running());
    QVERIFY(!fieldIn(panel_->view()));
    type(panel_->view(), "12");
    QCOMPARE(shownIn(panel_->view()), "12");
}

void tst_ControlEditing::sWithNothingTypedMakesTheNextNumberATime() {
    type(panel_->view(), "s");
    press(panel_->view(), Qt::Key_Escape);
    type(panel_->view(), "3");
    press(panel_->view(), Qt::Key_Return);
    QCOMPARE(pan_->time(), 3.0F);
    QCOMPARE(pan_->value(), 0U);
    pan_->setTime(0);
    type(panel_->view(), "3");
    press(panel_->view(), Qt::Key_Return);
    QCOMPARE(pan_->value(), 3U);
    QCOMPARE(pan_->time(), 0.0F);
}

void tst_ControlEditing::theTimeModeBelongsToOneControl() {
    type(panel_->view(), "s");
    panel_->view().select(*tilt_);
    type(panel_->view(), "7");
    press(panel_->view(), Qt::Key_Return);
    QCOMPARE(tilt_->value(), 7U);
    panel_->view().select(*pan_);
    type(panel_->view(), "8");
    press(panel_->view(), Qt::Key_Return);
    QCOMPARE(pan_->time(), 8.0F);
}

void tst_ControlEditing::aTypedTimeRedrawsTheTint() {
    const auto paints = panel_->paintsOf(*pan_);
    paints->take();
    pan_->setTime(0);
    type(panel_->view(), "2");
    paints->take();
    type(panel_->view(), "s");
    QCOMPARE(pan_->time(), 2.0F);
    QVERIFY(paints->take() > 0);
}

void tst_ControlEditing::thePresentLevelTypedAgainLeavesARunningFade() {
    TestClock clock(0);
    SlotArray levels{};
    pan_->setDMXValue(200, 2);
    clock.set(Second);
    pan_->updateDMX(levels);
    type(panel_->view(), "100");
    press(panel_->view(), Qt::Key_Return);
    QVERIFY(pan_->fade().running());
    clock.set(3 * Second);
    pan_->updateDMX(levels);
    QCOMPARE(pan_->value(), 200U);
}

void tst_ControlEditing::endEditTellsWhetherALevelWasApplied() {
    QVERIFY(!pan_->endEdit());
    type(panel_->view(), "12");
    QVERIFY(pan_->endEdit());
    QVERIFY(!pan_->endEdit()); // it is the present level by now
    press(panel_->view(), Qt::Key_Escape);
    type(panel_->view(), "s3");
    QVERIFY(!pan_->endEdit());
    QCOMPARE(pan_->time(), 3.0F);
}

void tst_ControlEditing::rightAndLeftStepWithinTheRange_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<quint32>("from");
    QTest::addColumn<quint32>("to");

    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const Qt::KeyboardModifiers keypad = Qt::KeypadModifier;
    QTest::newRow("right at 0") << Qt::Key_Right << none << 0U << 1U;
    QTest::newRow("right at 254") << Qt::Key_Right << none << 254U << 255U;
    QTest::newRow("right at 255") << Qt::Key_Right << none << 255U << 255U;
    QTest::newRow("keypad + at 254") << Qt::Key_Plus << keypad << 254U << 255U;
    QTest::newRow("keypad + at 255") << Qt::Key_Plus << keypad << 255U << 255U;
    QTest::newRow("left at 255") << Qt::Key_Left << none << 255U << 254U;
    QTest::newRow("left at 1") << Qt::Key_Left << none << 1U << 0U;
    QTest::newRow("left at 0") << Qt::Key_Left << none << 0U << 0U;
    QTest::newRow("keypad - at 1") << Qt::Key_Minus << keypad << 1U << 0U;
    QTest::newRow("keypad - at 0") << Qt::Key_Minus << keypad << 0U << 0U;
}

void tst_ControlEditing::rightAndLeftStepWithinTheRange() {
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const quint32, from);
    pan_->setValue(from);
    press(panel_->view(), key, modifiers);
    QTEST(pan_->value(), "to");
}

void tst_ControlEditing::stepsAreImmediateAndRedrawn() {
    pan_->setTime(5);
    const auto paints = panel_->paintsOf(*pan_);
    paints->take();
    press(panel_->view(), Qt::Key_Right);
    QCOMPARE(pan_->value(), 1U);
    QVERIFY(!pan_->fade().running());
    QCOMPARE(paints->take(), 1);
    pan_->setValue(255);
    paints->take();
    press(panel_->view(), Qt::Key_Right);
    QCOMPARE(paints->take(), 0);
}

void tst_ControlEditing::aStepDuringAFadeIsOverwrittenByIt() {
    TestClock clock(0);
    SlotArray levels{};
    pan_->setDMXValue(200, 2);
    press(panel_->view(), Qt::Key_Right);
    QCOMPARE(pan_->value(), 1U);
    clock.set(Second);
    pan_->updateDMX(levels);
    QCOMPARE(pan_->value(), 100U);
}

void tst_ControlEditing::aLevelBeyondItsRangeIsNotSteppedFurther() {
    pan_->setValue(300);
    press(panel_->view(), Qt::Key_Right);
    QCOMPARE(pan_->value(), 300U);
    press(panel_->view(), Qt::Key_Left);
    QCOMPARE(pan_->value(), 299U);
}

void tst_ControlEditing::equalFadesBackToTheDefault() {
    TestClock clock(0);
    SlotArray levels{};
    panel_->view().select(*zoom_);
    zoom_->setValue(250);
    zoom_->setTime(2);
    press(panel_->view(), Qt::Key_Equal);
    QCOMPARE(zoom_->value(), 250U);
    clock.set(Second);
    zoom_->updateDMX(levels);
    QCOMPARE(zoom_->value(), 150U);
    QCOMPARE(zoom_->time(), 2.0F);
    zoom_->setTime(0);
    press(panel_->view(), Qt::Key_Equal);
    QCOMPARE(zoom_->value(), 50U);
}

void tst_ControlEditing::optionEqualClearsTheTime() {
    pan_->setValue(9);
    pan_->setTime(4);
    const auto paints = panel_->paintsOf(*pan_);
    paints->take();
    press(panel_->view(), Qt::Key_Equal, Qt::AltModifier);
    QCOMPARE(pan_->time(), 0.0F);
    QCOMPARE(pan_->value(), 9U);
    QVERIFY(paints->take() > 0);
}

void tst_ControlEditing::equalDropsTheTypedNumber() {
    for (const Qt::KeyboardModifiers modifiers : {Qt::NoModifier, Qt::AltModifier}) {
        type(panel_->view(), "12");
        press(panel_->view(), Qt::Key_Equal, modifiers);
        QVERIFY(!fieldIn(panel_->view()));
        press(panel_->view(), Qt::Key_Return);
        QCOMPARE(pan_->value(), 0U);
    }
}

void tst_ControlEditing::commandCombinationsBelongToTheMenus_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("=") << Qt::Key_Equal;
    QTest::newRow("right") << Qt::Key_Right;
    QTest::newRow("Tab") << Qt::Key_Tab;
    QTest::newRow("down") << Qt::Key_Down;
    QTest::newRow("Delete") << Qt::Key_Backspace;
    QTest::newRow("Escape") << Qt::Key_Escape;
    QTest::newRow("digit") << Qt::Key_5;
    QTest::newRow("S") << Qt::Key_S;
    QTest::newRow("Return") << Qt::Key_Return;
}

void tst_ControlEditing::commandCombinationsBelongToTheMenus() {
    QFETCH(const Qt::Key, key);
    type(panel_->view(), "12");
    QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier);
    QCoreApplication::sendEvent(&panel_->view(), &event);
    QVERIFY(!event.isAccepted());
    QCOMPARE(shownIn(panel_->view()), "12");
    QCOMPARE(pan_->value(), 0U);
    QCOMPARE(panel_->fixture().selectedControl(), pan_);
    press(panel_->view(), Qt::Key_Return);
    QCOMPARE(pan_->value(), 12U);
}

void tst_ControlEditing::keysWithoutAMeaningArePassedOn() {
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, "x");
    QCoreApplication::sendEvent(&panel_->view(), &letter);
    QVERIFY(!letter.isAccepted());
    QKeyEvent digit(QEvent::KeyPress, Qt::Key_5, Qt::NoModifier, "5");
    QCoreApplication::sendEvent(&panel_->view(), &digit);
    QVERIFY(digit.isAccepted());
}

void tst_ControlEditing::theFieldShowsWhatIsTyped() {
    QVERIFY(!fieldIn(panel_->view()));
    type(panel_->view(), "1");
    QCOMPARE(shownIn(panel_->view()), "1");
    type(panel_->view(), "2.");
    QCOMPARE(shownIn(panel_->view()), "12.");
    press(panel_->view(), Qt::Key_Return);
    QVERIFY(!fieldIn(panel_->view()));
}

void tst_ControlEditing::theFieldIsWhiteOnBlueWithoutBorder() {
    type(panel_->view(), "1");
    QLabel* const field = fieldIn(panel_->view());
    QVERIFY(field);
    const QImage image = field->grab().toImage();
    for (int x = 0; x < image.width(); ++x) {
        QCOMPARE(image.pixel(x, 0), qRgb(0, 0, 255));
        QCOMPARE(image.pixel(x, image.height() - 1), qRgb(0, 0, 255));
    }
    QCOMPARE(field->palette().color(QPalette::WindowText), QColor(255, 255, 255));
    QCOMPARE(field->alignment(), Qt::AlignCenter);
    QCOMPARE(field->textInteractionFlags() & Qt::TextEditable, Qt::NoTextInteraction);
}

void tst_ControlEditing::theFieldStandsAboveTheRightEnd() {
    type(panel_->view(), "1");
    QCOMPARE(fieldIn(panel_->view())->geometry(),
             QRect(100, 6, 45, 18)); // the control is at 0, 19 and 150 wide
    panel_->view().select(*tilt_);
    QVERIFY(!fieldIn(panel_->view()));
    type(panel_->view(), "1");
    QCOMPARE(fieldIn(panel_->view())->geometry(), QRect(100, 25, 45, 18));
}

void tst_ControlEditing::deleteTakesTheLastCharacterAndThenTheField() {
    type(panel_->view(), "12");
    press(panel_->view(), Qt::Key_Backspace);
    QCOMPARE(shownIn(panel_->view()), "1");
    press(panel_->view(), Qt::Key_Backspace);
    QVERIFY(!fieldIn(panel_->view()));
}

void tst_ControlEditing::deleteWithNothingTypedHidesNothingNew() {
    press(panel_->view(), Qt::Key_Backspace);
    QVERIFY(!fieldIn(panel_->view()));
    type(panel_->view(), "1");
    QCOMPARE(shownIn(panel_->view()), "1");
}

void tst_ControlEditing::escapeDropsTheTypedNumber() {
    type(panel_->view(), "12");
    press(panel_->view(), Qt::Key_Escape);
    QVERIFY(!fieldIn(panel_->view()));
    press(panel_->view(), Qt::Key_Return);
    QCOMPARE(pan_->value(), 0U);
}

void tst_ControlEditing::aSingleCharacterMoreThanSixIsNotShown() {
    type(panel_->view(), "1234567");
    QCOMPARE(shownIn(panel_->view()), "123456");
    press(panel_->view(), Qt::Key_Backspace);
    QCOMPARE(shownIn(panel_->view()), "12345");
}

void tst_ControlEditing::tabAndShiftTabBothGoForward() {
    press(panel_->view(), Qt::Key_Tab);
    QCOMPARE(panel_->fixture().selectedControl(), tilt_);
    QVERIFY(panel_->hasKeys(*tilt_));
    press(panel_->view(), Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(panel_->fixture().selectedControl(), zoom_);
    press(panel_->view(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(panel_->fixture().selectedControl(), pan_);
}

void tst_ControlEditing::theSelectionWrapsAround() {
    panel_->view().select(*zoom_);
    press(panel_->view(), Qt::Key_Down);
    QCOMPARE(panel_->fixture().selectedControl(), pan_);
    press(panel_->view(), Qt::Key_Up);
    QCOMPARE(panel_->fixture().selectedControl(), zoom_);
}

void tst_ControlEditing::downAndUpGoForwardAndBackward() {
    press(panel_->view(), Qt::Key_Down);
    QCOMPARE(panel_->fixture().selectedControl(), tilt_);
    press(panel_->view(), Qt::Key_Up);
    QCOMPARE(panel_->fixture().selectedControl(), pan_);
}

void tst_ControlEditing::dummiesAreSkipped() {
    panel_->view().select(*tilt_);
    press(panel_->view(), Qt::Key_Down); // over the blank
    QCOMPARE(panel_->fixture().selectedControl(), zoom_);
    press(panel_->view(), Qt::Key_Down); // over the label
    QCOMPARE(panel_->fixture().selectedControl(), pan_);
}

void tst_ControlEditing::aLoneControlStaysSelected() {
    TestPanel lone({controlEntry("Only"), labelEntry("Label")}, "Lone");
    DMXControl& only = lone.fader("Only");
    QVERIFY(lone.bringToFront());
    lone.view().select(only);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Up}) {
        type(lone.view(), "7");
        press(lone.view(), key);
        QCOMPARE(lone.fixture().selectedControl(), &only);
        QVERIFY(lone.hasKeys(only));
        QCOMPARE(only.value(), 7U);
        QVERIFY(!fieldIn(lone.view()));
    }
}

void tst_ControlEditing::movingOnAppliesTheTypedNumber_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Tab") << Qt::Key_Tab;
    QTest::newRow("down") << Qt::Key_Down;
    QTest::newRow("up") << Qt::Key_Up;
}

void tst_ControlEditing::movingOnAppliesTheTypedNumber() {
    QFETCH(const Qt::Key, key);
    const auto paints = panel_->paintsOf(*pan_);
    type(panel_->view(), "200");
    paints->take();
    press(panel_->view(), key);
    QCOMPARE(pan_->value(), 200U);
    QVERIFY(paints->take() > 0);
    QVERIFY(panel_->fixture().selectedControl() != pan_);
    QVERIFY(!fieldIn(panel_->view()));
}

QTEST_MAIN(tst_ControlEditing)
#include "tst_ControlEditing.moc"
