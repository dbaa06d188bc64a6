#include "window/MainWindow.h"

#include "panels/FixtureWindows.h"
#include "support/TestRig.h"
#include "window/AddressField.h"
#include "window/CueMenu.h"
#include "window/WindowMenu.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenuBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QUndoStack>

namespace {

QMenu& menuTitled(MainWindow& window, const QString& title) {
    for (const QAction* action : window.menuBar()->actions()) {
        if (action->text() == title) {
            return *action->menu();
        }
    }
    qFatal("no menu '%s'", qUtf8Printable(title));
}

/// Names that are not edited, universes and addresses that are.
std::unique_ptr<QStandardItemModel> twoFixtures() {
    auto fixtures = std::make_unique<QStandardItemModel>();
    for (const char* name : {"Spot", "Wash"}) {
        auto* const item = new QStandardItem(name);
        item->setEditable(false);
        fixtures->appendRow({item, new QStandardItem("0"), new QStandardItem("1")});
    }
    return fixtures;
}

QStringList checkedNames(const QMenu& menu) {
    QStringList names;
    for (const QAction* item : menu.actions()) {
        if (item->isChecked()) {
            names.append(item->text());
        }
    }
    return names;
}

} // namespace

class tst_MainWindow : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theMenusStandInTheirOrder();
    void fileAndEditHoldTheirCommands();
    void closingAsksToQuitAndLeavesTheWindow();
    void quitAsksToQuit();

    void configurationsAreListedInTheOrderOfTheirAdding();
    void aChosenConfigurationTellsItsName_data();
    void aChosenConfigurationTellsItsName();
    void aMarkThatWasSetStays();
    void choosingAConfigurationMovesNoMark();
    void aNameThatIsNotListedMarksNothing();

    void copyAndPasteGoToTheSelectedFader();
    void copyAndPasteGoToTheTextFieldWithTheFocus();
    void withoutAFocusCopyAndPasteDoNothing();
    void aTextFieldKeepsItsEditingKeys();

    void theWindowOpensAtItsRememberedPlace();
    void aPlaceOutsideAllScreensIsMovedOntoOne_data();
    void aPlaceOutsideAllScreensIsMovedOntoOne();
    void everyMoveIsRemembered();
    void theTableCanBeWalkedByKeys();
    void namesOfFixturesHaveTheRoomThatNumbersLeave();
    void returnOnAFixturesNameTellsItsRow();
    void returnOnANumberEditsIt();

    void theFixturesMenuTellsWhatWasChosen();
    void fixturesAreRemovedByTheSelectedRows();
    void theDeleteKeyOfTheTableRemoves();
    void withoutASelectionNothingIsRemoved();
    void undoNamesTheStep();
    void aTextFieldWithTheFocusUndoesItsTyping();

private:
    void activate(QWidget& window) {
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    // Whatever modifiers an earlier key left behind.
    void selectRow(const QAbstractItemModel& fixtures, int row) {
        window_->tableview().selectionModel()->select(
            fixtures.index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }

    std::unique_ptr<TestPlaces> places_;
    std::unique_ptr<MainWindow> window_;
};

void tst_MainWindow::init() {
    places_ = std::make_unique<TestPlaces>();
    window_ = std::make_unique<MainWindow>(*places_);
}

void tst_MainWindow::cleanup() {
    window_.reset();
    places_.reset();
}

void tst_MainWindow::theMenusStandInTheirOrder() {
    QCOMPARE(window_->windowTitle(), QString("Faderhall"));
    QStringList menus;
    for (const QAction* action : window_->menuBar()->actions()) {
        menus.append(action->text());
    }
    QCOMPARE(menus,
             (QStringList{"&File", "&Edit", "Fi&xtures", "Confi&gurations", "Cues", "&Window", "&Help"}));
    QCOMPARE(&menuTitled(*window_, "Confi&gurations"), &window_->configMenu());
    QCOMPARE(&menuTitled(*window_, "Cues"), &window_->cueMenu());
    QCOMPARE(&menuTitled(*window_, "&Window"), &window_->windowMenu());
    QVERIFY(window_->configMenu().isEmpty());
    QCOMPARE(window_->addressField().text(), QString());
}

void tst_MainWindow::fileAndEditHoldTheirCommands() {
    const QMenu& file = menuTitled(*window_, "&File");
    const QMenu& edit = menuTitled(*window_, "&Edit");
    QCOMPARE(file.actions().size(), 1);
    QCOMPARE(file.actions().at(0)->text(), QString("&Quit"));
    QCOMPARE(file.actions().at(0)->shortcut(), QKeySequence("Ctrl+Q"));
    QStringList texts;
    QStringList keys;
    for (const QAction* item : edit.actions()) {
        texts.append(item->text());
        keys.append(item->shortcut().toString());
    }
    QCOMPARE(texts, (QStringList{"&Undo", "&Redo", "", "&Copy", "&Paste"}));
    QCOMPARE(keys, (QStringList{"Ctrl+Z", "Ctrl+Shift+Z", "", "Ctrl+C", "Ctrl+V"}));
    for (const QAction* item : file.actions() + edit.actions()) {
        QVERIFY(item->isSeparator() || item->shortcutContext() == Qt::ApplicationShortcut);
    }
}

void tst_MainWindow::closingAsksToQuitAndLeavesTheWindow() {
    const QSignalSpy quit(window_.get(), &MainWindow::quitChosen);
    window_->open();
    QVERIFY(!window_->close());
    QVERIFY(window_->isVisible());
    QCOMPARE(quit.size(), 1);
}

void tst_MainWindow::quitAsksToQuit() {
    const QSignalSpy quit(window_.get(), &MainWindow::quitChosen);
    window_->open();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    QTest::keyClick(window_.get(), Qt::Key_Q, Qt::ControlModifier);
    QCOMPARE(quit.size(), 1);
}

void tst_MainWindow::configurationsAreListedInTheOrderOfTheirAdding() {
    window_->addConfiguration("Tour");
    window_->addConfiguration("A&B");
    window_->addConfiguration("New Cue\u2026");
    QStringList names;
    for (const QAction* item : window_->configMenu().actions()) {
        names.append(item->text());
        QVERIFY(item->shortcut().isEmpty());
    }
    QCOMPARE(names, (QStringList{"Tour", "A&&B", "New Cue\u2026"}));
}

void tst_MainWindow::aChosenConfigurationTellsItsName_data() {
    QTest::addColumn<QString>("name");

    QTest::newRow("a name") << "Tour";
    QTest::newRow("a mnemonic mark") << "A&B";
    QTest::newRow("a tab") << "A\tB";
    QTest::newRow("nothing") << "";
    QTest::newRow("longer than a menu is wide") << QString(5000, u'x');
}

void tst_MainWindow::aChosenConfigurationTellsItsName() {
    QFETCH(const QString, name);

    window_->addConfiguration(name);
    QSignalSpy chosen(window_.get(), &MainWindow::configurationChosen);
    window_->configMenu().actions().at(0)->trigger();
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.at(0).at(0).toString(), name);
}

void tst_MainWindow::aMarkThatWasSetStays() {
    window_->addConfiguration("Tour");
    window_->addConfiguration("Foyer");
    QCOMPARE(checkedNames(window_->configMenu()), QStringList());
    window_->checkConfiguration("Foyer");
    QCOMPARE(checkedNames(window_->configMenu()), QStringList{"Foyer"});
    window_->checkConfiguration("Tour");
    QCOMPARE(checkedNames(window_->configMenu()), (QStringList{"Tour", "Foyer"}));
    window_->checkConfiguration("Tour");
    QCOMPARE(checkedNames(window_->configMenu()), (QStringList{"Tour", "Foyer"}));
}

void tst_MainWindow::choosingAConfigurationMovesNoMark() {
    window_->addConfiguration("Tour");
    window_->addConfiguration("Foyer");
    window_->checkConfiguration("Foyer");
    window_->configMenu().actions().at(0)->trigger();
    QCOMPARE(checkedNames(window_->configMenu()), QStringList{"Foyer"});
    window_->configMenu().actions().at(1)->trigger();
    QCOMPARE(checkedNames(window_->configMenu()), QStringList{"Foyer"});
    window_->checkConfiguration("Tour");
    QCOMPARE(checkedNames(window_->configMenu()), (QStringList{"Tour", "Foyer"}));
}

void tst_MainWindow::aNameThatIsNotListedMarksNothing() {
    window_->addConfiguration("Tour");
    window_->checkConfiguration("tour");
    window_->checkConfiguration("unknown_config");
    QCOMPARE(checkedNames(window_->configMenu()), QStringList());
}

void tst_MainWindow::copyAndPasteGoToTheSelectedFader() {
    TestRig rig;
    FixtureWindows windows(rig.fixtures(), rig.places());
    windows.open();
    rig.add("Spot", {"Dimmer", "Pan"});
    window_->open();
    activate(*windows.at(0));
    ControlView& view = windows.at(0)->view();
    rig.control("Spot.Dimmer").setValue(200);
    view.select(rig.control("Spot.Dimmer"));
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    view.select(rig.control("Spot.Pan"));
    QTest::keyClick(&view, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(rig.control("Spot.Pan").value(), 200U);
}

void tst_MainWindow::copyAndPasteGoToTheTextFieldWithTheFocus() {
    window_->open();
    activate(*window_);
    window_->addressField().setText("10.0.0.1");
    window_->addressField().setFocus();
    window_->addressField().selectAll();
    QMenu& edit = menuTitled(*window_, "&Edit");
    edit.actions().at(3)->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("10.0.0.1"));
    window_->addressField().end(false);
    edit.actions().at(4)->trigger();
    QCOMPARE(window_->addressField().text(), QString("10.0.0.110.0.0.1"));
}

void tst_MainWindow::withoutAFocusCopyAndPasteDoNothing() {
    QGuiApplication::clipboard()->setText("kept");
    QMenu& edit = menuTitled(*window_, "&Edit");
    edit.actions().at(3)->trigger();
    edit.actions().at(4)->trigger();
    window_->open();
    activate(*window_);
    window_->tableview().setFocus();
    edit.actions().at(3)->trigger();
    edit.actions().at(4)->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("kept"));
}

void tst_MainWindow::aTextFieldKeepsItsEditingKeys() {
    window_->open();
    activate(*window_);
    window_->cueMenu().setupCueMenu({}, {});
    const QSignalSpy chosen(&window_->cueMenu(), &CueMenu::cueAction);
    AddressField& field = window_->addressField();
    field.setFocus();
    field.setText("10.0.0.1");
    field.end(false);
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(field.selectedText(), QString("10.0.0.1"));
    QTest::keyClick(&field, Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(field.text(), QString());
    QTest::keyClick(&field, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(field.text(), QString("10.0.0.1"));
    QCOMPARE(chosen.size(), 0);
    QTest::keyClick(&field, Qt::Key_R, Qt::ControlModifier);
    QCOMPARE(chosen.size(), 1);
    window_->tableview().setFocus();
    QTest::keyClick(&window_->tableview(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(chosen.size(), 2);
}

void tst_MainWindow::theWindowOpensAtItsRememberedPlace() {
    places_->setPlace("faderhall_main_window", QPoint(60, 70));
    window_->open();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    QCOMPARE(window_->pos(), QPoint(60, 70));
}

void tst_MainWindow::aPlaceOutsideAllScreensIsMovedOntoOne_data() {
    QTest::addColumn<QPoint>("place");

    QTest::newRow("right of all") << QPoint(100000, 50);
    QTest::newRow("left of all") << QPoint(-100000, 50);
    QTest::newRow("below all") << QPoint(50, 100000);
    QTest::newRow("as far as it gets") << QPoint(2147483647, -2147483647 - 1);
}

void tst_MainWindow::aPlaceOutsideAllScreensIsMovedOntoOne() {
    QFETCH(const QPoint, place);

    places_->setPlace("faderhall_main_window", place);
    window_->open();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    QVERIFY(QRect(0, 0, 800, 800).contains(window_->pos())); // the screen of a display that has none
}

void tst_MainWindow::everyMoveIsRemembered() {
    window_->move(5, 6);
    QVERIFY(!places_->place("faderhall_main_window"));
    window_->open();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    window_->move(80, 90);
    QTRY_COMPARE(places_->place("faderhall_main_window"), std::optional(QPoint(80, 90)));
}

void tst_MainWindow::theTableCanBeWalkedByKeys() {
    QVERIFY(window_->tableview().tabKeyNavigation());
    QCOMPARE(window_->tableview().selectionBehavior(), QAbstractItemView::SelectRows);
}

void tst_MainWindow::namesOfFixturesHaveTheRoomThatNumbersLeave() {
    const std::unique_ptr<QStandardItemModel> fixtures = twoFixtures();
    window_->showFixtures(*fixtures);
    activate(*window_);
    const QTableView& table = window_->tableview();
    QCOMPARE(table.columnWidth(1), 90);
    QCOMPARE(table.columnWidth(2), 90);
    QCOMPARE(table.columnWidth(0), table.viewport()->width() - 180);
}

void tst_MainWindow::returnOnAFixturesNameTellsItsRow() {
    const std::unique_ptr<QStandardItemModel> fixtures = twoFixtures();
    window_->showFixtures(*fixtures);
    activate(*window_);
    const QSignalSpy chosen(window_.get(), &MainWindow::fixtureChosen);
    window_->tableview().setCurrentIndex(fixtures->index(1, 0));
    QTest::keyClick(&window_->tableview(), Qt::Key_Return);
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.first().first().toInt(), 1);
}

void tst_MainWindow::returnOnANumberEditsIt() {
    const std::unique_ptr<QStandardItemModel> fixtures = twoFixtures();
    window_->showFixtures(*fixtures);
    activate(*window_);
    const QSignalSpy chosen(window_.get(), &MainWindow::fixtureChosen);
    window_->tableview().setCurrentIndex(fixtures->index(1, 2));
    QTest::keyClick(&window_->tableview(), Qt::Key_F2);
    QVERIFY(window_->tableview().indexWidget(fixtures->index(1, 2)));
    QTest::keyClick(&window_->tableview(), Qt::Key_Return);
    QCOMPARE(chosen.size(), 0);
}

void tst_MainWindow::theFixturesMenuTellsWhatWasChosen() {
    const QSignalSpy add(window_.get(), &MainWindow::addFixtureChosen);
    const QSignalSpy import(window_.get(), &MainWindow::importFixtureChosen);
    const QMenu& menu = menuTitled(*window_, "Fi&xtures");
    QStringList texts;
    for (const QAction* item : menu.actions()) {
        texts.append(item->text());
    }
    QCOMPARE(texts, (QStringList{"&Add Fixture…", "&Import Fixture…", "", "&Remove Fixture"}));
    menu.actions().at(0)->trigger();
    menu.actions().at(1)->trigger();
    QCOMPARE(add.size(), 1);
    QCOMPARE(import.size(), 1);
}

void tst_MainWindow::fixturesAreRemovedByTheSelectedRows() {
    QSignalSpy removed(window_.get(), &MainWindow::removeFixturesChosen);
    const auto fixtures = twoFixtures();
    window_->showFixtures(*fixtures);
    activate(*window_);
    QTableView& table = window_->tableview();
    QAction& remove = *menuTitled(*window_, "Fi&xtures").actions().at(3);
    QVERIFY(!remove.isEnabled());
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(fixtures->index(1, 2)).center());
    QVERIFY(remove.isEnabled());
    remove.trigger();
    QCOMPARE(removed.takeFirst().at(0).value<QModelIndexList>(), QModelIndexList{fixtures->index(1, 0)});
    QTest::keyClick(&table, Qt::Key_Up, Qt::ShiftModifier);
    remove.trigger();
    QCOMPARE(removed.takeFirst().at(0).value<QModelIndexList>().size(), 2);
}

void tst_MainWindow::theDeleteKeyOfTheTableRemoves() {
    const QSignalSpy removed(window_.get(), &MainWindow::removeFixturesChosen);
    const auto fixtures = twoFixtures();
    window_->showFixtures(*fixtures);
    activate(*window_);
    window_->tableview().setFocus();
    selectRow(*fixtures, 0);
    QTest::keyClick(window_->windowHandle(), Qt::Key_Delete);
    QCOMPARE(removed.size(), 1);
    window_->tableview().setCurrentIndex(fixtures->index(0, 2));
    QTest::keyClick(&window_->tableview(), Qt::Key_F2);
    QTest::keyClick(window_->windowHandle(), Qt::Key_Delete);
    QCOMPARE(removed.size(), 1);
}

void tst_MainWindow::withoutASelectionNothingIsRemoved() {
    const auto fixtures = twoFixtures();
    window_->showFixtures(*fixtures);
    const QAction& remove = *menuTitled(*window_, "Fi&xtures").actions().at(3);
    selectRow(*fixtures, 0);
    QVERIFY(remove.isEnabled());
    window_->tableview().clearSelection();
    QVERIFY(!remove.isEnabled());
    selectRow(*fixtures, 1);
    fixtures->removeRows(0, 2);
    QVERIFY(!remove.isEnabled());
}

void tst_MainWindow::undoNamesTheStep() {
    QUndoStack history;
    window_->showHistory(history);
    activate(*window_);
    const QList<QAction*> items = menuTitled(*window_, "&Edit").actions();
    QVERIFY(!items.at(0)->isEnabled());
    history.push(new QUndoCommand("Remove A&B"));
    QCOMPARE(items.at(0)->text(), QString("&Undo Remove A&&B"));
    QVERIFY(!items.at(1)->isEnabled());
    QTest::keyClick(window_.get(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(history.index(), 0);
    QCOMPARE(items.at(1)->text(), QString("&Redo Remove A&&B"));
    QTest::keyClick(window_.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(history.index(), 1);
}

void tst_MainWindow::aTextFieldWithTheFocusUndoesItsTyping() {
    QUndoStack history;
    window_->showHistory(history);
    history.push(new QUndoCommand("Remove Spot"));
    activate(*window_);
    AddressField& field = window_->addressField();
    field.setFocus();
    QTest::keyClicks(&field, "10");
    QTest::keyClick(&field, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(field.text(), QString());
    QTest::keyClicks(&field, "10");
    menuTitled(*window_, "&Edit").actions().at(0)->trigger();
    QCOMPARE(field.text(), QString());
    QCOMPARE(history.index(), 1);
}

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
