#include "controls/DMXControl.h"
#include "controls/EditView.h"
#include "controls/TestView.h"
#include "support/PaintCount.h"

#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include <memory>

namespace {

constexpr QRgb orange = qRgb(255, 128, 0);

QString shownIn(const QWidget& view) {
    const auto* const field = view.findChild<QLabel*>("gEditView");
    return field && field->isVisible() ? field->text() : QString();
}

void type(const QWidget& window, const char* characters) {
    for (const char* character = characters; *character; ++character) {
        QTest::keyClick(window.windowHandle(), *character);
    }
}

bool isOutlined(const DMXControl& control) {
    const QImage image = control.parentWidget()->grab(control.geometry()).toImage();
    return image.pixel(0, 0) == orange && image.pixel(149, 18) == orange;
}

} // namespace

/// Which fader is selected, which of two windows its keys come from, and where the entry field stands
/// meanwhile.
class tst_ControlFocus : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aClickSelects();
    void aDummyIsNeverSelected();
    void aSelectionRedrawsBothControls();
    void aControlIsSelectedWhileItsWindowIsNotInFront();
    void aControlIsSelectedBeforeItsWindowIsShown();
    void selectingAnotherControlDropsTheTypedNumber();
    void selectingTheSameControlAgainKeepsTheTypedNumber();

    void onlyTheWindowInFrontShowsTheOutline();
    void theOutlineIsRedrawnWhenItsWindowComesAndGoes();
    void anUnselectedControlHasNoOutline();

    void aHalfTypedNumberSurvivesAnotherWindow();
    void aHalfTypedNumberSurvivesAMenu();
    void aHalfTypedNumberSurvivesWhateverOnlyBorrowsTheKeys_data();
    void aHalfTypedNumberSurvivesWhateverOnlyBorrowsTheKeys();
    void aHalfTypedNumberIsDroppedForAnotherWidgetOfTheWindow();

    void theFieldIsTheSameInEveryFixture();
    void theFieldComesBackWithItsNumber();
    void theFieldLeavesAFixtureThatGoesAwayInMidEntry();
    void theFieldStaysWithTheOtherFixture();
    void aSuperviewThatTakesTheFieldWithItDoesNoHarm();
    void aReleasedFieldIsMadeAnew();
    void onlyTheOwnerHidesTheField();

    void aFixtureGoesAwayInMidEntryAndTheNextOneIsEdited();
    void aControlWithoutAViewIsNotSelected();

private:
    std::unique_ptr<TestView> view_;
    DMXControl* pan_ = nullptr;
    DMXControl* tilt_ = nullptr;
};

void tst_ControlFocus::init() {
    view_ = std::make_unique<TestView>("Spot 1");
    pan_ = &view_->addFader("Pan");
    view_->add({{"label", "Label"}});
    tilt_ = &view_->addFader("Tilt");
    QVERIFY(view_->bringToFront());
}

void tst_ControlFocus::cleanup() {
    view_.reset();
    DMXControl::reset();
    EditView::release();
}

void tst_ControlFocus::aClickSelects() {
    QCOMPARE(view_->selectedControl(), nullptr);
    QTest::mouseClick(view_->windowHandle(), Qt::LeftButton, {}, QPoint(20, 45));
    QCOMPARE(view_->selectedControl(), tilt_);
    QVERIFY(tilt_->hasFocus());
    QCOMPARE(tilt_->value(), 0U);
}

void tst_ControlFocus::aDummyIsNeverSelected() {
    pan_->makeFirstResponder();
    QTest::mouseClick(view_->windowHandle(), Qt::LeftButton, {}, QPoint(20, 25));
    QCOMPARE(view_->selectedControl(), pan_);
    QVERIFY(pan_->hasFocus());
    QVERIFY(!view_->controls().at(1)->hasFocus());
}

void tst_ControlFocus::aSelectionRedrawsBothControls() {
    pan_->makeFirstResponder();
    PaintCount pan(*pan_);
    PaintCount tilt(*tilt_);
    pan.take();
    tilt.take();
    tilt_->makeFirstResponder();
    QVERIFY(pan.take() > 0);
    QVERIFY(tilt.take() > 0);
    tilt_->makeFirstResponder();
    QCOMPARE(pan.take(), 0);
}

void tst_ControlFocus::aControlIsSelectedWhileItsWindowIsNotInFront() {
    pan_->makeFirstResponder();
    TestView other("Spot 2");
    QVERIFY(other.bringToFront());
    tilt_->makeFirstResponder();
    QCOMPARE(view_->selectedControl(), tilt_);
    QVERIFY(!tilt_->hasFocus());
    QVERIFY(view_->bringToFront());
    type(*view_, "7\r");
    QCOMPARE(tilt_->value(), 7U);
    QCOMPARE(pan_->value(), 0U);
    QVERIFY(isOutlined(*tilt_));
    QVERIFY(!isOutlined(*pan_));
}

void tst_ControlFocus::aControlIsSelectedBeforeItsWindowIsShown() {
    TestView other("Spot 2");
    DMXControl& zoom = other.addFader("Zoom");
    zoom.makeFirstResponder();
    QCOMPARE(other.selectedControl(), &zoom);
    QVERIFY(other.bringToFront());
    type(other, "7\r");
    QCOMPARE(zoom.value(), 7U);
}

void tst_ControlFocus::selectingAnotherControlDropsTheTypedNumber() {
    pan_->makeFirstResponder();
    type(*view_, "12");
    tilt_->makeFirstResponder();
    QVERIFY(shownIn(*view_).isNull());
    pan_->makeFirstResponder();
    type(*view_, "\r");
    QCOMPARE(pan_->value(), 0U);
    QCOMPARE(tilt_->value(), 0U);
}

void tst_ControlFocus::selectingTheSameControlAgainKeepsTheTypedNumber() {
    pan_->makeFirstResponder();
    type(*view_, "12");
    QTest::mouseClick(view_->windowHandle(), Qt::LeftButton, {}, QPoint(20, 5));
    QCOMPARE(shownIn(*view_), "12");
}

void tst_ControlFocus::onlyTheWindowInFrontShowsTheOutline() {
    TestView other("Spot 2");
    DMXControl& zoom = other.addFader("Zoom");
    pan_->makeFirstResponder();
    QVERIFY(isOutlined(*pan_));
    QVERIFY(other.bringToFront());
    zoom.makeFirstResponder();
    QVERIFY(isOutlined(zoom));
    QVERIFY(!isOutlined(*pan_));
    QCOMPARE(view_->selectedControl(), pan_);
    QVERIFY(view_->bringToFront());
    QVERIFY(isOutlined(*pan_));
    QVERIFY(!isOutlined(zoom));
}

void tst_ControlFocus::theOutlineIsRedrawnWhenItsWindowComesAndGoes() {
    TestView other("Spot 2");
    other.addFader("Zoom");
    pan_->makeFirstResponder();
    PaintCount paints(*pan_);
    paints.take();
    QVERIFY(other.bringToFront());
    QVERIFY(paints.take() > 0);
    QVERIFY(view_->bringToFront());
    QVERIFY(paints.take() > 0);
}

void tst_ControlFocus::anUnselectedControlHasNoOutline() {
    pan_->makeFirstResponder();
    QVERIFY(!isOutlined(*tilt_));
    tilt_->makeFirstResponder();
    QVERIFY(!isOutlined(*pan_));
}

void tst_ControlFocus::aHalfTypedNumberSurvivesAnotherWindow() {
    QLineEdit other;
    pan_->makeFirstResponder();
    type(*view_, "12");
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QVERIFY(!pan_->hasFocus());
    QCOMPARE(shownIn(*view_), "12");
    type(other, "99");
    QVERIFY(view_->bringToFront());
    type(*view_, "8\r");
    QCOMPARE(pan_->value(), 128U);
}

void tst_ControlFocus::aHalfTypedNumberSurvivesAMenu() {
    pan_->makeFirstResponder();
    type(*view_, "12");
    QMenu menu;
    menu.addAction("Cue 1");
    menu.popup(view_->mapToGlobal(QPoint(10, 10)));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    QCOMPARE(shownIn(*view_), "12");
    menu.close();
    QCOMPARE(shownIn(*view_), "12");
    type(*view_, "8\r");
    QCOMPARE(pan_->value(), 128U);
}

void tst_ControlFocus::aHalfTypedNumberSurvivesWhateverOnlyBorrowsTheKeys_data() {
    QTest::addColumn<Qt::FocusReason>("reason");
    QTest::addColumn<QString>("shown");

    QTest::newRow("another window") << Qt::ActiveWindowFocusReason << "12";
    QTest::newRow("a popup") << Qt::PopupFocusReason << "12";
    QTest::newRow("the menu bar") << Qt::MenuBarFocusReason << "12";
    QTest::newRow("a click") << Qt::MouseFocusReason << QString();
    QTest::newRow("Tab") << Qt::TabFocusReason << QString();
    QTest::newRow("a shortcut") << Qt::ShortcutFocusReason << QString();
    QTest::newRow("anything else") << Qt::OtherFocusReason << QString();
}

void tst_ControlFocus::aHalfTypedNumberSurvivesWhateverOnlyBorrowsTheKeys() {
    QFETCH(const Qt::FocusReason, reason);
    pan_->makeFirstResponder();
    type(*view_, "12");
    QFocusEvent event(QEvent::FocusOut, reason);
    QCoreApplication::sendEvent(pan_, &event);
    QTEST(shownIn(*view_), "shown");
}

void tst_ControlFocus::aHalfTypedNumberIsDroppedForAnotherWidgetOfTheWindow() {
    QLineEdit edit(view_.get());
    edit.show();
    pan_->makeFirstResponder();
    type(*view_, "12");
    edit.setFocus(Qt::MouseFocusReason);
    QVERIFY(shownIn(*view_).isNull());
    QVERIFY(!isOutlined(*pan_));
    QCOMPARE(pan_->value(), 0U);
}

void tst_ControlFocus::theFieldIsTheSameInEveryFixture() {
    TestView other("Spot 2");
    DMXControl& zoom = other.addFader("Zoom");
    pan_->makeFirstResponder();
    type(*view_, "12");
    const QLabel* const field = view_->findChild<QLabel*>("gEditView");
    QVERIFY(other.bringToFront());
    zoom.makeFirstResponder();
    type(other, "3");
    QCOMPARE(other.findChild<QLabel*>("gEditView"), field);
    QCOMPARE(shownIn(other), "3");
    QVERIFY(shownIn(*view_).isNull());
}

void tst_ControlFocus::theFieldComesBackWithItsNumber() {
    TestView other("Spot 2");
    DMXControl& zoom = other.addFader("Zoom");
    pan_->makeFirstResponder();
    type(*view_, "12");
    QVERIFY(other.bringToFront());
    zoom.makeFirstResponder();
    type(other, "3");
    QVERIFY(view_->bringToFront());
    QCOMPARE(shownIn(*view_), "12");
    QVERIFY(shownIn(other).isNull());
    type(*view_, "8\r");
    QCOMPARE(pan_->value(), 128U);
    QVERIFY(other.bringToFront());
    QCOMPARE(shownIn(other), "3");
    type(other, "\r");
    QCOMPARE(zoom.value(), 3U);
}

void tst_ControlFocus::theFieldLeavesAFixtureThatGoesAwayInMidEntry() {
    pan_->makeFirstResponder();
    type(*view_, "12");
    QVERIFY(EditView::isShownBy(pan_));
    view_.reset();
    QVERIFY(!EditView::isShownBy(pan_));
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        QVERIFY(!window->isVisible());
    }
}

void tst_ControlFocus::theFieldStaysWithTheOtherFixture() {
    TestView other("Spot 2");
    DMXControl& zoom = other.addFader("Zoom");
    pan_->makeFirstResponder();
    type(*view_, "12");
    QVERIFY(other.bringToFront());
    zoom.makeFirstResponder();
    type(other, "3");
    view_.reset(); // its number is half typed too, but the field is elsewhere
    QCOMPARE(shownIn(other), "3");
}

void tst_ControlFocus::aSuperviewThatTakesTheFieldWithItDoesNoHarm() {
    const QWidget owner;
    {
        QWidget superview;
        EditView::show(&owner, &superview, QRect(0, 0, 45, 18), "12");
        QVERIFY(EditView::isShownBy(&owner));
    }
    QVERIFY(!EditView::isShownBy(&owner));
    EditView::hide(&owner);
    QWidget superview;
    EditView::show(&owner, &superview, QRect(1, 2, 45, 18), "3");
    QCOMPARE(superview.findChild<QLabel*>("gEditView")->text(), "3");
    EditView::hide(&owner);
}

void tst_ControlFocus::aReleasedFieldIsMadeAnew() {
    pan_->makeFirstResponder();
    type(*view_, "12");
    EditView::release();
    EditView::release();
    QVERIFY(shownIn(*view_).isNull());
    type(*view_, "8");
    QCOMPARE(shownIn(*view_), "128");
}

void tst_ControlFocus::onlyTheOwnerHidesTheField() {
    pan_->makeFirstResponder();
    type(*view_, "12");
    EditView::hide(tilt_);
    QCOMPARE(shownIn(*view_), "12");
    EditView::hide(pan_);
    QVERIFY(shownIn(*view_).isNull());
}

void tst_ControlFocus::aFixtureGoesAwayInMidEntryAndTheNextOneIsEdited() {
    pan_->makeFirstResponder();
    type(*view_, "12");
    view_.reset();
    DMXControl::reset();
    TestView next("Spot 1");
    DMXControl& pan = next.addFader("Pan");
    QVERIFY(next.bringToFront());
    pan.makeFirstResponder();
    type(next, "7");
    QCOMPARE(shownIn(next), "7");
    type(next, "\r");
    QCOMPARE(pan.value(), 7U);
}

// It may still stand in the registry, where cues and stored selections find it.
void tst_ControlFocus::aControlWithoutAViewIsNotSelected() {
    const std::shared_ptr<DMXControl> pan = view_->controls().front();
    pan->makeFirstResponder();
    view_.reset();
    pan->makeFirstResponder();
    QVERIFY(!pan->isVisible());
    QVERIFY(!pan->hasFocus());
    pan->setDMXValue(9, 0);
    QCOMPARE(pan->value(), 9U);
}

QTEST_MAIN(tst_ControlFocus)
#include "tst_ControlFocus.moc"
