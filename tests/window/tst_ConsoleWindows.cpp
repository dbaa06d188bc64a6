#include "window/ConsoleWindows.h"

#include "panels/FixtureWindows.h"
#include "support/TestRig.h"
#include "window/CueMenu.h"
#include "window/MainWindow.h"
#include "window/OutputWindow.h"
#include "window/Sheets.h"
#include "window/UniverseGrid.h"
#include "window/WindowMenu.h"

#include <QLineEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

namespace {

const SheetText question{.message = "Enter new cue number", .informativeText = {}, .fieldLabel = {}};

/// Of the windows.
QStringList titlesAndKeys(const QMenu& menu) {
    QStringList found;
    for (const QAction* item : menu.actions()) {
        if (item->isSeparator()) {
            break; // below are commands
        }
        found.append(item->text() + " / " + item->shortcut().toString(QKeySequence::PortableText));
    }
    return found;
}

QAction& commandOf(const QMenu& menu, const QString& text) {
    for (QAction* const item : menu.actions()) {
        if (item->text() == text) {
            return *item;
        }
    }
    qFatal("no command '%s'", qUtf8Printable(text));
}

} // namespace

/// A rig of two fixtures, Spot and Wash, and the main window.
class tst_ConsoleWindows : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theMenuListsTheMainWindowAndEveryFixture();
    void theMenuFollowsTheTitles();
    void theMenuFollowsTheFixtures();
    void aScanWithoutATitleBringsNothingToTheFront();
    void theWindowOfThatTitleComesToTheFront_data();
    void theWindowOfThatTitleComesToTheFront();
    void aTitleThatNoWindowHasBringsNothingToTheFront();
    void aFixtureThatIsChosenInTheTableComesToTheFront();

    void keysLeadRoundTheWindows_data();
    void keysLeadRoundTheWindows();

    void windowsFromElsewhereAreBroughtToTheMainWindowsScreen();
    void theOutputWindowIsOpenedOnceAndBroughtBack();
    void aSlotThatIsChosenInTheOutputSelectsItsFader();

    void theTitleInFrontIsThatOfTheActiveWindow();
    void theTitleIsTheOneThatTheWindowHasNow();
    void aSheetCountsAsItsWindow();
    void whileAnotherProgramHasTheKeyboardItIsTheLastOne();
    void withoutAWindowThereIsNoTitle();

    void whileASheetIsOpenFixtureWindowsKnowTheCommands();
    void whileASheetIsOpenItsFieldKeepsItsEditingKeys();

private:
    void activate(QWidget& window) {
        window.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &window);
    }

    FixtureWindow* windowOf(std::size_t row) const { return fixtureWindows_->at(row); }

    std::unique_ptr<TestRig> rig_;
    std::unique_ptr<MainWindow> mainWindow_;
    std::unique_ptr<FixtureWindows> fixtureWindows_;
    std::unique_ptr<ConsoleWindows> windows_;
    Fixture* spot_ = nullptr;
    Fixture* wash_ = nullptr;
};

void tst_ConsoleWindows::init() {
    rig_ = std::make_unique<TestRig>();
    mainWindow_ = std::make_unique<MainWindow>(rig_->places());
    fixtureWindows_ = std::make_unique<FixtureWindows>(rig_->fixtures(), rig_->places());
    windows_ =
        std::make_unique<ConsoleWindows>(*mainWindow_, *fixtureWindows_, rig_->engine(), rig_->fixtures());
    mainWindow_->open();
    fixtureWindows_->open();
    spot_ = &rig_->add("Spot", {"Dimmer"}, 0, 1);
    wash_ = &rig_->add("Wash", {"Dimmer"}, 1, 2);
    QVERIFY(QTest::qWaitForWindowActive(windowOf(1)));
}

void tst_ConsoleWindows::cleanup() {
    windows_.reset();
    fixtureWindows_.reset();
    mainWindow_.reset();
    rig_.reset();
}

void tst_ConsoleWindows::theMenuListsTheMainWindowAndEveryFixture() {
    windows_->scanWindows();
    QCOMPARE(titlesAndKeys(mainWindow_->windowMenu()),
             (QStringList{"Faderhall / Ctrl+0", "Spot Univ: 0 Addr: 1 / Ctrl+1",
                          "Wash Univ: 1 Addr: 2 / Ctrl+2"}));
}

void tst_ConsoleWindows::theMenuFollowsTheTitles() {
    windows_->scanWindows();
    spot_->setAddress(17);
    spot_->rescanControls();
    windows_->scanWindows();
    QCOMPARE(titlesAndKeys(mainWindow_->windowMenu()),
             (QStringList{"Faderhall / Ctrl+0", "Spot Univ: 0 Addr: 17 / Ctrl+1",
                          "Wash Univ: 1 Addr: 2 / Ctrl+2"}));
}

void tst_ConsoleWindows::theMenuFollowsTheFixtures() {
    windows_->scanWindows();
    rig_->fixtures().remove(0, 2);
    windows_->scanWindows();
    QCOMPARE(titlesAndKeys(mainWindow_->windowMenu()), QStringList{"Faderhall / Ctrl+0"});
    rig_->add("New", {"Dimmer"});
    windows_->scanWindows();
    QCOMPARE(titlesAndKeys(mainWindow_->windowMenu()),
             (QStringList{"Faderhall / Ctrl+0", "New Univ: 0 Addr: 1 / Ctrl+1"}));
}

void tst_ConsoleWindows::aScanWithoutATitleBringsNothingToTheFront() {
    windows_->scanWindows();
    QCoreApplication::processEvents();
    QVERIFY(windowOf(1)->isActiveWindow());
}

void tst_ConsoleWindows::theWindowOfThatTitleComesToTheFront_data() {
    QTest::addColumn<QString>("title");

    QTest::newRow("the main window") << "Faderhall";
    QTest::newRow("a fixture") << "Spot Univ: 0 Addr: 1";
    QTest::newRow("the one in front") << "Wash Univ: 1 Addr: 2";
}

void tst_ConsoleWindows::theWindowOfThatTitleComesToTheFront() {
    QFETCH(const QString, title);

    windows_->scanWindows(title);
    QTRY_VERIFY(QApplication::activeWindow());
    QTRY_COMPARE(QApplication::activeWindow()->windowTitle(), title);
    QCOMPARE(windows_->frontTitle(), title);
}

void tst_ConsoleWindows::aTitleThatNoWindowHasBringsNothingToTheFront() {
    for (const char* title : {"", "Spot", "Spot Univ: 0 Addr: 2"}) {
        windows_->scanWindows(title);
        QCoreApplication::processEvents();
        QVERIFY(windowOf(1)->isActiveWindow());
    }
}

void tst_ConsoleWindows::aFixtureThatIsChosenInTheTableComesToTheFront() {
    emit mainWindow_->fixtureChosen(0);
    QTRY_COMPARE(QApplication::activeWindow(), windowOf(0));
    windowOf(1)->showMinimized();
    emit mainWindow_->fixtureChosen(1);
    QTRY_COMPARE(QApplication::activeWindow(), windowOf(1));
    emit mainWindow_->fixtureChosen(2);
    QCOMPARE(QApplication::activeWindow(), static_cast<QWidget*>(windowOf(1)));
}

void tst_ConsoleWindows::keysLeadRoundTheWindows_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<bool>("forward");

    QTest::newRow("F6") << Qt::Key_F6 << Qt::KeyboardModifiers(Qt::NoModifier) << true;
    QTest::newRow("Ctrl+Tab") << Qt::Key_Tab << Qt::KeyboardModifiers(Qt::ControlModifier) << true;
    QTest::newRow("Shift+F6") << Qt::Key_F6 << Qt::KeyboardModifiers(Qt::ShiftModifier) << false;
    QTest::newRow("Ctrl+Shift+Tab") << Qt::Key_Backtab << (Qt::ControlModifier | Qt::ShiftModifier) << false;
}

void tst_ConsoleWindows::keysLeadRoundTheWindows() {
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const bool, forward);
    windows_->scanWindows();
    QList<QWidget*> expected{mainWindow_.get(), windowOf(0), windowOf(1)};
    if (!forward) {
        expected = {windowOf(0), mainWindow_.get(), windowOf(1)};
    }
    for (const QWidget* const window : expected) {
        QTest::keyClick(QApplication::activeWindow()->windowHandle(), key, modifiers);
        QTRY_COMPARE(QApplication::activeWindow(), window);
    }
}

void tst_ConsoleWindows::windowsFromElsewhereAreBroughtToTheMainWindowsScreen() {
    const QRect screen = mainWindow_->screen()->availableGeometry();
    windowOf(0)->move(-4000, 50);
    windowOf(1)->move(60, 70);
    windowOf(1)->showMinimized();
    const QPoint mainPlace = mainWindow_->pos();
    commandOf(mainWindow_->windowMenu(), "&Bring All Windows Here").trigger();
    QTRY_COMPARE(windowOf(0)->pos(), QPoint(screen.left(), 50));
    QCOMPARE(windowOf(1)->pos(), QPoint(60, 70));
    QVERIFY(!windowOf(1)->isMinimized());
    QCOMPARE(mainWindow_->pos(), mainPlace);
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget*>(mainWindow_.get()));
}

void tst_ConsoleWindows::theOutputWindowIsOpenedOnceAndBroughtBack() {
    QVERIFY(mainWindow_->findChildren<OutputWindow*>().isEmpty());
    QAction& command = commandOf(mainWindow_->windowMenu(), "&Output");
    command.trigger();
    auto* const output = mainWindow_->findChild<OutputWindow*>();
    QVERIFY(output && output->isVisible());
    activate(*windowOf(0));
    output->close();
    command.trigger();
    QVERIFY(output->isVisible());
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget*>(output));
    QCOMPARE(mainWindow_->findChildren<OutputWindow*>().size(), 1);
    QCOMPARE(windows_->frontTitle(), QString("Faderhall"));
}

void tst_ConsoleWindows::aSlotThatIsChosenInTheOutputSelectsItsFader() {
    commandOf(mainWindow_->windowMenu(), "&Output").trigger();
    auto* const output = mainWindow_->findChild<OutputWindow*>();
    QVERIFY(QTest::qWaitForWindowActive(output));
    windowOf(0)->showMinimized();
    UniverseGrid& grid = *output->grids().at(0);
    QTest::mouseClick(&grid, Qt::LeftButton, {}, grid.slotRect(0).center());
    QCOMPARE(spot_->selectedControl(), &rig_->control("Spot.Dimmer"));
    QVERIFY(rig_->control("Spot.Dimmer").firstResponder());
    QCOMPARE(wash_->selectedControl(), nullptr);
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget*>(windowOf(0)));
    QVERIFY(!windowOf(0)->isMinimized());
    QTest::keyClicks(&windowOf(0)->view(), "77\r");
    QCOMPARE(rig_->control("Spot.Dimmer").value(), 77U);
}

void tst_ConsoleWindows::theTitleInFrontIsThatOfTheActiveWindow() {
    QCOMPARE(windows_->frontTitle(), QString("Wash Univ: 1 Addr: 2"));
    activate(*mainWindow_);
    QCOMPARE(windows_->frontTitle(), QString("Faderhall"));
    activate(*windowOf(0));
    QCOMPARE(windows_->frontTitle(), QString("Spot Univ: 0 Addr: 1"));
}

void tst_ConsoleWindows::theTitleIsTheOneThatTheWindowHasNow() {
    wash_->setUniverse(9);
    wash_->rescanControls();
    QCOMPARE(windows_->frontTitle(), QString("Wash Univ: 9 Addr: 2"));
}

void tst_ConsoleWindows::aSheetCountsAsItsWindow() {
    QDialog* const sheet = openTextSheet(*mainWindow_, question, [](const QString&) {});
    activate(*sheet);
    QCOMPARE(windows_->frontTitle(), QString("Faderhall"));
    sheet->reject();
    QCOMPARE(windows_->frontTitle(), QString("Faderhall"));
}

void tst_ConsoleWindows::whileAnotherProgramHasTheKeyboardItIsTheLastOne() {
    activate(*windowOf(0));
    QApplication::setActiveWindow(nullptr);
    QVERIFY(!QApplication::activeWindow());
    QCOMPARE(windows_->frontTitle(), QString("Spot Univ: 0 Addr: 1"));
}

void tst_ConsoleWindows::withoutAWindowThereIsNoTitle() {
    rig_->fixtures().remove(0, 2);
    mainWindow_->hide();
    const ConsoleWindows none(*mainWindow_, *fixtureWindows_, rig_->engine(), rig_->fixtures());
    QVERIFY(none.frontTitle().isNull());
}

void tst_ConsoleWindows::whileASheetIsOpenFixtureWindowsKnowTheCommands() {
    windows_->scanWindows();
    mainWindow_->cueMenu().setupCueMenu({"1"}, {});
    const QSignalSpy chosen(&mainWindow_->cueMenu(), &CueMenu::cueAction);
    openTextSheet(*mainWindow_, question, [](const QString&) {});
    activate(*windowOf(0));
    ControlView& view = windowOf(0)->view();
    view.select(rig_->control("Spot.Dimmer"));
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(chosen.size(), 1);

    mainWindow_->cueMenu().setupCueMenu({"1", "2"}, {}); // new items, known just as well
    QTest::keyClick(&view, Qt::Key_X, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(chosen.size(), 2);
    QTest::keyClick(&view, Qt::Key_2, Qt::ControlModifier);
    QVERIFY(QTest::qWaitForWindowActive(windowOf(1)));
}

void tst_ConsoleWindows::whileASheetIsOpenItsFieldKeepsItsEditingKeys() {
    windows_->scanWindows();
    mainWindow_->cueMenu().setupCueMenu({"1"}, {});
    const QSignalSpy chosen(&mainWindow_->cueMenu(), &CueMenu::cueAction);
    QDialog* const sheet = openTextSheet(*mainWindow_, question, [](const QString&) {});
    activate(*sheet);
    auto* const field = sheet->findChild<QLineEdit*>();
    QTest::keyClicks(field, "12");
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(field->selectedText(), QString("12"));
    QTest::keyClick(field, Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(field->text(), QString());
    QCOMPARE(chosen.size(), 0);
}

QTEST_MAIN(tst_ConsoleWindows)
#include "tst_ConsoleWindows.moc"
