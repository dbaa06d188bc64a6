#include "TestConsole.h"

#include "rig/DMXControl.h"
#include "support/DatagramListener.h"
#include "support/TestClock.h"
#include "support/TestRig.h"
#include "window/CueMenu.h"
#include "window/ModifierKeys.h"
#include "window/WindowMenu.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

namespace {

constexpr std::uint8_t OwnAddress = 75;
constexpr std::uint64_t Second = 1'000'000'000;
constexpr std::uint64_t Tick = 33'300'000;

bool gOptionHeld = false;

QVariantMap record(const QString& key, qlonglong value, double time) {
    return {{"key", key}, {"value", value}, {"time", time}};
}

} // namespace

/// What an operator does with the menus and the table while the console runs. A rig of Spot and Wash; the
/// cues 1 (Spot at 10), 2 (Spot to 200 over 2 seconds) and 10 (a placeholder).
class tst_Operating : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aNewCueIsAskedFor();
    void aNewCueIsListedCurrentAndEmpty();
    void aNewCueWithoutANumberIsNone();
    void aCancelledNewCueIsNone();
    void aNewCueReplacesAStoredOne();
    void aNewCueMayBeNamedLikeACommand();
    void numbersAreTakenAsTypedAndSurviveTheFile();
    void theFirstCueMakesTheTable();

    void aChosenCueIsExecutedMarkedAndNamed();
    void nextAndPreviousGoRound();
    void withOptionHeldACueIsOnlySelected();
    void storingKeepsMenuMarkAndTitle();
    void clearTakesLevelsTimesAndMark();
    void clearTimingTakesTimesAndMark();
    void deletingRebuildsTheMenu();
    void commandsWithoutACurrentCueDoNothing();
    void commandsWorkByTheirKeysInEveryWindow();

    void anEditedAddressMovesTheFixtureAndTheMenuFollows();
    void everyEditScansTheWindows_data();
    void everyEditScansTheWindows();
    void anEditedFixtureSendsToItsNewSlots();

    void aSecondQuestionIsNotAskedAtTheSameTime();
    void twoFixturesInOneUniverseShareADatagram();
    void unchangedLevelsGiveADatagramPerSecond();

private:
    QString title() { return console_->window().cueMenu().title(); }
    QVariantMap storedCues() {
        console_->quit();
        return home_->settings().value().value("cues").toMap();
    }

    std::unique_ptr<ScratchHome> home_;
    std::unique_ptr<TestConsole> console_;
};

void tst_Operating::init() {
    gOptionHeld = false;
    setModifierKeys([] { return Qt::KeyboardModifiers(gOptionHeld ? Qt::AltModifier : Qt::NoModifier); });
    home_ = std::make_unique<ScratchHome>();
    home_->writeProfiles({});
    home_->writeUserDefaults({{"tx_address", "127.0.0.75"}});
    home_->writeSettings({{"views", QVariantList{placement("Spot", 0, 1, {controlEntry("Dimmer")}),
                                                 placement("Wash", 0, 10, {controlEntry("Dimmer", 50)})}},
                          {"cues", QVariantMap{{"1", QVariantList{record("Spot.Dimmer", 10, 0)}},
                                               {"2", QVariantList{record("Spot.Dimmer", 200, 2)}},
                                               {"10", "cue data goes here"}}}});
    console_ = std::make_unique<TestConsole>(*home_);
    console_->start();
}

void tst_Operating::cleanup() {
    console_.reset();
    home_.reset();
    setModifierKeys(nullptr);
}

void tst_Operating::aNewCueIsAskedFor() {
    console_->chooseCueItem("New Cue…");
    QStringList texts;
    for (const QLabel* label : console_->sheet()->findChildren<QLabel*>()) {
        texts.append(label->text());
    }
    QCOMPARE(texts.first(), QString("Enter new cue number"));
    QCOMPARE(console_->sheet()->findChild<QLineEdit*>()->text(), QString());
    QCOMPARE(console_->cues(), (QStringList{"1", "2", "10"}));
}

void tst_Operating::aNewCueIsListedCurrentAndEmpty() {
    console_->control("Spot.Dimmer").setValue(30);
    console_->newCue("3");
    QVERIFY(!console_->sheet());
    QCOMPARE(console_->cues(), (QStringList{"1", "2", "3 *", "10"}));
    QCOMPARE(title(), QString("Cue: 3"));
    QCOMPARE(console_->control("Spot.Dimmer").value(), 30U);
    QCOMPARE(storedCues().value("3"), QVariant("cue data goes here"));
}

void tst_Operating::aNewCueWithoutANumberIsNone() {
    console_->chooseCueItem("2");
    console_->newCue("");
    QCOMPARE(console_->cues(), (QStringList{"1", "2 *", "10"}));
    QCOMPARE(title(), QString("Cue: 2"));
    QCOMPARE(storedCues().keys(), (QStringList{"1", "10", "2"}));
}

void tst_Operating::aCancelledNewCueIsNone() {
    console_->chooseCueItem("New Cue…");
    QTest::keyClicks(console_->sheet()->findChild<QLineEdit*>(), "3");
    QTest::keyClick(console_->sheet(), Qt::Key_Escape);
    QCOMPARE(console_->cues(), (QStringList{"1", "2", "10"}));
    QCOMPARE(title(), QString("Cues"));
    QCOMPARE(storedCues().keys(), (QStringList{"1", "10", "2"}));
}

void tst_Operating::aNewCueReplacesAStoredOne() {
    console_->newCue("2");
    QCOMPARE(console_->cues(), (QStringList{"1", "2 *", "10"}));
    QCOMPARE(storedCues().value("2"), QVariant("cue data goes here"));
}

void tst_Operating::aNewCueMayBeNamedLikeACommand() {
    console_->newCue("Clear");
    QCOMPARE(console_->cues(), (QStringList{"Clear", "1", "2", "10"}));
    QCOMPARE(title(), QString("Cue: Clear"));
    QVERIFY(console_->window().cueMenu().actions().at(2)->isChecked());
    console_->control("Spot.Dimmer").setValue(30);
    console_->chooseCueItem("Store Cue");
    console_->window().cueMenu().actions().at(9)->trigger(); // the cue, not the command
    QCOMPARE(console_->control("Spot.Dimmer").value(), 30U);
    QCOMPARE(title(), QString("Cue: Clear"));
    console_->window().cueMenu().actions().at(2)->trigger(); // the command
    QCOMPARE(console_->control("Spot.Dimmer").value(), 0U);
    QCOMPARE(title(), QString("Cues"));
    QVERIFY(!console_->window().cueMenu().actions().at(2)->isChecked());
    QVERIFY(storedCues().contains("Clear"));
}

void tst_Operating::numbersAreTakenAsTypedAndSurviveTheFile() {
    const QStringList numbers{" 4 ", "A&B", "<b>", "01", "1.", "\u00c4 1"};
    for (const QString& number : numbers) {
        console_->newCue(number);
        QCOMPARE(title(), "Cue: " + QString(number).replace('&', "&&"));
    }
    const QVariantMap stored = storedCues();
    for (const QString& number : numbers) {
        QCOMPARE(stored.value(number), QVariant("cue data goes here"));
    }
    QCOMPARE(stored.size(), 9);
}

void tst_Operating::theFirstCueMakesTheTable() {
    console_.reset();
    home_->writeSettings(QVariantMap{{"views", QVariantList()}, {"cues", "none yet"}});
    console_ = std::make_unique<TestConsole>(*home_);
    console_->start();
    QCOMPARE(console_->cues(), QStringList());
    console_->newCue("1");
    QCOMPARE(console_->cues(), QStringList{"1 *"});
    QCOMPARE(storedCues(), (QVariantMap{{"1", "cue data goes here"}}));
}

void tst_Operating::aChosenCueIsExecutedMarkedAndNamed() {
    console_->control("Wash.Dimmer").setValue(90);
    console_->chooseCueItem("1");
    QCOMPARE(console_->cues(), (QStringList{"1 *", "2", "10"}));
    QCOMPARE(title(), QString("Cue: 1"));
    QCOMPARE(console_->control("Spot.Dimmer").value(), 10U);
    QCOMPARE(console_->control("Wash.Dimmer").value(), 50U);
    console_->chooseCueItem("10");
    QCOMPARE(console_->cues(), (QStringList{"1", "2", "10 *"}));
    QCOMPARE(console_->control("Spot.Dimmer").value(), 10U);
}

void tst_Operating::nextAndPreviousGoRound() {
    QStringList titles;
    for (const char* command : {"Next Cue", "Next Cue", "Next Cue", "Next Cue", "Prev Cue", "Prev Cue"}) {
        console_->chooseCueItem(command);
        titles.append(title());
    }
    QCOMPARE(titles, (QStringList{"Cue: 1", "Cue: 2", "Cue: 10", "Cue: 1", "Cue: 10", "Cue: 2"}));
    QCOMPARE(console_->cues(), (QStringList{"1", "2 *", "10"}));
    console_->chooseCueItem("Clear");
    console_->chooseCueItem("Prev Cue");
    QCOMPARE(title(), QString("Cue: 10"));
}

void tst_Operating::withOptionHeldACueIsOnlySelected() {
    console_->control("Spot.Dimmer").setValue(30);
    console_->control("Spot.Dimmer").setTime(4);
    console_->control("Wash.Dimmer").setValue(90);
    console_->control("Wash.Dimmer").setTime(5);
    gOptionHeld = true;
    console_->chooseCueItem("2");
    QCOMPARE(title(), QString("Cue: 2"));
    QCOMPARE(console_->cues(), (QStringList{"1", "2 *", "10"}));
    console_->chooseCueItem("Prev Cue");
    QCOMPARE(console_->cues(), (QStringList{"1 *", "2", "10"}));
    QCOMPARE(console_->control("Spot.Dimmer").value(), 30U);
    QCOMPARE(console_->control("Spot.Dimmer").time(), 4.0F);
    QCOMPARE(console_->control("Wash.Dimmer").value(), 90U);
    QCOMPARE(console_->control("Wash.Dimmer").time(), 5.0F);
}

void tst_Operating::storingKeepsMenuMarkAndTitle() {
    console_->chooseCueItem("10");
    console_->control("Wash.Dimmer").setDMXValue(90, 1.5F);
    console_->control("Wash.Dimmer").setValue(90);
    console_->chooseCueItem("Store Cue");
    QCOMPARE(console_->cues(), (QStringList{"1", "2", "10 *"}));
    QCOMPARE(title(), QString("Cue: 10"));
    QCOMPARE(storedCues().value("10").toList(), QVariantList{record("Wash.Dimmer", 90, 1.5)});
}

void tst_Operating::clearTakesLevelsTimesAndMark() {
    console_->chooseCueItem("1");
    console_->control("Wash.Dimmer").setTime(3);
    console_->chooseCueItem("Clear");
    QCOMPARE(console_->control("Spot.Dimmer").value(), 0U);
    QCOMPARE(console_->control("Wash.Dimmer").time(), 0.0F);
    QCOMPARE(console_->cues(), (QStringList{"1", "2", "10"}));
    QCOMPARE(title(), QString("Cues"));
}

void tst_Operating::clearTimingTakesTimesAndMark() {
    console_->chooseCueItem("1");
    console_->control("Wash.Dimmer").setTime(3);
    console_->chooseCueItem("Clear Timing");
    QCOMPARE(console_->control("Spot.Dimmer").value(), 10U);
    QCOMPARE(console_->control("Wash.Dimmer").time(), 0.0F);
    QCOMPARE(console_->cues(), (QStringList{"1", "2", "10"}));
    QCOMPARE(title(), QString("Cues"));
}

void tst_Operating::deletingRebuildsTheMenu() {
    console_->chooseCueItem("1");
    CueMenu& menu = console_->window().cueMenu();
    menu.popup({});
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions().at(6)).center());
    QCOMPARE(console_->cues(), (QStringList{"2", "10"}));
    QCOMPARE(title(), QString("Cues"));
    QCOMPARE(console_->control("Spot.Dimmer").value(), 10U);
    QCoreApplication::processEvents();
    QCOMPARE(storedCues().keys(), (QStringList{"10", "2"}));
}

void tst_Operating::commandsWithoutACurrentCueDoNothing() {
    console_->control("Spot.Dimmer").setValue(30);
    console_->chooseCueItem("Store Cue");
    console_->chooseCueItem("Delete Cue");
    QCOMPARE(console_->cues(), (QStringList{"1", "2", "10"}));
    QCOMPARE(title(), QString("Cues"));
    QCOMPARE(console_->control("Spot.Dimmer").value(), 30U);
    QCOMPARE(storedCues().value("1").toList(), QVariantList{record("Spot.Dimmer", 10, 0)});
}

void tst_Operating::commandsWorkByTheirKeysInEveryWindow() {
    for (QWidget* window : std::initializer_list<QWidget*>{&console_->window(), &console_->fixtureWindow(0),
                                                           &console_->fixtureWindow(1)}) {
        activate(*window);
        QTest::keyClick(window, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(title(), QString("Cue: 1"));
        QTest::keyClick(window, Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(title(), QString("Cue: 10"));
        console_->control("Spot.Dimmer").setValue(7);
        QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
        QTest::keyClick(window, Qt::Key_X, Qt::ControlModifier | Qt::AltModifier);
        QCOMPARE(title(), QString("Cues"));
        QCOMPARE(console_->control("Spot.Dimmer").value(), 7U);
        QTest::keyClick(window, Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(console_->control("Spot.Dimmer").value(), 0U);
        QTest::keyClick(window, Qt::Key_N, Qt::ControlModifier);
        QVERIFY(console_->sheet());
        console_->sheet()->reject();
        QTest::keyClick(window, Qt::Key_2, Qt::ControlModifier);
        QTRY_COMPARE(QApplication::activeWindow(), &console_->fixtureWindow(1));
    }
    QCOMPARE(storedCues().value("10").toList(), QVariantList{record("Spot.Dimmer", 7, 0)});
}

void tst_Operating::anEditedAddressMovesTheFixtureAndTheMenuFollows() {
    activate(console_->window());
    QTableView& table = console_->window().tableview();
    table.setCurrentIndex(table.model()->index(0, 2));
    QTest::keyClick(&table, Qt::Key_F2);
    auto* const editor = table.viewport()->findChild<QLineEdit*>();
    QVERIFY(editor);
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier); // selects, and is no Next Cue
    QTest::keyClicks(editor, "17");
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(console_->fixture(0).address(), 17U);
    QCOMPARE(title(), QString("Cues"));
    QCOMPARE(table.model()->index(0, 2).data().toString(), QString("17"));
    QCOMPARE(console_->fixtures().at(0), QString("Spot Univ: 0 Addr: 17"));
    const QAction* const item = console_->window().windowMenu().actions().at(1);
    QCOMPARE(item->text(), QString("Spot Univ: 0 Addr: 17"));
    QCOMPARE(item->shortcut(), QKeySequence("Ctrl+1"));
    console_->quit();
    QCOMPARE(home_->settings().value().value("views").toList().at(0).toMap().value("address"),
             QVariant(17LL));
}

void tst_Operating::everyEditScansTheWindows_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");

    QTest::newRow("an address") << 0 << 2;
    QTest::newRow("a universe") << 1 << 1;
    QTest::newRow("a name, which stays") << 0 << 0;
    QTest::newRow("a row without a fixture") << 7 << 2;
}

void tst_Operating::everyEditScansTheWindows() {
    QFETCH(const int, row);
    QFETCH(const int, column);

    // A title that the menu does not know yet.
    console_->fixture(0).setUniverse(7);
    console_->fixture(0).rescanControls();
    const auto listed = [this] { return console_->window().windowMenu().actions().at(1)->text(); };
    QVERIFY(listed() != console_->fixtures().at(0));
    QAbstractItemModel& table = *console_->window().tableview().model();
    table.setData(table.index(row, column), "3");
    QCOMPARE(listed(), console_->fixtures().at(0));
}

void tst_Operating::anEditedFixtureSendsToItsNewSlots() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    console_->control("Spot.Dimmer").setValue(30);
    QAbstractItemModel& table = *console_->window().tableview().model();
    QVERIFY(table.setData(table.index(0, 1), "3"));
    QVERIFY(table.setData(table.index(0, 2), "512"));
    listener.takeArrived();
    console_->tick();
    const auto datagrams = listener.waitFor(1);
    const auto isUniverse3 = [](const QByteArray& datagram) { return datagram.at(14) == 3; };
    const auto sent = std::ranges::find_if(datagrams, isUniverse3);
    QVERIFY(sent != datagrams.end());
    QCOMPARE(sent->at(18), char(0));
    QCOMPARE(sent->at(529), char(30));
}

void tst_Operating::aSecondQuestionIsNotAskedAtTheSameTime() {
    console_->chooseCueItem("New Cue…");
    QDialog* const first = console_->sheet();
    activate(console_->fixtureWindow(0));
    QTest::keyClick(&console_->fixtureWindow(0), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(console_->sheet(), first);
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget*>(first));
    first->reject();
    QVERIFY(!console_->sheet());
}

void tst_Operating::twoFixturesInOneUniverseShareADatagram() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    TestClock clock(1000 * Second); // the console's own ticks see it stand still
    console_->tick();
    listener.takeArrived();
    console_->control("Spot.Dimmer").setValue(30);
    console_->control("Wash.Dimmer").setValue(40);
    console_->tick();
    console_->tick();
    const auto datagrams = listener.takeArrived();
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(datagrams.at(0).at(18), char(30));
    QCOMPARE(datagrams.at(0).at(27), char(40));
    clock.advance(Second);
    console_->tick();
    console_->tick();
    QCOMPARE(listener.takeArrived().size(), 1);
}

void tst_Operating::unchangedLevelsGiveADatagramPerSecond() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    TestClock clock(1000 * Second);
    console_->control("Spot.Dimmer").setValue(30);
    console_->tick();
    listener.takeArrived();
    // The first tick after a whole second is the 31st.
    for (int tick = 0; tick < 310; ++tick) {
        clock.advance(Tick);
        console_->tick();
    }
    const auto datagrams = listener.waitFor(10);
    QCOMPARE(datagrams.size(), 10);
    for (const QByteArray& datagram : datagrams) {
        QCOMPARE(datagram.at(14), char(0));
        QCOMPARE(datagram.at(18), char(30));
        QCOMPARE(datagram.at(27), char(50));
    }
    QCOMPARE(listener.takeArrived().size(), 0);
}

QTEST_MAIN(tst_Operating)
#include "tst_Operating.moc"
