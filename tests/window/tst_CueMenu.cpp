#include "window/CueMenu.h"

#include <QHelpEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

namespace {

using Number = std::optional<QString>;

constexpr auto selectToolTip = "Use 'alt' key to select a cue without executing it.";

QStringList titles(const QMenu& menu) {
    QStringList found;
    for (const QAction* item : menu.actions()) {
        found.append(item->isSeparator() ? QString("---") : item->text());
    }
    return found;
}

QStringList checkedTitles(const QMenu& menu) {
    QStringList found;
    for (const QAction* item : menu.actions()) {
        if (item->isChecked()) {
            found.append(item->text());
        }
    }
    return found;
}

/// What hovering over an item shows; empty when nothing is.
QString shownToolTip(QMenu& menu, QAction* item) {
    QToolTip::hideText();
    menu.popup({});
    const QPoint place = menu.actionGeometry(item).center();
    QHelpEvent hover(QEvent::ToolTip, place, menu.mapToGlobal(place));
    QCoreApplication::sendEvent(&menu, &hover);
    menu.close();
    return QToolTip::text();
}

} // namespace

class tst_CueMenu : public QObject {
    Q_OBJECT

private slots:
    void itIsTitledCuesAtFirst();
    void theCommandsStandInTheirOrder();
    void eachCommandHasItsKeysTagAndToolTip_data();
    void eachCommandHasItsKeysTagAndToolTip();
    void aKeyThatIsHeldDownCountsOnce();
    void newCueAsksForANumber();
    void cuesAreListedBelowInTheGivenOrder();
    void aCueHasNoKeysAndTellsHowToSelectIt();
    void aChosenCueTellsItsNumber_data();
    void aChosenCueTellsItsNumber();
    void namesAreShownAsTheyAre_data();
    void namesAreShownAsTheyAre();
    void namesWiderThanAnyScreenAreCut();

    void theCurrentCueIsChecked();
    void aCurrentCueThatIsNotListedIsNotChecked();
    void theMarkMovesWithTheCurrentCue();
    void choosingAnItemMovesNoMarkByItself();
    void choosingTheCheckedItemLeavesItsMark();
    void aCueNamedLikeACommandMarksTheCommand_data();
    void aCueNamedLikeACommandMarksTheCommand();
    void theTitleNamesTheCurrentCue_data();
    void theTitleNamesTheCurrentCue();
    void rebuildingLeavesTheTitle();
    void rebuildingReplacesTheItems();
    void itemsOfCuesThatStayAreKept_data();
    void itemsOfCuesThatStayAreKept();
    void anItemMayAskForTheRebuild();

    void altLeavesTheMenuOpen();
    void tenThousandCuesAreListedAndShown();
};

void tst_CueMenu::itIsTitledCuesAtFirst() {
    QCOMPARE(CueMenu().title(), QString("Cues"));
}

void tst_CueMenu::theCommandsStandInTheirOrder() {
    CueMenu menu;
    menu.setupCueMenu({}, {});
    QCOMPARE(titles(menu), (QStringList{"Next Cue", "Prev Cue", "Clear", "Clear Timing", "---", "Store Cue",
                                        "Delete Cue", "New Cue\u2026", "---"}));
}

void tst_CueMenu::eachCommandHasItsKeysTagAndToolTip_data() {
    QTest::addColumn<int>("place");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("toolTip");

    QTest::newRow("Next Cue") << 0 << "Next Cue"
                              << "Ctrl+A" << 1 << "";
    QTest::newRow("Prev Cue") << 1 << "Prev Cue"
                              << "Ctrl+R" << 2 << "";
    QTest::newRow("Clear") << 2 << "Clear"
                           << "Ctrl+X" << 4 << "";
    QTest::newRow("Clear Timing") << 3 << "Clear Timing"
                                  << "Ctrl+Alt+X" << 5 << "Clear all channels to their default values";
    QTest::newRow("Store Cue") << 5 << "Store Cue"
                               << "Ctrl+W" << 3 << "";
    QTest::newRow("Delete Cue") << 6 << "Delete Cue"
                                << "" << 6 << "Remove current cue from list";
}

void tst_CueMenu::eachCommandHasItsKeysTagAndToolTip() {
    QFETCH(const int, place);
    QFETCH(const QString, title);
    QFETCH(const QString, keys);
    QFETCH(const int, tag);
    QFETCH(const QString, toolTip);

    CueMenu menu;
    menu.setupCueMenu({"1"}, {});
    QAction* const item = menu.actions().at(place);
    QCOMPARE(item->text(), title);
    QCOMPARE(item->shortcut(), QKeySequence(keys));
    QVERIFY(keys.isEmpty() || item->shortcutContext() == Qt::ApplicationShortcut);
    QCOMPARE(shownToolTip(menu, item), toolTip);

    QSignalSpy chosen(&menu, &CueMenu::cueAction);
    const QSignalSpy newCue(&menu, &CueMenu::newCueChosen);
    item->trigger();
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(int{chosen.at(0).at(0).value<CueMenu::Tag>()}, tag);
    QCOMPARE(chosen.at(0).at(1).toString(), title);
    QCOMPARE(newCue.size(), 0);
    QVERIFY(!item->isChecked());
}

void tst_CueMenu::aKeyThatIsHeldDownCountsOnce() {
    CueMenu menu;
    menu.setupCueMenu({"1"}, {});
    for (const QAction* item : menu.actions()) {
        QVERIFY(item->isSeparator() || !item->autoRepeat());
    }
}

void tst_CueMenu::newCueAsksForANumber() {
    CueMenu menu;
    menu.setupCueMenu({"1"}, {});
    QAction* const item = menu.actions().at(7);
    QCOMPARE(item->text(), QString("New Cue\u2026"));
    QCOMPARE(item->shortcut(), QKeySequence("Ctrl+N"));
    QCOMPARE(item->shortcutContext(), Qt::ApplicationShortcut);
    QCOMPARE(shownToolTip(menu, item), QString());

    const QSignalSpy chosen(&menu, &CueMenu::cueAction);
    const QSignalSpy newCue(&menu, &CueMenu::newCueChosen);
    item->trigger();
    QCOMPARE(newCue.size(), 1);
    QCOMPARE(chosen.size(), 0);
}

void tst_CueMenu::cuesAreListedBelowInTheGivenOrder() {
    CueMenu menu;
    menu.setupCueMenu({"1.5", "2", "10"}, "2");
    QCOMPARE(titles(menu), (QStringList{"Next Cue", "Prev Cue", "Clear", "Clear Timing", "---", "Store Cue",
                                        "Delete Cue", "New Cue\u2026", "---", "1.5", "2", "10"}));
    QCOMPARE(checkedTitles(menu), QStringList{"2"});
}

void tst_CueMenu::aCueHasNoKeysAndTellsHowToSelectIt() {
    CueMenu menu;
    menu.setupCueMenu({"1"}, {});
    QAction* const item = menu.actions().last();
    QVERIFY(item->shortcut().isEmpty());
    QCOMPARE(shownToolTip(menu, item), QString(selectToolTip));
}

void tst_CueMenu::aChosenCueTellsItsNumber_data() {
    QTest::addColumn<QString>("number");

    QTest::newRow("a number") << "2.5";
    QTest::newRow("blanks around") << " 2 ";
    QTest::newRow("a tab") << "2\t3";
    QTest::newRow("a mnemonic mark") << "A&B";
    QTest::newRow("two mnemonic marks") << "A&&B";
    QTest::newRow("a command's name") << "Clear";
    QTest::newRow("nothing") << "";
    QTest::newRow("longer than a menu is wide") << QString(5000, u'7');
}

void tst_CueMenu::aChosenCueTellsItsNumber() {
    QFETCH(const QString, number);

    CueMenu menu;
    menu.setupCueMenu({number}, {});
    QSignalSpy chosen(&menu, &CueMenu::cueAction);
    menu.actions().last()->trigger();
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.at(0).at(0).value<CueMenu::Tag>(), CueMenu::ChooseCue);
    QCOMPARE(chosen.at(0).at(1).toString(), number);
}

void tst_CueMenu::namesAreShownAsTheyAre_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("itemText");
    QTest::addColumn<QString>("title");

    QTest::newRow("a mark of a mnemonic") << "A&B"
                                          << "A&&B"
                                          << "Cue: A&&B";
    QTest::newRow("two of them") << "A&&B"
                                 << "A&&&&B"
                                 << "Cue: A&&&&B";
    QTest::newRow("a border of the shortcuts") << "1\tCtrl+Q"
                                               << "1 Ctrl+Q"
                                               << "Cue: 1 Ctrl+Q";
    QTest::newRow("blanks") << " 1 "
                            << " 1 "
                            << "Cue:  1 ";
}

void tst_CueMenu::namesAreShownAsTheyAre() {
    QFETCH(const QString, number);
    QFETCH(const QString, itemText);
    QFETCH(const QString, title);

    CueMenu menu;
    menu.setupCueMenu({number}, {});
    QCOMPARE(menu.actions().last()->text(), itemText);
    menu.showCurrCue(number);
    QCOMPARE(menu.title(), title);
}

void tst_CueMenu::namesWiderThanAnyScreenAreCut() {
    CueMenu menu;
    menu.setupCueMenu({QString(200, u'7'), QString(201, u'7')}, {});
    QCOMPARE(menu.actions().at(9)->text(), QString(200, u'7'));
    QCOMPARE(menu.actions().at(10)->text(), QString(200, u'7') + u'…');
}

void tst_CueMenu::theCurrentCueIsChecked() {
    CueMenu menu;
    menu.setupCueMenu({"1", "2"}, "1");
    QCOMPARE(checkedTitles(menu), QStringList{"1"});
    menu.setupCueMenu({"1", "2"}, {});
    QCOMPARE(checkedTitles(menu), QStringList());
}

void tst_CueMenu::aCurrentCueThatIsNotListedIsNotChecked() {
    CueMenu menu;
    menu.setupCueMenu({"1", "2"}, "3");
    QCOMPARE(checkedTitles(menu), QStringList());
    menu.showCurrCue("01");
    QCOMPARE(checkedTitles(menu), QStringList());
    menu.showCurrCue("");
    QCOMPARE(checkedTitles(menu), QStringList());
}

void tst_CueMenu::theMarkMovesWithTheCurrentCue() {
    CueMenu menu;
    menu.setupCueMenu({"1", "2"}, {});
    menu.showCurrCue("1");
    QCOMPARE(checkedTitles(menu), QStringList{"1"});
    menu.showCurrCue("2");
    QCOMPARE(checkedTitles(menu), QStringList{"2"});
    menu.showCurrCue("1");
    QCOMPARE(checkedTitles(menu), QStringList{"1"});
    menu.showCurrCue({});
    QCOMPARE(checkedTitles(menu), QStringList());
}

void tst_CueMenu::choosingAnItemMovesNoMarkByItself() {
    CueMenu menu;
    menu.setupCueMenu({"1", "2"}, "1");
    menu.showCurrCue("2");
    menu.actions().at(9)->trigger();
    QCOMPARE(checkedTitles(menu), QStringList{"2"});
}

void tst_CueMenu::choosingTheCheckedItemLeavesItsMark() {
    CueMenu menu;
    menu.setupCueMenu({"1", "2"}, "2");
    menu.actions().last()->trigger();
    QCOMPARE(checkedTitles(menu), QStringList{"2"});
}

void tst_CueMenu::aCueNamedLikeACommandMarksTheCommand_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<int>("place");

    QTest::newRow("Clear") << "Clear" << 2;
    QTest::newRow("Store Cue") << "Store Cue" << 5;
    QTest::newRow("New Cue") << "New Cue\u2026" << 7;
}

// The first item of that title, as it is found by its title.
void tst_CueMenu::aCueNamedLikeACommandMarksTheCommand() {
    QFETCH(const QString, number);
    QFETCH(const int, place);

    CueMenu menu;
    menu.setupCueMenu({number}, number);
    QVERIFY(menu.actions().at(place)->isChecked());
    QVERIFY(!menu.actions().last()->isChecked());
    menu.actions().at(place)->trigger();
    QVERIFY(menu.actions().at(place)->isChecked());
    menu.actions().last()->trigger();
    QCOMPARE(checkedTitles(menu), QStringList{number});
    menu.showCurrCue({});
    QCOMPARE(checkedTitles(menu), QStringList());
}

void tst_CueMenu::theTitleNamesTheCurrentCue_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("title");

    QTest::newRow("listed") << "2.5"
                            << "Cue: 2.5";
    QTest::newRow("not listed") << "7"
                                << "Cue: 7";
}

void tst_CueMenu::theTitleNamesTheCurrentCue() {
    QFETCH(const QString, number);
    QFETCH(const QString, title);

    CueMenu menu;
    menu.setupCueMenu({"2.5"}, {});
    menu.showCurrCue(number);
    QCOMPARE(menu.title(), title);
    QCOMPARE(menu.menuAction()->text(), title);
    menu.showCurrCue({});
    QCOMPARE(menu.title(), QString("Cues"));
}

void tst_CueMenu::rebuildingLeavesTheTitle() {
    CueMenu menu;
    menu.showCurrCue("1");
    menu.setupCueMenu({"1", "2"}, "2");
    QCOMPARE(menu.title(), QString("Cue: 1"));
}

void tst_CueMenu::rebuildingReplacesTheItems() {
    CueMenu menu;
    menu.setupCueMenu({"1", "2"}, "2");
    menu.setupCueMenu({"3"}, {});
    QCOMPARE(titles(menu).mid(9), QStringList{"3"});
    QCOMPARE(checkedTitles(menu), QStringList());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(menu.findChildren<QAction*>().size(), menu.actions().size() + 1); // and the menu's own
}

void tst_CueMenu::itemsOfCuesThatStayAreKept_data() {
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<QList<int>>("kept");

    const QStringList three{"1", "2", "3"};
    QTest::newRow("the same") << three << three << QList<int>{0, 1, 2};
    QTest::newRow("one more in front") << three << QStringList{"0", "1", "2", "3"} << QList<int>{-1, 0, 1, 2};
    QTest::newRow("one more between")
        << three << QStringList{"1", "1.5", "2", "3"} << QList<int>{0, -1, 1, 2};
    QTest::newRow("one more behind") << three << QStringList{"1", "2", "3", "4"} << QList<int>{0, 1, 2, -1};
    QTest::newRow("without the first") << three << QStringList{"2", "3"} << QList<int>{1, 2};
    QTest::newRow("without the second") << three << QStringList{"1", "3"} << QList<int>{0, 2};
    QTest::newRow("without the last") << three << QStringList{"1", "2"} << QList<int>{0, 1};
    QTest::newRow("another in the place of one")
        << three << QStringList{"1", "5", "3"} << QList<int>{0, -1, 2};
    QTest::newRow("all others") << three << QStringList{"7", "8"} << QList<int>{-1, -1};
    QTest::newRow("none any more") << three << QStringList() << QList<int>();
    QTest::newRow("none before") << QStringList() << QStringList{"1"} << QList<int>{-1};
    QTest::newRow("one twice") << QStringList{"1", "1"} << QStringList{"1", "1", "1"} << QList<int>{0, 1, -1};
}

void tst_CueMenu::itemsOfCuesThatStayAreKept() {
    QFETCH(const QStringList, before);
    QFETCH(const QStringList, after);
    QFETCH(const QList<int>, kept);

    CueMenu menu;
    menu.setupCueMenu(before, {});
    const QList<QAction*> itemsBefore = menu.actions().mid(9);
    menu.setupCueMenu(after, {});
    QCOMPARE(titles(menu).mid(9), after);
    QList<int> found;
    for (QAction* const item : menu.actions().mid(9)) {
        found.append(static_cast<int>(itemsBefore.indexOf(item)));
    }
    QCOMPARE(found, kept);
}

void tst_CueMenu::anItemMayAskForTheRebuild() {
    QMainWindow window;
    CueMenu menu(&window);
    window.menuBar()->addMenu(&menu);
    menu.setupCueMenu({"1", "2"}, "1");
    connect(&menu, &CueMenu::cueAction, this, [&menu] { menu.setupCueMenu({"2"}, {}); });
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    menu.popup({});
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions().at(6)).center());
    QCOMPARE(titles(menu).mid(9), QStringList{"2"});
    menu.popup({});
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
    menu.actions().last()->trigger();
    QCoreApplication::processEvents();
    QCOMPARE(titles(menu).mid(9), QStringList{"2"});
}

void tst_CueMenu::altLeavesTheMenuOpen() {
    CueMenu menu;
    menu.setupCueMenu({"1"}, {});
    menu.popup({});
    QTest::keyClick(&menu, Qt::Key_Alt);
    QVERIFY(menu.isVisible());
    QTest::keyClick(&menu, Qt::Key_Escape);
    QVERIFY(!menu.isVisible());
}

void tst_CueMenu::tenThousandCuesAreListedAndShown() {
    constexpr int count = 10'000;
    QMainWindow window;
    CueMenu menu(&window);
    window.menuBar()->addMenu(&menu);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QStringList numbers;
    for (int cue = 0; cue < count; ++cue) {
        numbers.append(QString("%1.%2").arg(cue / 10).arg(cue % 10));
    }
    menu.setupCueMenu(numbers, numbers.last());
    menu.popup({});
    QCoreApplication::processEvents();
    QVERIFY(menu.isVisible());
    QCOMPARE(titles(menu).mid(9), numbers);
    QCOMPARE(checkedTitles(menu), QStringList{numbers.last()});
    menu.close();
}

QTEST_MAIN(tst_CueMenu)
#include "tst_CueMenu.moc"
