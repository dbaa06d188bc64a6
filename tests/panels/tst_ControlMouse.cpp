#include "TestPanel.h"
#include "support/TestClock.h"

#include <QTest>
#include <QWheelEvent>

#include <array>
#include <memory>

namespace {

constexpr std::uint64_t Second = 1'000'000'000;

} // namespace

/// Faders moved by mouse and wheel.
class tst_ControlMouse : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aDragAcrossTheWholeWidthSpansTheWholeRange_data();
    void aDragAcrossTheWholeWidthSpansTheWholeRange();
    void aDragMovesFromTheLevelItBeganAt();
    void aDragEndsWithTheButton();
    void aSecondDragStartsAnew();
    void aDragIsImmediateAndRedrawn();
    void aDragDuringAFadeIsOverwrittenByIt();
    void otherButtonsDoNotDrag();
    void aDummyIsNotDragged();
    void movesWithoutAButtonDoNothing();
    void aFixtureGoesAwayInMidDrag();
    void aViewGoesAwayInMidDrag();

    void theWheelMovesTheLevel_data();
    void theWheelMovesTheLevel();
    void theWheelSelectsItsControl();
    void theWheelIsImmediateAndRedrawnOnlyOnAChange();
    void theWheelKeepsTheTypedNumberOfTheSelectedControl();
    void aDummyPassesTheWheelOn();

private:
    void press(QPoint place) { QTest::mousePress(panel_->view().windowHandle(), Qt::LeftButton, {}, place); }
    void moveTo(QPoint place) { QTest::mouseMove(panel_->view().windowHandle(), place); }
    // A move that comes although no button is held, as after a grab that was lost.
    void sendMove(QPointF place) {
        QMouseEvent event(QEvent::MouseMove, place, place, panel_->view().mapToGlobal(place), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&panel_->view(), &event);
    }
    // In eighths of a degree: 120 is one notch. True when something took it.
    bool turnWheel(const DMXControl& control, int angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QPointF place = panel_->middleOf(control);
        QWheelEvent event(place, panel_->view().mapToGlobal(place), QPoint(), QPoint(0, angle), Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&panel_->view(), &event);
        return event.isAccepted();
    }
    void release(QPoint place) {
        QTest::mouseRelease(panel_->view().windowHandle(), Qt::LeftButton, {}, place);
    }

    std::unique_ptr<TestPanel> panel_;
    DMXControl* pan_ = nullptr;  // 8 bit, rows 0 to 18
    DMXControl* tilt_ = nullptr; // 16 bit, rows 38 to 56, below a label
};

void tst_ControlMouse::init() {
    panel_ = std::make_unique<TestPanel>(
        QVariantList{controlEntry("Pan"), labelEntry("Label"), wideEntry("Tilt")});
    pan_ = &panel_->fader("Pan");
    tilt_ = &panel_->fader("Tilt");
    QVERIFY(panel_->bringToFront());
}

void tst_ControlMouse::cleanup() {
    panel_.reset();
}

void tst_ControlMouse::aDragAcrossTheWholeWidthSpansTheWholeRange_data() {
    QTest::addColumn<bool>("sixteenBits");
    QTest::addColumn<quint32>("from");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<quint32>("to");

    QTest::newRow("8 bit, the whole width") << false << 0U << 150 << 255U;
    QTest::newRow("8 bit, half the width") << false << 0U << 75 << 127U;
    QTest::newRow("8 bit, one pixel") << false << 0U << 1 << 1U;
    QTest::newRow("8 bit, beyond the range") << false << 200U << 100 << 255U;
    QTest::newRow("8 bit, back over the whole width") << false << 255U << -150 << 0U;
    QTest::newRow("8 bit, back by one pixel") << false << 255U << -1 << 253U;
    QTest::newRow("8 bit, below the range") << false << 10U << -100 << 0U;
    QTest::newRow("8 bit, from beyond the range") << false << 300U << 1 << 255U;
    QTest::newRow("16 bit, the whole width") << true << 0U << 150 << 65535U;
    QTest::newRow("16 bit, one pixel") << true << 0U << 1 << 436U;
    QTest::newRow("16 bit, back over the whole width") << true << 65535U << -150 << 0U;
}

void tst_ControlMouse::aDragAcrossTheWholeWidthSpansTheWholeRange() {
    QFETCH(const bool, sixteenBits);
    QFETCH(const quint32, from);
    QFETCH(const int, pixels);
    DMXControl& control = sixteenBits ? *tilt_ : *pan_;
    const QPoint start(pixels > 0 ? 0 : 149, panel_->middleOf(control).y());
    control.setValue(from);
    press(start);
    QCOMPARE(control.value(), from);
    moveTo(start + QPoint(pixels, 0));
    release(start + QPoint(pixels, 0));
    QTEST(control.value(), "to");
}

void tst_ControlMouse::aDragMovesFromTheLevelItBeganAt() {
    pan_->setValue(100);
    press(QPoint(60, 9));
    moveTo(QPoint(90, 9));
    QCOMPARE(pan_->value(), 151U);
    moveTo(QPoint(60, 9));
    QCOMPARE(pan_->value(), 100U);
    moveTo(QPoint(60, 300)); // up and down does not matter
    QCOMPARE(pan_->value(), 100U);
    moveTo(QPoint(30, 9));
    QCOMPARE(pan_->value(), 49U);
    release(QPoint(30, 9));
}

void tst_ControlMouse::aDragEndsWithTheButton() {
    press(QPoint(0, 9));
    moveTo(QPoint(15, 9));
    release(QPoint(15, 9));
    QCOMPARE(pan_->value(), 25U);
    moveTo(QPoint(100, 9));
    QCOMPARE(pan_->value(), 25U);
    sendMove(QPointF(100, 9));
    QCOMPARE(pan_->value(), 25U);
}

void tst_ControlMouse::aSecondDragStartsAnew() {
    press(QPoint(0, 9));
    moveTo(QPoint(30, 9));
    release(QPoint(30, 9));
    QCOMPARE(pan_->value(), 51U);
    press(QPoint(100, 9));
    QCOMPARE(pan_->value(), 51U);
    moveTo(QPoint(130, 9));
    release(QPoint(130, 9));
    QCOMPARE(pan_->value(), 102U);
}

void tst_ControlMouse::aDragIsImmediateAndRedrawn() {
    pan_->setTime(5);
    press(QPoint(0, 9));
    const auto paints = panel_->paintsOf(*pan_);
    paints->take();
    moveTo(QPoint(30, 9));
    QCOMPARE(pan_->value(), 51U);
    QVERIFY(!pan_->fade().running());
    QVERIFY(paints->take() > 0);
    release(QPoint(30, 9));
}

void tst_ControlMouse::aDragDuringAFadeIsOverwrittenByIt() {
    TestClock clock(0);
    std::array<std::uint8_t, 512> levels{};
    pan_->setDMXValue(200, 2);
    press(QPoint(0, 9));
    moveTo(QPoint(30, 9));
    QCOMPARE(pan_->value(), 51U);
    clock.set(Second);
    pan_->updateDMX(levels);
    QCOMPARE(pan_->value(), 100U);
    release(QPoint(30, 9));
}

void tst_ControlMouse::otherButtonsDoNotDrag() {
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        QTest::mousePress(panel_->view().windowHandle(), button, {}, QPoint(0, 9));
        moveTo(QPoint(100, 9));
        QTest::mouseRelease(panel_->view().windowHandle(), button, {}, QPoint(100, 9));
        QCOMPARE(pan_->value(), 0U);
    }
}

void tst_ControlMouse::aDummyIsNotDragged() {
    DMXControl& label = panel_->fader(1);
    press(QPoint(0, 28));
    moveTo(QPoint(100, 28));
    release(QPoint(100, 28));
    QCOMPARE(label.value(), 0U);
    QCOMPARE(pan_->value(), 0U);
    QCOMPARE(tilt_->value(), 0U);
}

void tst_ControlMouse::movesWithoutAButtonDoNothing() {
    moveTo(QPoint(10, 9));
    moveTo(QPoint(100, 9));
    QCOMPARE(pan_->value(), 0U);
    sendMove(QPointF(100, 9));
    QCOMPARE(pan_->value(), 0U);
}

void tst_ControlMouse::aFixtureGoesAwayInMidDrag() {
    press(QPoint(0, 9));
    moveTo(QPoint(30, 9));
    QCOMPARE(pan_->value(), 51U);
    panel_.reset();
    TestPanel next({controlEntry("Pan")});
    QVERIFY(next.bringToFront());
    QTest::mouseMove(next.view().windowHandle(), QPoint(100, 9));
    QTest::mouseRelease(next.view().windowHandle(), Qt::LeftButton, {}, QPoint(100, 9));
    QCOMPARE(next.fader("Pan").value(), 0U);
}

void tst_ControlMouse::aViewGoesAwayInMidDrag() {
    press(QPoint(0, 9));
    moveTo(QPoint(30, 9));
    panel_->closeView();
    QCOMPARE(pan_->value(), 51U);
    ControlView next(panel_->fixture(), panel_->editView());
    next.show();
    next.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&next));
    QTest::mouseMove(next.windowHandle(), QPoint(100, 9));
    QTest::mouseRelease(next.windowHandle(), Qt::LeftButton, {}, QPoint(100, 9));
    QCOMPARE(pan_->value(), 51U);
}

void tst_ControlMouse::theWheelMovesTheLevel_data() {
    QTest::addColumn<quint32>("from");
    QTest::addColumn<int>("angle");
    QTest::addColumn<bool>("command");
    QTest::addColumn<quint32>("to");

    QTest::newRow("one notch") << 0U << 120 << false << 1U;
    QTest::newRow("three notches") << 0U << 360 << false << 3U;
    QTest::newRow("one notch back") << 10U << -120 << false << 9U;
    QTest::newRow("half a notch counts tenfold") << 0U << 60 << false << 5U;
    QTest::newRow("half a notch back counts tenfold") << 10U << -60 << false << 5U;
    QTest::newRow("just less than a notch") << 0U << 119 << false << 9U;
    QTest::newRow("a notch and a half is truncated") << 0U << 180 << false << 1U;
    QTest::newRow("a notch and a half back is truncated") << 10U << -180 << false << 9U;
    QTest::newRow("too little to be a step") << 10U << 11 << false << 10U;
    QTest::newRow("nothing") << 10U << 0 << false << 10U;
    QTest::newRow("with Command") << 0U << 120 << true << 200U;
    QTest::newRow("with Command, to the maximum") << 200U << 120 << true << 255U;
    QTest::newRow("with Command, half a notch") << 0U << 60 << true << 255U;
    QTest::newRow("with Command, back to 0") << 199U << -120 << true << 0U;
    QTest::newRow("at the maximum") << 255U << 120 << false << 255U;
    QTest::newRow("at 0") << 0U << -120 << false << 0U;
    QTest::newRow("up beyond the range") << 300U << 120 << false << 300U;
    QTest::newRow("down from beyond the range") << 300U << -120 << false << 299U;
    QTest::newRow("as far as there are numbers") << 7U << 2147483640 << true << 255U;
    QTest::newRow("as far back as there are numbers") << 7U << -2147483640 << true << 0U;
}

void tst_ControlMouse::theWheelMovesTheLevel() {
    QFETCH(const quint32, from);
    QFETCH(const int, angle);
    QFETCH(const bool, command);
    pan_->setValue(from);
    QVERIFY(turnWheel(*pan_, angle, command ? Qt::ControlModifier : Qt::NoModifier));
    QTEST(pan_->value(), "to");
}

void tst_ControlMouse::theWheelSelectsItsControl() {
    panel_->view().select(*pan_);
    turnWheel(*tilt_, 60, Qt::ControlModifier);
    QCOMPARE(panel_->fixture().selectedControl(), tilt_);
    QVERIFY(panel_->hasKeys(*tilt_));
    QCOMPARE(tilt_->value(), 1000U);
    turnWheel(*pan_, 0);
    QCOMPARE(panel_->fixture().selectedControl(), pan_);
}

void tst_ControlMouse::theWheelIsImmediateAndRedrawnOnlyOnAChange() {
    panel_->view().select(*pan_);
    pan_->setTime(5);
    const auto paints = panel_->paintsOf(*pan_);
    paints->take();
    turnWheel(*pan_, 120);
    QCOMPARE(pan_->value(), 1U);
    QVERIFY(!pan_->fade().running());
    QCOMPARE(paints->take(), 1);
    pan_->setValue(255);
    paints->take();
    turnWheel(*pan_, 120);
    QCOMPARE(paints->take(), 0);
}

void tst_ControlMouse::theWheelKeepsTheTypedNumberOfTheSelectedControl() {
    panel_->view().select(*pan_);
    QTest::keyClick(panel_->view().windowHandle(), '9');
    turnWheel(*pan_, 120);
    QTest::keyClick(panel_->view().windowHandle(), '0');
    QTest::keyClick(panel_->view().windowHandle(), Qt::Key_Return);
    QCOMPARE(pan_->value(), 90U);
}

void tst_ControlMouse::aDummyPassesTheWheelOn() {
    panel_->view().select(*pan_);
    const DMXControl& label = panel_->fader(1);
    QVERIFY(!turnWheel(label, 120));
    QCOMPARE(label.value(), 0U);
    QCOMPARE(panel_->fixture().selectedControl(), pan_);
}

QTEST_MAIN(tst_ControlMouse)
#include "tst_ControlMouse.moc"
