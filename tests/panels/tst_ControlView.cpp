#include "panels/ControlView.h"

#include "TestPanel.h"
#include "panels/ControlDrawing.h"
#include "support/TestClock.h"

#include <QHelpEvent>
#include <QPainter>
#include <QTest>
#include <QToolTip>
#include <QWindow>

#include <memory>
#include <tuple>

namespace {

constexpr std::uint64_t Second = 1'000'000'000;
constexpr QRgb background = qRgb(38, 38, 38);
constexpr QRgb orange = qRgb(255, 128, 0);

const QVariantMap blank{{"blank", qlonglong{3}}};

// A fader at the head of a column.
QVariantMap headEntry(const QString& name) {
    QVariantMap entry = controlEntry(name);
    entry["header"] = true;
    return entry;
}

// So many faders, each with a name of its own.
QVariantList manyFaders(int count) {
    QVariantMap fader = controlEntry("#");
    fader["newlayer"] = true;
    QVariantList entries;
    entries.fill(fader, count);
    return entries;
}

// A fader by itself, in its place.
QImage pictureOf(const QSize& size, const QRect& frame, const ControlLook& look) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(background);
    QPainter painter(&image);
    drawControl(painter, frame, look);
    return image;
}

QImage shotOf(ControlView& view) {
    return view.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

// Whether the bar of an 8-bit fader ends between these columns, as seen in its upper row.
bool barEndsBetween(const QImage& image, int y, int first, int last) {
    return image.pixel(first, y) == image.pixel(2, y) && image.pixel(last, y) != image.pixel(2, y);
}

// The window system says that the window can be seen.
void exposeAgain(const QWidget& view) {
    QExposeEvent exposed{QRegion()};
    QCoreApplication::sendEvent(view.windowHandle(), &exposed);
}

// A view that stays on the screen while nobody can see it.
class CoverableView : public ControlView {
public:
    using ControlView::ControlView;
    bool seesLevels() const override { return !isCovered && ControlView::seesLevels(); }

    bool isCovered = false;
};

// What the pointer is told where it rests.
QString tipAt(ControlView& view, QPoint place) {
    QHelpEvent rests(QEvent::ToolTip, place, view.mapToGlobal(place));
    QCoreApplication::sendEvent(&view, &rests);
    return QToolTip::text();
}

} // namespace

class tst_ControlView : public QObject {
    Q_OBJECT

private slots:
    void cleanup();

    void aViewHasTheSizeOfItsFixture();
    void allFadersAreDrawnInTheirPlaces();
    void whatIsHiddenIsNotDrawn();
    void besideTheFadersTheViewIsDark();
    void onlyWhatIsDueIsDrawn();
    void theFaderThatListensIsOutlined();
    void theLargestFixtureIsShownAndTornDown();
    void namesOfAnyLengthAreDrawn();

    void theTooltipIsShownWhereThePointerRests();
    void theTooltipTellsTheFaderUnderThePointer_data();
    void theTooltipTellsTheFaderUnderThePointer();
    void theTooltipFollowsThePatch();
    void besideTheFadersThereIsNoTooltip();
    void theTooltipGoesWhenThePointerLeavesTheFader();

    void aLevelSetAtOnceIsDrawnOnce();
    void thePresentLevelDrawsNothing();
    void onlyAStepThatChangesTheLevelRedraws();
    void aRunningFadeAdvancesAndRedraws();
    void aFadeTimeIsDrawnWhenTheTintChanges();
    void aHiddenLevelThatMovesDrawsNothing();
    void aHiddenFixtureShowsWhatItMissedWhenItComesBack();
    void aViewOutOfSightIsDrawnOnceForAllThatItMissed();
    void aViewOutOfSightMissesWhatAnotherOneShows();
    void aViewThatMissedNothingIsNotDrawnWhenItIsExposed();

    void twoViewsFollowTheSameFixture();
    void oneOfTwoViewsMayBeHidden();
    void aViewThatGoesAwayLeavesTheOtherOneFollowing();
    void aFaderThatIsDraggedWhileAFadeRunsFollowsTheFade();

    void keysSelectAControlWhenNoneIsSelected_data();
    void keysSelectAControlWhenNoneIsSelected();
    void otherKeysSelectNothing();
    void keysThatSelectNothingArePassedOn();
    void aFixtureOfDummiesSelectsNothing();
    void anEmptyFixtureTakesNothing();
    void aFaderOfAnotherFixtureIsNotSelectedByTheWindowThatHasItStored();

private:
    TestPanel& panel(const QVariantList& entries, int universe = 0, int address = 1) {
        panel_ = std::make_unique<TestPanel>(entries, "Spot", universe, address);
        return *panel_;
    }

    std::unique_ptr<TestPanel> panel_;
};

void tst_ControlView::cleanup() {
    QToolTip::hideText();
    panel_.reset();
}

// --- Drawing -------------------------------------------------------------------------------------------

void tst_ControlView::aViewHasTheSizeOfItsFixture() {
    QCOMPARE(panel({labelEntry("Position"), controlEntry("Pan"), blank, headEntry("Dimmer")}).view().size(),
             QSize(300, 38));
}

void tst_ControlView::allFadersAreDrawnInTheirPlaces() {
    TestPanel& shown = panel(
        {labelEntry("Position"), controlEntry("Pan", 100), wideEntry("Tilt", 40000), headEntry("Dimmer")});
    shown.fader("Dimmer").setTime(2);
    QVERIFY(shown.bringToFront());
    const QImage image = shotOf(shown.view());
    const QList<QRect> frames{QRect(0, 0, 150, 19), QRect(0, 19, 150, 19), QRect(0, 38, 150, 19),
                              QRect(150, 0, 150, 19)};
    for (int i = 0; i < 4; ++i) {
        const DMXControl& control = shown.fader(static_cast<std::size_t>(i));
        QCOMPARE(shown.fixture().frameOf(control), frames[i]);
        const QImage alone = pictureOf(image.size(), frames[i], shown.view().look(control));
        QCOMPARE(image.copy(frames[i]), alone.copy(frames[i]));
    }
    QVERIFY(image.copy(frames[0]) != image.copy(frames[1]));
    QVERIFY(image.copy(frames[1]) != image.copy(frames[3]));
}

void tst_ControlView::whatIsHiddenIsNotDrawn() {
    TestPanel& shown = panel({controlEntry("Pan"), blank, controlEntry("Tilt"), headEntry("Dimmer"), blank});
    QVERIFY(shown.bringToFront());
    const QImage image = shotOf(shown.view());
    QCOMPARE(image.size(), QSize(300, 38));
    // Its row is the next one's, or nobody's.
    const QRect tilt = shown.fixture().frameOf(shown.fader("Tilt"));
    QCOMPARE(tilt, QRect(0, 19, 150, 19));
    QCOMPARE(image.copy(tilt),
             pictureOf(image.size(), tilt, shown.view().look(shown.fader("Tilt"))).copy(tilt));
    for (int y = 19; y < 38; ++y) {
        for (int x = 150; x < 300; ++x) {
            QCOMPARE(image.pixel(x, y), background);
        }
    }
}

void tst_ControlView::besideTheFadersTheViewIsDark() {
    TestPanel& shown = panel({controlEntry("1"), controlEntry("2"), headEntry("3")});
    QVERIFY(shown.bringToFront());
    const QImage image = shotOf(shown.view());
    QCOMPARE(image.pixel(225, 30), background);
    QCOMPARE(image.pixel(0, 0), background); // around every fader
    QCOMPARE(image.pixel(149, 18), background);
}

// A view is painted over what stood there: nothing of a former level may be left.
void tst_ControlView::onlyWhatIsDueIsDrawn() {
    TestPanel& shown = panel({controlEntry("Pan", 200), controlEntry("Tilt", 200)});
    QVERIFY(shown.bringToFront());
    QImage image = shotOf(shown.view());
    const QImage before = image;
    shown.fader("Pan").setValue(50);
    shown.fader("Tilt").setValue(50);
    const QRect pan = shown.fixture().frameOf(shown.fader("Pan"));
    shown.view().render(&image, pan.topLeft(), pan, QWidget::DrawWindowBackground);
    QCOMPARE(image.copy(pan), pictureOf(image.size(), pan, shown.view().look(shown.fader("Pan"))).copy(pan));
    const QRect tilt = shown.fixture().frameOf(shown.fader("Tilt"));
    QCOMPARE(image.copy(tilt), before.copy(tilt));
}

void tst_ControlView::theFaderThatListensIsOutlined() {
    TestPanel& shown = panel({controlEntry("Pan"), controlEntry("Tilt")});
    QVERIFY(shown.bringToFront());
    shown.view().select(shown.fader("Tilt"));
    const QImage image = shotOf(shown.view());
    QVERIFY(image.pixel(0, 0) != orange);
    QCOMPARE(image.pixel(0, 19), orange);
    QCOMPARE(image.pixel(149, 37), orange);
}

void tst_ControlView::theLargestFixtureIsShownAndTornDown() {
    TestPanel& shown = panel(manyFaders(8192));
    QVERIFY(shown.bringToFront());
    QCOMPARE(shown.view().size(), QSize(150, 19 * 8192));
    QVERIFY(!shown.view().grab(QRect(0, 0, 150, 19 * 8192)).isNull());
    panel_.reset();
}

void tst_ControlView::namesOfAnyLengthAreDrawn() {
    TestPanel& shown = panel({controlEntry(QString(100'000, 'x'))});
    QVERIFY(shown.bringToFront());
    QVERIFY(!shown.view().grab().isNull());
}

// --- Tips ----------------------------------------------------------------------------------------------

void tst_ControlView::theTooltipIsShownWhereThePointerRests() {
    TestPanel& shown = panel({controlEntry("Pan")}, 2);
    QVERIFY(shown.bringToFront());
    QCOMPARE(tipAt(shown.view(), QPoint(20, 5)), "Univ: 2, Addr: 1");
}

void tst_ControlView::theTooltipTellsTheFaderUnderThePointer_data() {
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<QString>("tip");

    QTest::newRow("a fader") << QPoint(20, 5) << "Univ: 4, Addr: 10";
    QTest::newRow("its last row") << QPoint(149, 18) << "Univ: 4, Addr: 10";
    QTest::newRow("16 bit, after a blank") << QPoint(0, 19) << "Univ: 4, Addr: 14";
    QTest::newRow("a label") << QPoint(20, 40) << "Univ: 4, Addr: 16";
    QTest::newRow("the next column") << QPoint(150, 0) << "Univ: 4, Addr: 16";
}

void tst_ControlView::theTooltipTellsTheFaderUnderThePointer() {
    QFETCH(const QPoint, place);
    TestPanel& shown = panel(
        {controlEntry("Pan"), blank, wideEntry("Tilt"), labelEntry("Beam"), headEntry("Dimmer")}, 4, 10);
    QVERIFY(shown.bringToFront());
    QTEST(tipAt(shown.view(), place), "tip");
}

void tst_ControlView::theTooltipFollowsThePatch() {
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    shown.fixture().setUniverse(6);
    shown.fixture().setAddress(10);
    shown.fixture().rescanControls();
    QCOMPARE(tipAt(shown.view(), QPoint(20, 5)), "Univ: 6, Addr: 10");
}

void tst_ControlView::besideTheFadersThereIsNoTooltip() {
    TestPanel& shown = panel({controlEntry("Pan"), controlEntry("Tilt"), headEntry("Dimmer")});
    QVERIFY(shown.bringToFront());
    QCOMPARE(tipAt(shown.view(), QPoint(20, 5)), "Univ: 0, Addr: 1");
    tipAt(shown.view(), QPoint(170, 25));
    QTRY_VERIFY(!QToolTip::isVisible());
}

void tst_ControlView::theTooltipGoesWhenThePointerLeavesTheFader() {
    TestPanel& shown = panel({controlEntry("Pan"), controlEntry("Tilt")});
    QVERIFY(shown.bringToFront());
    tipAt(shown.view(), QPoint(20, 5));
    QTest::mouseMove(shown.view().windowHandle(), QPoint(30, 10));
    QVERIFY(!QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 400));
    QTest::mouseMove(shown.view().windowHandle(), QPoint(30, 25));
    QTRY_VERIFY(!QToolTip::isVisible());
}

// --- Levels that move ----------------------------------------------------------------------------------

void tst_ControlView::aLevelSetAtOnceIsDrawnOnce() {
    TestPanel& shown = panel({controlEntry("Pan"), controlEntry("Tilt")});
    QVERIFY(shown.bringToFront());
    const auto pan = shown.paintsOf(shown.fader("Pan"));
    const auto tilt = shown.paintsOf(shown.fader("Tilt"));
    pan->take();
    tilt->take();
    shown.fader("Pan").setValue(50);
    shown.rig().tick();
    QCOMPARE(pan->take(), 1);
    shown.fader("Pan").setDMXValue(100, 0);
    shown.rig().tick();
    QCOMPARE(pan->take(), 1);
    QCOMPARE(tilt->take(), 0);
}

void tst_ControlView::thePresentLevelDrawsNothing() {
    TestPanel& shown = panel({controlEntry("Pan", 100)});
    QVERIFY(shown.bringToFront());
    shown.fader("Pan").setTime(3);
    const auto paints = shown.paintsOf(shown.fader("Pan"));
    paints->take();
    shown.fader("Pan").setDMXValue(100, 3);
    shown.fader("Pan").setValue(100);
    shown.rig().tick();
    QCOMPARE(paints->take(), 0);
}

void tst_ControlView::onlyAStepThatChangesTheLevelRedraws() {
    TestClock clock(0);
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    DMXControl& control = shown.fader("Pan");
    control.setDMXValue(10, 10);
    const auto paints = shown.paintsOf(control);
    paints->take();
    clock.set(Second / 2);
    shown.rig().tick();
    QCOMPARE(paints->take(), 0);
    clock.set(Second + 1000);
    shown.rig().tick();
    QCOMPARE(control.value(), 1U);
    QCOMPARE(paints->take(), 1);
    shown.rig().tick();
    QCOMPARE(paints->take(), 0);
}

void tst_ControlView::aRunningFadeAdvancesAndRedraws() {
    TestClock clock(0);
    TestPanel& shown = panel({controlEntry("Pan"), controlEntry("Tilt")});
    QVERIFY(shown.bringToFront());
    const auto pan = shown.paintsOf(shown.fader("Pan"));
    const auto tilt = shown.paintsOf(shown.fader("Tilt"));
    shown.fader("Pan").setDMXValue(200, 2);
    pan->take();
    tilt->take();
    clock.set(Second);
    shown.rig().tick();
    QCOMPARE(shown.fader("Pan").value(), 100U);
    QCOMPARE(pan->take(), 1);
    QCOMPARE(tilt->take(), 0);
    shown.rig().tick();
    QCOMPARE(pan->take(), 0);
}

void tst_ControlView::aFadeTimeIsDrawnWhenTheTintChanges() {
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    const auto paints = shown.paintsOf(shown.fader("Pan"));
    paints->take();
    shown.fader("Pan").setTime(2);
    QCOMPARE(paints->take(), 1);
    shown.fader("Pan").setTime(3);
    QCOMPARE(paints->take(), 0);
    shown.fader("Pan").setTime(0);
    QCOMPARE(paints->take(), 1);
}

void tst_ControlView::aHiddenLevelThatMovesDrawsNothing() {
    TestPanel& shown = panel({controlEntry("Pan"), blank, controlEntry("Tilt")});
    QVERIFY(shown.bringToFront());
    PaintCount paints(shown.view(), shown.view().rect());
    paints.take();
    shown.fader(1).setValue(50);
    QCOMPARE(paints.take(), 0);
}

void tst_ControlView::aHiddenFixtureShowsWhatItMissedWhenItComesBack() {
    TestClock clock(0);
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    shown.view().hide();
    QVERIFY(!shown.view().seesLevels());
    shown.fader("Pan").setDMXValue(200, 2);
    clock.set(Second);
    shown.rig().tick();
    QCOMPARE(shown.fader("Pan").value(), 100U);
    shown.view().show();
    QVERIFY(QTest::qWaitForWindowExposed(&shown.view()));
    QVERIFY(shown.view().seesLevels());
    QVERIFY(barEndsBetween(shotOf(shown.view()), 2, 40, 100));
}

// A window may be out of sight without being hidden, on another desktop for example.
void tst_ControlView::aViewOutOfSightIsDrawnOnceForAllThatItMissed() {
    TestPanel& shown = panel({controlEntry("Pan"), controlEntry("Tilt")});
    CoverableView view(shown.fixture(), shown.editView());
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    PaintCount paints(view, view.rect());
    paints.take();
    view.isCovered = true;
    for (std::uint32_t level = 1; level <= 128; ++level) {
        shown.fader("Pan").setValue(level);
        shown.fader("Tilt").setValue(level);
        shown.rig().tick();
    }
    QCOMPARE(paints.take(), 0);
    view.isCovered = false;
    QCOMPARE(paints.take(), 0);
    exposeAgain(view);
    QCOMPARE(paints.take(), 1);
    exposeAgain(view);
    QCOMPARE(paints.take(), 0);
    QVERIFY(barEndsBetween(shotOf(view), 2, 60, 90));
}

void tst_ControlView::aViewOutOfSightMissesWhatAnotherOneShows() {
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    CoverableView view(shown.fixture(), shown.editView());
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const auto seen = shown.paintsOf(shown.fader("Pan"));
    PaintCount missed(view, view.rect());
    seen->take();
    missed.take();
    view.isCovered = true;
    shown.fader("Pan").setValue(128);
    QCOMPARE(seen->take(), 1);
    QCOMPARE(missed.take(), 0);
    view.isCovered = false;
    exposeAgain(view);
    QCOMPARE(missed.take(), 1);
}

void tst_ControlView::aViewThatMissedNothingIsNotDrawnWhenItIsExposed() {
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    shown.fader("Pan").setValue(7);
    PaintCount paints(shown.view(), shown.view().rect());
    paints.take();
    exposeAgain(shown.view());
    QCOMPARE(paints.take(), 0);
}

// --- Several views -------------------------------------------------------------------------------------

void tst_ControlView::twoViewsFollowTheSameFixture() {
    TestPanel& shown = panel({controlEntry("Pan"), controlEntry("Tilt")});
    QVERIFY(shown.bringToFront());
    ControlView second(shown.fixture(), shown.editView());
    second.show();
    QVERIFY(QTest::qWaitForWindowExposed(&second));
    DMXControl& pan = shown.fader("Pan");
    const auto paints = shown.paintsOf(pan);
    PaintCount paintsToo(second, shown.fixture().frameOf(pan));
    paints->take();
    paintsToo.take();
    pan.setValue(128);
    QCOMPARE(paints->take(), 1);
    QCOMPARE(paintsToo.take(), 1);
    QVERIFY(barEndsBetween(shotOf(shown.view()), 2, 60, 90));
    QVERIFY(barEndsBetween(shotOf(second), 2, 60, 90));
    // Each can be worked.
    const QPoint middle = shown.middleOf(shown.fader("Tilt"));
    QTest::mouseClick(second.windowHandle(), Qt::LeftButton, {}, middle);
    QCOMPARE(shown.view().listener(), &shown.fader("Tilt"));
    QCOMPARE(second.listener(), &shown.fader("Tilt"));
    bool movedToo = false;
    connect(&second, &ControlView::moved, &second, [&] { movedToo = true; });
    shown.fixture().rescanControls();
    QVERIFY(movedToo);
}

void tst_ControlView::oneOfTwoViewsMayBeHidden() {
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    ControlView second(shown.fixture(), shown.editView());
    DMXControl& pan = shown.fader("Pan");
    const auto paints = shown.paintsOf(pan);
    paints->take();
    pan.setValue(128);
    QCOMPARE(paints->take(), 1);
    second.show();
    QVERIFY(QTest::qWaitForWindowExposed(&second));
    QVERIFY(barEndsBetween(shotOf(second), 2, 60, 90));
}

void tst_ControlView::aViewThatGoesAwayLeavesTheOtherOneFollowing() {
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    {
        ControlView second(shown.fixture(), shown.editView());
        second.show();
        QVERIFY(QTest::qWaitForWindowExposed(&second));
    }
    const auto paints = shown.paintsOf(shown.fader("Pan"));
    paints->take();
    shown.fader("Pan").setValue(128);
    QCOMPARE(paints->take(), 1);
}

// The hand has it until the next tick, which goes on where the fade has come to by then.
void tst_ControlView::aFaderThatIsDraggedWhileAFadeRunsFollowsTheFade() {
    TestClock clock(0);
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    DMXControl& pan = shown.fader("Pan");
    QWindow* const window = shown.view().windowHandle();
    pan.setDMXValue(200, 2);
    QTest::mousePress(window, Qt::LeftButton, {}, QPoint(0, 9));
    for (const auto& [time, x, dragged, faded] :
         {std::tuple{Second / 2, 30, 51U, 50U}, std::tuple{Second, 60, 102U, 100U},
          std::tuple{3 * Second, 90, 153U, 200U}}) {
        QTest::mouseMove(window, QPoint(x, 9));
        QCOMPARE(pan.value(), dragged);
        clock.set(time);
        shown.rig().tick();
        QCOMPARE(pan.value(), faded);
        QCOMPARE(shown.rig().engine().slotLevels(0)[0], static_cast<std::uint8_t>(faded));
    }
    // The fade is over: now the hand has it for good, from the level where it took hold.
    QTest::mouseMove(window, QPoint(30, 9));
    clock.advance(Second);
    shown.rig().tick();
    QCOMPARE(pan.value(), 51U);
    QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(30, 9));
}

// --- Keys while no fader is selected -------------------------------------------------------------------

void tst_ControlView::keysSelectAControlWhenNoneIsSelected_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("selected");

    QTest::newRow("Tab") << Qt::Key_Tab << "Pan";
    QTest::newRow("Shift Tab") << Qt::Key_Backtab << "Pan";
    QTest::newRow("down") << Qt::Key_Down << "Pan";
    QTest::newRow("up") << Qt::Key_Up << "Zoom";
}

void tst_ControlView::keysSelectAControlWhenNoneIsSelected() {
    QFETCH(const Qt::Key, key);
    QFETCH(const QString, selected);
    TestPanel& shown = panel({labelEntry("Position"), controlEntry("Pan"), controlEntry("Zoom"), blank});
    QVERIFY(shown.bringToFront());
    QCOMPARE(shown.fixture().selectedControl(), nullptr);
    QTest::keyClick(shown.view().windowHandle(), key);
    QCOMPARE(shown.fixture().selectedControl(), &shown.fader(selected));
    QVERIFY(shown.hasKeys(shown.fader(selected)));
}

void tst_ControlView::otherKeysSelectNothing() {
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    for (const Qt::Key key : {Qt::Key_1, Qt::Key_Right, Qt::Key_Return, Qt::Key_Equal}) {
        QTest::keyClick(shown.view().windowHandle(), key);
    }
    QTest::keyClick(shown.view().windowHandle(), Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(shown.fixture().selectedControl(), nullptr);
    QCOMPARE(shown.fader("Pan").value(), 0U);
}

void tst_ControlView::keysThatSelectNothingArePassedOn() {
    TestPanel& shown = panel({controlEntry("Pan")});
    QVERIFY(shown.bringToFront());
    QKeyEvent digit(QEvent::KeyPress, Qt::Key_5, Qt::NoModifier, "5");
    QCoreApplication::sendEvent(&shown.view(), &digit);
    QVERIFY(!digit.isAccepted());
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QCoreApplication::sendEvent(&shown.view(), &down);
    QVERIFY(down.isAccepted());
}

void tst_ControlView::aFixtureOfDummiesSelectsNothing() {
    TestPanel& shown = panel({labelEntry("Position")});
    QVERIFY(shown.bringToFront());
    QTest::keyClick(shown.view().windowHandle(), Qt::Key_Tab);
    QCOMPARE(shown.fixture().selectedControl(), nullptr);
}

void tst_ControlView::anEmptyFixtureTakesNothing() {
    TestPanel& shown = panel({});
    shown.view().resize(150, 19); // as its window gives it a height
    QVERIFY(shown.bringToFront());
    QTest::keyClick(shown.view().windowHandle(), Qt::Key_Tab);
    QTest::mouseClick(shown.view().windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(shown.fixture().selectedControl(), nullptr);
    QCOMPARE(shotOf(shown.view()).pixel(75, 10), background);
}

// A stored selection may be another fixture's fader, where several share a key.
void tst_ControlView::aFaderOfAnotherFixtureIsNotSelectedByTheWindowThatHasItStored() {
    TestPanel& shown = panel({controlEntry("Pan")});
    TestPanel other(shown, {controlEntry("Zoom"), controlEntry("Focus")}, "Spot 2");
    QVERIFY(other.bringToFront());
    other.view().select(other.fader("Focus"));
    shown.fixture().setSelectedControl(&other.fader("Zoom"));
    QVERIFY(shown.bringToFront());
    QCOMPARE(other.fixture().selectedControl(), &other.fader("Focus"));
    QCOMPARE(shown.view().listener(), nullptr);
    QTest::keyClick(shown.view().windowHandle(), '7');
    QTest::keyClick(shown.view().windowHandle(), Qt::Key_Down);
    QVERIFY(shown.hasKeys(shown.fader("Pan")));
    QCOMPARE(other.fixture().selectedControl(), &other.fader("Focus"));
}

QTEST_MAIN(tst_ControlView)
#include "tst_ControlView.moc"
