#include "TestPanel.h"

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

bool isOutlined(TestPanel& panel, const DMXControl& control) {
    const QImage image = panel.view().grab(panel.fixture().frameOf(control)).toImage();
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
    void aFieldThatGoesAwayLeavesItsView();
    void onlyTheOwnerHidesTheField();

    void aFixtureGoesAwayInMidEntryAndTheNextOneIsEdited();
    void aControlWithoutAViewGoesOn();

private:
    std::unique_ptr<TestPanel> panel_;
    DMXControl* pan_ = nullptr;
    DMXControl* tilt_ = nullptr;
};

void tst_ControlFocus::init() {
    panel_ = std::make_unique<TestPanel>(
        QVariantList{controlEntry("Pan"), labelEntry("Label"), controlEntry("Tilt")}, "Spot 1");
    pan_ = &panel_->fader("Pan");
    tilt_ = &panel_->fader("Tilt");
    QVERIFY(panel_->bringToFront());
}

void tst_ControlFocus::cleanup() {
    panel_.reset();
}

void tst_ControlFocus::aClickSelects() {
    QCOMPARE(panel_->fixture().selectedControl(), nullptr);
    QTest::mouseClick(panel_->view().windowHandle(), Qt::LeftButton, {}, QPoint(20, 45));
    QCOMPARE(panel_->fixture().selectedControl(), tilt_);
    QVERIFY(panel_->hasKeys(*tilt_));
    QCOMPARE(tilt_->value(), 0U);
}

void tst_ControlFocus::aDummyIsNeverSelected() {
    panel_->view().select(*pan_);
    QTest::mouseClick(panel_->view().windowHandle(), Qt::LeftButton, {}, QPoint(20, 25));
    QCOMPARE(panel_->fixture().selectedControl(), pan_);
    QVERIFY(panel_->hasKeys(*pan_));
    QVERIFY(!panel_->hasKeys(panel_->fader(1)));
}

void tst_ControlFocus::aSelectionRedrawsBothControls() {
    panel_->view().select(*pan_);
    const auto pan = panel_->paintsOf(*pan_);
    const auto tilt = panel_->paintsOf(*tilt_);
    pan->take();
    tilt->take();
    panel_->view().select(*tilt_);
    QVERIFY(pan->take() > 0);
    QVERIFY(tilt->take() > 0);
    panel_->view().select(*tilt_);
    QCOMPARE(pan->take(), 0);
}

void tst_ControlFocus::aControlIsSelectedWhileItsWindowIsNotInFront() {
    panel_->view().select(*pan_);
    TestPanel other(*panel_, {controlEntry("Zoom")}, "Spot 2");
    QVERIFY(other.bringToFront());
    panel_->view().select(*tilt_);
    QCOMPARE(panel_->fixture().selectedControl(), tilt_);
    QVERIFY(!panel_->hasKeys(*tilt_));
    QVERIFY(panel_->bringToFront());
    type(panel_->view(), "7\r");
    QCOMPARE(tilt_->value(), 7U);
    QCOMPARE(pan_->value(), 0U);
    QVERIFY(isOutlined(*panel_, *tilt_));
    QVERIFY(!isOutlined(*panel_, *pan_));
}

void tst_ControlFocus::aControlIsSelectedBeforeItsWindowIsShown() {
    TestPanel other(*panel_, {controlEntry("Zoom")}, "Spot 2");
    DMXControl& zoom = other.fader("Zoom");
    other.view().select(zoom);
    QCOMPARE(other.fixture().selectedControl(), &zoom);
    QVERIFY(other.bringToFront());
    type(other.view(), "7\r");
    QCOMPARE(zoom.value(), 7U);
}

void tst_ControlFocus::selectingAnotherControlDropsTheTypedNumber() {
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    panel_->view().select(*tilt_);
    QVERIFY(shownIn(panel_->view()).isNull());
    panel_->view().select(*pan_);
    type(panel_->view(), "\r");
    QCOMPARE(pan_->value(), 0U);
    QCOMPARE(tilt_->value(), 0U);
}

void tst_ControlFocus::selectingTheSameControlAgainKeepsTheTypedNumber() {
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    QTest::mouseClick(panel_->view().windowHandle(), Qt::LeftButton, {}, QPoint(20, 5));
    QCOMPARE(shownIn(panel_->view()), "12");
}

void tst_ControlFocus::onlyTheWindowInFrontShowsTheOutline() {
    TestPanel other(*panel_, {controlEntry("Zoom")}, "Spot 2");
    DMXControl& zoom = other.fader("Zoom");
    panel_->view().select(*pan_);
    QVERIFY(isOutlined(*panel_, *pan_));
    QVERIFY(other.bringToFront());
    other.view().select(zoom);
    QVERIFY(isOutlined(other, zoom));
    QVERIFY(!isOutlined(*panel_, *pan_));
    QCOMPARE(panel_->fixture().selectedControl(), pan_);
    QVERIFY(panel_->bringToFront());
    QVERIFY(isOutlined(*panel_, *pan_));
    QVERIFY(!isOutlined(other, zoom));
}

void tst_ControlFocus::theOutlineIsRedrawnWhenItsWindowComesAndGoes() {
    TestPanel other(*panel_, {controlEntry("Zoom")}, "Spot 2");
    panel_->view().select(*pan_);
    const auto paints = panel_->paintsOf(*pan_);
    paints->take();
    QVERIFY(other.bringToFront());
    QVERIFY(paints->take() > 0);
    QVERIFY(panel_->bringToFront());
    QVERIFY(paints->take() > 0);
}

void tst_ControlFocus::anUnselectedControlHasNoOutline() {
    panel_->view().select(*pan_);
    QVERIFY(!isOutlined(*panel_, *tilt_));
    panel_->view().select(*tilt_);
    QVERIFY(!isOutlined(*panel_, *pan_));
}

void tst_ControlFocus::aHalfTypedNumberSurvivesAnotherWindow() {
    QLineEdit other;
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QVERIFY(!panel_->hasKeys(*pan_));
    QCOMPARE(shownIn(panel_->view()), "12");
    type(other, "99");
    QVERIFY(panel_->bringToFront());
    type(panel_->view(), "8\r");
    QCOMPARE(pan_->value(), 128U);
}

void tst_ControlFocus::aHalfTypedNumberSurvivesAMenu() {
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    QMenu menu;
    menu.addAction("Cue 1");
    menu.popup(panel_->view().mapToGlobal(QPoint(10, 10)));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    QCOMPARE(shownIn(panel_->view()), "12");
    menu.close();
    QCOMPARE(shownIn(panel_->view()), "12");
    type(panel_->view(), "8\r");
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
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    QFocusEvent event(QEvent::FocusOut, reason);
    QCoreApplication::sendEvent(&panel_->view(), &event);
    QTEST(shownIn(panel_->view()), "shown");
}

void tst_ControlFocus::aHalfTypedNumberIsDroppedForAnotherWidgetOfTheWindow() {
    QLineEdit edit(&panel_->view());
    edit.show();
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    edit.setFocus(Qt::MouseFocusReason);
    QVERIFY(shownIn(panel_->view()).isNull());
    QVERIFY(!isOutlined(*panel_, *pan_));
    QCOMPARE(pan_->value(), 0U);
}

void tst_ControlFocus::theFieldIsTheSameInEveryFixture() {
    TestPanel other(*panel_, {controlEntry("Zoom")}, "Spot 2");
    DMXControl& zoom = other.fader("Zoom");
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    const QLabel* const field = panel_->view().findChild<QLabel*>("gEditView");
    QVERIFY(other.bringToFront());
    other.view().select(zoom);
    type(other.view(), "3");
    QCOMPARE(other.view().findChild<QLabel*>("gEditView"), field);
    QCOMPARE(shownIn(other.view()), "3");
    QVERIFY(shownIn(panel_->view()).isNull());
}

void tst_ControlFocus::theFieldComesBackWithItsNumber() {
    TestPanel other(*panel_, {controlEntry("Zoom")}, "Spot 2");
    DMXControl& zoom = other.fader("Zoom");
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    QVERIFY(other.bringToFront());
    other.view().select(zoom);
    type(other.view(), "3");
    QVERIFY(panel_->bringToFront());
    QCOMPARE(shownIn(panel_->view()), "12");
    QVERIFY(shownIn(other.view()).isNull());
    type(panel_->view(), "8\r");
    QCOMPARE(pan_->value(), 128U);
    QVERIFY(other.bringToFront());
    QCOMPARE(shownIn(other.view()), "3");
    type(other.view(), "\r");
    QCOMPARE(zoom.value(), 3U);
}

void tst_ControlFocus::theFieldLeavesAFixtureThatGoesAwayInMidEntry() {
    TestPanel other(*panel_, {controlEntry("Zoom")}, "Spot 2");
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    QVERIFY(other.editView().isShownFor(*pan_));
    panel_.reset();
    QVERIFY(!other.editView().isShownFor(*pan_));
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        QVERIFY(!window->isVisible());
    }
}

void tst_ControlFocus::theFieldStaysWithTheOtherFixture() {
    TestPanel other(*panel_, {controlEntry("Zoom")}, "Spot 2");
    DMXControl& zoom = other.fader("Zoom");
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    QVERIFY(other.bringToFront());
    other.view().select(zoom);
    type(other.view(), "3");
    panel_.reset(); // its number is half typed too, but the field is elsewhere
    QCOMPARE(shownIn(other.view()), "3");
}

void tst_ControlFocus::aSuperviewThatTakesTheFieldWithItDoesNoHarm() {
    EditView editView;
    {
        QWidget superview;
        editView.show(*pan_, superview, QRect(0, 0, 45, 18), "12");
        QVERIFY(editView.isShownFor(*pan_));
    }
    QVERIFY(!editView.isShownFor(*pan_));
    editView.hide(*pan_);
    QWidget superview;
    editView.show(*pan_, superview, QRect(1, 2, 45, 18), "3");
    QCOMPARE(superview.findChild<QLabel*>("gEditView")->text(), "3");
    editView.hide(*pan_);
}

void tst_ControlFocus::aFieldThatGoesAwayLeavesItsView() {
    auto editView = std::make_unique<EditView>();
    QWidget superview;
    editView->show(*pan_, superview, QRect(0, 0, 45, 18), "12");
    editView.reset();
    QVERIFY(!superview.findChild<QLabel*>("gEditView"));
}

void tst_ControlFocus::onlyTheOwnerHidesTheField() {
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    panel_->editView().hide(*tilt_);
    QCOMPARE(shownIn(panel_->view()), "12");
    panel_->editView().hide(*pan_);
    QVERIFY(shownIn(panel_->view()).isNull());
}

void tst_ControlFocus::aFixtureGoesAwayInMidEntryAndTheNextOneIsEdited() {
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    const TestPanel keeper(*panel_, {}, "Keeper"); // the rig and its field stay
    panel_.reset();
    TestPanel next(keeper, {controlEntry("Pan")}, "Spot 1");
    DMXControl& pan = next.fader("Pan");
    QVERIFY(next.bringToFront());
    next.view().select(pan);
    type(next.view(), "7");
    QCOMPARE(shownIn(next.view()), "7");
    type(next.view(), "\r");
    QCOMPARE(pan.value(), 7U);
}

// It still stands in the rig, where cues find it.
void tst_ControlFocus::aControlWithoutAViewGoesOn() {
    panel_->view().select(*pan_);
    type(panel_->view(), "12");
    panel_->closeView();
    pan_->setDMXValue(9, 0);
    QCOMPARE(pan_->value(), 9U);
    tilt_->becomeFirstResponder();
    QCOMPARE(panel_->fixture().selectedControl(), tilt_);
}

QTEST_MAIN(tst_ControlFocus)
#include "tst_ControlFocus.moc"
