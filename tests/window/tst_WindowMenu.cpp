#include "window/WindowMenu.h"

#include <QTest>

#include <memory>
#include <vector>

namespace {

QStringList titles(const QMenu& menu) {
    QStringList found;
    for (const QAction* item : menu.actions()) {
        found.append(item->text());
    }
    return found;
}

QStringList keys(const QMenu& menu) {
    QStringList found;
    for (const QAction* item : menu.actions()) {
        found.append(item->shortcut().toString(QKeySequence::PortableText));
    }
    return found;
}

} // namespace

class tst_WindowMenu : public QObject {
    Q_OBJECT

private slots:
    void init() { menu_ = std::make_unique<WindowMenu>(); }
    void cleanup();

    void theWindowsAreListedInTheirOrder();
    void listingAnewReplacesTheItemsAndTheirKeys();
    void theMainWindowIsZeroAndFixturesCountFromOne();
    void withoutAMainWindowFixturesCountFromOne();
    void aFixtureWithoutAnItemTakesNoNumber();
    void ofEqualTitlesTheFirstItemGetsTheLastNumber();
    void aNumberOfTwoDigitsIsNoKey();
    void anItemThatHadAKeyLosesItToANumberOfTwoDigits();
    void titlesAreShownAsTheyAre();
    void keysWorkInEveryWindow();
    void commandsStandBelowTheWindowsAndStayWhenTheyAreListedAnew();
    void choosingAWindowBringsItToTheFront();
    void choosingAMinimizedWindowBringsItBack();
    void anItemOfAWindowThatIsGoneDoesNothing();

private:
    QWidget* addWindow(const QString& title) {
        auto window = std::make_unique<QWidget>();
        window->setWindowTitle(title);
        return windows_.emplace_back(std::move(window)).get();
    }

    std::vector<std::unique_ptr<QWidget>> windows_;
    std::unique_ptr<WindowMenu> menu_;
};

void tst_WindowMenu::cleanup() {
    menu_.reset();
    windows_.clear();
}

void tst_WindowMenu::theWindowsAreListedInTheirOrder() {
    menu_->setWindows(
        {addWindow("Faderhall"), addWindow("Wash Univ: 0 Addr: 1"), addWindow("Spot Univ: 0 Addr: 9")});
    QCOMPARE(titles(*menu_), (QStringList{"Faderhall", "Wash Univ: 0 Addr: 1", "Spot Univ: 0 Addr: 9"}));
    QCOMPARE(keys(*menu_), (QStringList{"", "", ""}));
}

void tst_WindowMenu::listingAnewReplacesTheItemsAndTheirKeys() {
    QWidget* const main = addWindow("Faderhall");
    menu_->setWindows({main, addWindow("Wash")});
    menu_->setKeyEquivalents("Faderhall", {"Wash"});
    menu_->setWindows({main, addWindow("Spot")});
    QCOMPARE(titles(*menu_), (QStringList{"Faderhall", "Spot"}));
    QCOMPARE(keys(*menu_), (QStringList{"", ""}));
    menu_->setWindows({});
    QCOMPARE(titles(*menu_), QStringList());
}

void tst_WindowMenu::theMainWindowIsZeroAndFixturesCountFromOne() {
    menu_->setWindows({addWindow("Faderhall"), addWindow("Wash"), addWindow("Spot")});
    menu_->setKeyEquivalents("Faderhall", {"Wash", "Spot"});
    QCOMPARE(keys(*menu_), (QStringList{"Ctrl+0", "Ctrl+1", "Ctrl+2"}));
}

void tst_WindowMenu::withoutAMainWindowFixturesCountFromOne() {
    menu_->setWindows({addWindow("Wash"), addWindow("Spot")});
    menu_->setKeyEquivalents("Faderhall", {"Wash", "Spot"});
    QCOMPARE(keys(*menu_), (QStringList{"Ctrl+1", "Ctrl+2"}));
}

void tst_WindowMenu::aFixtureWithoutAnItemTakesNoNumber() {
    menu_->setWindows({addWindow("Faderhall"), addWindow("First"), addWindow("Third")});
    menu_->setKeyEquivalents("Faderhall", {"First", "Second", "Third"});
    QCOMPARE(keys(*menu_), (QStringList{"Ctrl+0", "Ctrl+1", "Ctrl+2"}));
}

void tst_WindowMenu::ofEqualTitlesTheFirstItemGetsTheLastNumber() {
    menu_->setWindows({addWindow("Faderhall"), addWindow("Twin"), addWindow("Twin"), addWindow("Spot")});
    menu_->setKeyEquivalents("Faderhall", {"Twin", "Twin", "Spot"});
    QCOMPARE(keys(*menu_), (QStringList{"Ctrl+0", "Ctrl+2", "", "Ctrl+3"}));
}

void tst_WindowMenu::aNumberOfTwoDigitsIsNoKey() {
    QList<QWidget*> windows{addWindow("Faderhall")};
    QStringList fixtures;
    for (const char* title : {"A", "B", "C", "D", "E", "F", "G", "H", "I", "J"}) {
        fixtures.append(title);
        windows.append(addWindow(title));
    }
    menu_->setWindows(windows);
    menu_->setKeyEquivalents("Faderhall", fixtures);
    QCOMPARE(keys(*menu_), (QStringList{"Ctrl+0", "Ctrl+1", "Ctrl+2", "Ctrl+3", "Ctrl+4", "Ctrl+5", "Ctrl+6",
                                        "Ctrl+7", "Ctrl+8", "Ctrl+9", ""}));
}

void tst_WindowMenu::anItemThatHadAKeyLosesItToANumberOfTwoDigits() {
    menu_->setWindows({addWindow("Faderhall"), addWindow("Twin")});
    menu_->setKeyEquivalents("Faderhall", QStringList(10, "Twin"));
    QCOMPARE(keys(*menu_), (QStringList{"Ctrl+0", ""}));
}

void tst_WindowMenu::titlesAreShownAsTheyAre() {
    menu_->setWindows({addWindow("A&B\tUniv: 0 Addr: 1")});
    QCOMPARE(titles(*menu_), QStringList{"A&&B Univ: 0 Addr: 1"});
    menu_->setKeyEquivalents("Faderhall", {"A&B\tUniv: 0 Addr: 1"});
    QCOMPARE(keys(*menu_), QStringList{"Ctrl+1"});
}

void tst_WindowMenu::keysWorkInEveryWindow() {
    menu_->setWindows({addWindow("Faderhall")});
    QCOMPARE(menu_->actions().at(0)->shortcutContext(), Qt::ApplicationShortcut);
}

void tst_WindowMenu::commandsStandBelowTheWindowsAndStayWhenTheyAreListedAnew() {
    menu_->setWindows({addWindow("Main")});
    const QAction& command = menu_->addCommand("Next", {QKeySequence("F6"), QKeySequence("Ctrl+Tab")});
    menu_->addCommand("Previous", {});
    QCOMPARE(titles(*menu_), (QStringList{"Main", "", "Next", "Previous"}));
    QVERIFY(menu_->actions().at(1)->isSeparator());
    QCOMPARE(command.shortcuts().size(), 2);
    QCOMPARE(command.shortcutContext(), Qt::ApplicationShortcut);
    menu_->setWindows({addWindow("One"), addWindow("Two")});
    QCOMPARE(titles(*menu_), (QStringList{"One", "Two", "", "Next", "Previous"}));
}

void tst_WindowMenu::choosingAWindowBringsItToTheFront() {
    QWidget* const wash = addWindow("Wash");
    QWidget* const spot = addWindow("Spot");
    menu_->setWindows({wash, spot});
    menu_->actions().at(0)->trigger();
    QVERIFY(QTest::qWaitForWindowActive(wash));
    menu_->actions().at(1)->trigger();
    QVERIFY(QTest::qWaitForWindowActive(spot));
    QVERIFY(wash->isVisible());
    menu_->actions().at(0)->trigger();
    QVERIFY(QTest::qWaitForWindowActive(wash));
}

void tst_WindowMenu::choosingAMinimizedWindowBringsItBack() {
    QWidget* const wash = addWindow("Wash");
    wash->showMinimized();
    QVERIFY(wash->isMinimized());
    menu_->setWindows({wash});
    menu_->actions().at(0)->trigger();
    QVERIFY(!wash->isMinimized());
    QVERIFY(QTest::qWaitForWindowActive(wash));
}

void tst_WindowMenu::anItemOfAWindowThatIsGoneDoesNothing() {
    menu_->setWindows({addWindow("Wash")});
    windows_.clear();
    menu_->actions().at(0)->trigger();
    menu_->setKeyEquivalents("Faderhall", {"Wash"});
    QCOMPARE(keys(*menu_), QStringList{"Ctrl+1"});
}

QTEST_MAIN(tst_WindowMenu)
#include "tst_WindowMenu.moc"
