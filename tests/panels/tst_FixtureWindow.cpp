#include "panels/FixtureWindow.h"

#include "panels/ControlDrawing.h"
#include "panels/FixtureWindows.h"
#include "panels/ScreenPlace.h"
#include "support/PaintCount.h"
#include "support/TestPlaces.h"
#include "support/TestRig.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

#include <memory>

namespace {

// The screen that tests run on: 800 by 800, without a task bar.
constexpr QRect screen(0, 0, 800, 800);

QVariantMap fixture(const QString& name, int controlCount = 3) {
    QVariantList controls;
    for (int number = 1; number <= controlCount; ++number) {
        controls.append(QVariantMap{{"name", QString::number(number)}});
    }
    return {{"name", name}, {"universe", qlonglong{0}}, {"address", qlonglong{1}}, {"profiles", controls}};
}

// Columns of 150 and rows of 19 each.
QVariantMap fixtureOfSize(QSize size) {
    QVariantList controls;
    for (int column = 0; column < size.width() / 150; ++column) {
        for (int row = 0; row < size.height() / 19; ++row) {
            controls.append(
                QVariantMap{{"name", QString("%1 %2").arg(column).arg(row)}, {"header", row == 0}});
        }
    }
    return {{"name", "Large"}, {"universe", qlonglong{0}}, {"address", qlonglong{1}}, {"profiles", controls}};
}

} // namespace

class tst_FixtureWindow : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void theTitleTellsNameUniverseAndAddress_data();
    void theTitleTellsNameUniverseAndAddress();
    void aTitleOfAnyLengthIsShown();
    void theTitleFollowsTheFixture();
    void aWindowHasATitleBarAndNothingElse();
    void aWindowHasTheSizeOfItsView();
    void aWindowCannotBeClosed();

    void aNewWindowStandsInTheMiddleOfTheScreen();
    void aRememberedPlaceWinsOverTheMiddle();
    void theTitleBarOfAFixtureLargerThanTheScreenIsOnIt_data();
    void theTitleBarOfAFixtureLargerThanTheScreenIsOnIt();
    void aPlaceOutsideAllScreensIsMovedOntoOne_data();
    void aPlaceOutsideAllScreensIsMovedOntoOne();
    void aWindowIsMovedIntoAnAreaAsLittleAsItTakes_data();
    void aWindowIsMovedIntoAnAreaAsLittleAsItTakes();
    void aMovedWindowIsRememberedUnderItsName();
    void openingAWindowRemembersNoPlace();

    void theWindowInFrontIsKeyAndNoOther();
    void aWindowThatIsKeyTellsTheLooksOfItsFaders();
    void becomingKeyRedrawsTheSelectedControls();
    void becomingKeyAgainRedrawsNothing();

    void theBackgroundIsDark();

private:
    FixtureWindow& add(const QVariantMap& placement) { return windows_->windowOf(rig_->add(placement)); }

    std::unique_ptr<TestPlaces> places_;
    std::unique_ptr<TestRig> rig_;
    std::unique_ptr<FixtureWindows> windows_;
};

void tst_FixtureWindow::initTestCase() {
    QCOMPARE(QGuiApplication::primaryScreen()->availableGeometry(), screen);
}

void tst_FixtureWindow::init() {
    places_ = std::make_unique<TestPlaces>();
    rig_ = std::make_unique<TestRig>();
    windows_ = std::make_unique<FixtureWindows>(rig_->fixtures(), *places_);
    windows_->open();
}

void tst_FixtureWindow::cleanup() {
    windows_.reset();
    rig_.reset();
}

void tst_FixtureWindow::theTitleTellsNameUniverseAndAddress_data() {
    QTest::addColumn<QVariantMap>("placement");
    QTest::addColumn<QString>("title");

    const auto row = [](const QString& name, qlonglong universe, qlonglong address) {
        return QVariantMap{{"name", name}, {"universe", universe}, {"address", address}};
    };
    QTest::newRow("Spot") << row("Spot", 0, 1) << "Spot Univ: 0 Addr: 1";
    QTest::newRow("address 0") << row("Spot", 12, 0) << "Spot Univ: 12 Addr: 0";
    QTest::newRow("negative numbers") << row("Spot", -1, -7) << "Spot Univ: -1 Addr: -7";
    QTest::newRow("a name like a format") << row("%1 %2 %s", 3, 4) << "%1 %2 %s Univ: 3 Addr: 4";
    QTest::newRow("no name") << QVariantMap{} << " Univ: 0 Addr: 0";
}

void tst_FixtureWindow::theTitleTellsNameUniverseAndAddress() {
    QFETCH(const QVariantMap, placement);
    QTEST(add(placement).windowTitle(), "title");
}

void tst_FixtureWindow::aTitleOfAnyLengthIsShown() {
    const QString title = add(fixture(QString(1'000'000, 'x'))).windowTitle();
    QCOMPARE(title, QString(1024, 'x'));
}

void tst_FixtureWindow::aWindowHasATitleBarAndNothingElse() {
    const Qt::WindowFlags flags = add(fixture("Spot")).windowFlags();
    QCOMPARE(flags & Qt::WindowType_Mask, Qt::Window);
    QVERIFY(flags & Qt::CustomizeWindowHint);
    QVERIFY(flags & Qt::WindowTitleHint);
    QVERIFY(!(flags & (Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint | Qt::WindowSystemMenuHint)));
}

void tst_FixtureWindow::aWindowHasTheSizeOfItsView() {
    const QWidget& window = add(fixture("Spot", 5));
    QCOMPARE(window.size(), QSize(150, 95));
    QCOMPARE(window.minimumSize(), QSize(150, 95));
    QCOMPARE(window.maximumSize(), QSize(150, 95));
    // A window has to have a height.
    QCOMPARE(add(fixture("Empty", 0)).size(), QSize(150, 1));
}

void tst_FixtureWindow::aWindowCannotBeClosed() {
    QWidget& window = add(fixture("Spot"));
    QVERIFY(!window.close());
    QVERIFY(window.isVisible());
    QVERIFY(!QTest::qWaitFor([&] { return !window.isVisible(); }, 50));
}

void tst_FixtureWindow::aNewWindowStandsInTheMiddleOfTheScreen() {
    const QWidget& window = add(fixture("Spot", 4));
    QCOMPARE(window.pos(), QPoint(325, 362)); // 150 by 76 in 800 by 800
}

void tst_FixtureWindow::aRememberedPlaceWinsOverTheMiddle() {
    places_->setPlace("faderhall_window_1", QPoint(30, 40));
    QCOMPARE(add(fixture("A", 4)).pos(), QPoint(325, 362));
    QCOMPARE(add(fixture("B", 4)).pos(), QPoint(30, 40));
}

void tst_FixtureWindow::theTitleBarOfAFixtureLargerThanTheScreenIsOnIt_data() {
    QTest::addColumn<QSize>("contentSize");
    QTest::addColumn<QPoint>("place");

    QTest::newRow("60 rows") << QSize(150, 1140) << QPoint(325, 0);
    QTest::newRow("10 columns") << QSize(1500, 95) << QPoint(0, 352);
    QTest::newRow("both") << QSize(1500, 1140) << QPoint(0, 0);
}

void tst_FixtureWindow::theTitleBarOfAFixtureLargerThanTheScreenIsOnIt() {
    QFETCH(const QSize, contentSize);
    QTEST(add(fixtureOfSize(contentSize)).pos(), "place");
}

void tst_FixtureWindow::aPlaceOutsideAllScreensIsMovedOntoOne_data() {
    QTest::addColumn<QPoint>("place");
    QTest::newRow("left of it") << QPoint(-500, 100);
    QTest::newRow("above it") << QPoint(100, -20);
    QTest::newRow("right of it") << QPoint(5000, 100);
    QTest::newRow("just right of it") << QPoint(800, 100);
    QTest::newRow("below it") << QPoint(100, 5000);
    QTest::newRow("as far as there are numbers") << QPoint(2147483647, -2147483647);
}

void tst_FixtureWindow::aPlaceOutsideAllScreensIsMovedOntoOne() {
    QFETCH(const QPoint, place);
    places_->setPlace("faderhall_window_0", place);
    const QWidget& window = add(fixture("Spot", 4));
    QVERIFY(screen.contains(QRect(window.pos(), QSize(150, 76))));
    QVERIFY(screen.contains(QRect(movedOntoScreen(place, QSize(150, 76)), QSize(150, 76))));
}

void tst_FixtureWindow::aWindowIsMovedIntoAnAreaAsLittleAsItTakes_data() {
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<QPoint>("place");

    QTest::newRow("inside") << QRect(150, 60, 30, 20) << QPoint(150, 60);
    QTest::newRow("in the corner") << QRect(100, 50, 30, 20) << QPoint(100, 50);
    QTest::newRow("at the far corner") << QRect(270, 130, 30, 20) << QPoint(270, 130);
    QTest::newRow("beyond the left") << QRect(-5000, 60, 30, 20) << QPoint(100, 60);
    QTest::newRow("a pixel beyond the right") << QRect(271, 60, 30, 20) << QPoint(270, 60);
    QTest::newRow("beyond both") << QRect(5000, 5000, 30, 20) << QPoint(270, 130);
    QTest::newRow("as large as the area") << QRect(0, 0, 200, 100) << QPoint(100, 50);
    QTest::newRow("larger than the area") << QRect(150, 70, 500, 500) << QPoint(100, 50);
}

void tst_FixtureWindow::aWindowIsMovedIntoAnAreaAsLittleAsItTakes() {
    QFETCH(const QRect, frame);
    QFETCH(const QPoint, place);
    QCOMPARE(movedInto(QRect(100, 50, 200, 100), frame), place);
}

void tst_FixtureWindow::aMovedWindowIsRememberedUnderItsName() {
    add(fixture("A"));
    QWidget& window = add(fixture("B"));
    window.move(12, 34);
    QCoreApplication::processEvents();
    QCOMPARE(places_->place("faderhall_window_1"), std::optional(QPoint(12, 34)));
    QCOMPARE(places_->place("faderhall_window_0"), std::nullopt);
    rig_->fixtures().remove(0, 2);
    QCOMPARE(places_->place("faderhall_window_1"), std::optional(QPoint(12, 34)));
}

void tst_FixtureWindow::openingAWindowRemembersNoPlace() {
    add(fixture("A"));
    QCoreApplication::processEvents();
    QCOMPARE(places_->place("faderhall_window_0"), std::nullopt);
}

void tst_FixtureWindow::theWindowInFrontIsKeyAndNoOther() {
    FixtureWindow& first = add(fixture("A"));
    FixtureWindow& second = add(fixture("B"));
    QVERIFY(QTest::qWaitForWindowActive(&second));
    QVERIFY(!first.isActiveWindow());
    first.makeKey();
    QVERIFY(QTest::qWaitForWindowActive(&first));
    QVERIFY(first.view().hasFocus());
    QVERIFY(!second.isActiveWindow());
    QVERIFY(!second.view().hasFocus());
}

void tst_FixtureWindow::aWindowThatIsKeyTellsTheLooksOfItsFaders() {
    FixtureWindow& first = add(fixture("A"));
    FixtureWindow& second = add(fixture("B"));
    QVERIFY(QTest::qWaitForWindowActive(&second));
    const DMXControl& selected = *first.fixture().controls().at(1);
    first.view().select(*first.fixture().controls().at(1));
    QVERIFY(!first.view().look(selected).outlined);
    first.makeKey();
    QVERIFY(QTest::qWaitForWindowActive(&first));
    QVERIFY(first.view().look(selected).outlined);
    QVERIFY(!first.view().look(*first.fixture().controls().at(0)).outlined);
}

void tst_FixtureWindow::becomingKeyRedrawsTheSelectedControls() {
    FixtureWindow& first = add(fixture("A"));
    FixtureWindow& second = add(fixture("B"));
    QVERIFY(QTest::qWaitForWindowActive(&second));
    first.makeKey();
    QVERIFY(QTest::qWaitForWindowActive(&first));
    first.view().select(*first.fixture().controls().at(1));
    second.view().select(*second.fixture().controls().at(0));
    PaintCount paints(first.view(), first.fixture().frameOf(*first.fixture().controls().at(1)));
    PaintCount paintsToo(second.view(), second.fixture().frameOf(*second.fixture().controls().at(0)));
    PaintCount others(first.view(), first.fixture().frameOf(*first.fixture().controls().at(0)));
    paints.take();
    paintsToo.take();
    others.take();
    second.makeKey();
    QVERIFY(QTest::qWaitForWindowActive(&second));
    QCOMPARE(paints.take(), 1);
    QCOMPARE(paintsToo.take(), 1);
    QCOMPARE(others.take(), 0);
}

void tst_FixtureWindow::becomingKeyAgainRedrawsNothing() {
    FixtureWindow& first = add(fixture("A"));
    FixtureWindow& second = add(fixture("B"));
    QVERIFY(QTest::qWaitForWindowActive(&second));
    first.view().select(*first.fixture().controls().at(1));
    second.view().select(*second.fixture().controls().at(0));
    PaintCount paints(first.view(), first.view().rect());
    PaintCount paintsToo(second.view(), second.view().rect());
    paints.take();
    paintsToo.take();
    second.makeKey();
    QVERIFY(QTest::qWaitForWindowActive(&second));
    QCOMPARE(paints.take(), 0);
    QCOMPARE(paintsToo.take(), 0);
}

void tst_FixtureWindow::theTitleFollowsTheFixture() {
    FixtureWindow& window = add(fixture("Spot"));
    window.fixture().setUniverse(6);
    window.fixture().setAddress(10);
    QCOMPARE(window.windowTitle(), "Spot Univ: 0 Addr: 1"); // it is part of a larger change
    window.fixture().rescanControls();
    QCOMPARE(window.windowTitle(), "Spot Univ: 6 Addr: 10");
}

void tst_FixtureWindow::theBackgroundIsDark() {
    FixtureWindow& window =
        add({{"name", "Spot"},
             {"profiles", QVariantList{QVariantMap{{"name", "1"}}, QVariantMap{{"name", "2"}},
                                       QVariantMap{{"name", "3"}, {"header", true}}}}});
    const QImage image = window.grab().toImage();
    QCOMPARE(image.size(), QSize(300, 38));
    // Below the lone control of the second column, and around every control.
    QCOMPARE(image.pixel(225, 30), qRgb(38, 38, 38));
    QCOMPARE(image.pixel(0, 0), qRgb(38, 38, 38));
    QCOMPARE(image.pixel(149, 18), qRgb(38, 38, 38));
    QVERIFY(image.pixel(100, 3) != qRgb(38, 38, 38));
}

QTEST_MAIN(tst_FixtureWindow)
#include "tst_FixtureWindow.moc"
