#include "TestConsole.h"

#include "rig/DMXControl.h"
#include "support/TestRig.h"
#include "window/AddressField.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QSessionManager>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <array>
#include <csignal>
#include <cstddef>

namespace {

QVariantMap rigOf(const QVariantList& views) {
    return {{"views", views}};
}

QVariantMap level(const QString& key, qlonglong value) {
    return {{"key", key}, {"value", value}, {"time", 0LL}};
}

/// What the session's manager does when the session ends. Only the toolkit can make such a manager; ours is
/// never asked for anything.
void endSession() {
    alignas(QSessionManager) static std::array<std::byte, sizeof(QSessionManager)> manager;
    emit qApp->commitDataRequest(reinterpret_cast<QSessionManager&>(manager));
}

/// What the event loop returns with; 99 when nothing ends it.
int statusOfEventLoop() {
    QTimer patience;
    QObject::connect(&patience, &QTimer::timeout, qApp, [] { QCoreApplication::exit(99); });
    patience.start(20'000);
    return QApplication::exec();
}

} // namespace

/// What the console leaves behind when it quits, and the ways there.
class tst_Quit : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theFirstQuitWritesTheDefaultConfigurationWithItsCues();
    void withAllControlsAtTheirDefaultsAnEmptyArrayIsKept();
    void levelsAreKeptForTheConfiguration();
    void whatTheConsoleDoesNotKnowIsKept();
    void theNextStartFindsEverythingAgain();
    void selectionsAreKeptInTheOrderOfTheFixtures();
    void theTitleOfTheWindowInFrontIsKept_data();
    void theTitleOfTheWindowInFrontIsKept();
    void whileAnotherProgramHasTheKeyboardItIsTheLastTitle();
    void aSheetCountsAsItsWindow();
    void anEditedFixtureIsKept();
    void itIsDoneOnce();
    void aFolderThatCannotBeWrittenIsSurvived();

    void everyWayToQuitKeepsTheLevels_data();
    void everyWayToQuitKeepsTheLevels();
    void theSessionsEndKeepsTheLevelsAtOnceAndQuits();
    void workInProgressIsNoObstacle_data();
    void workInProgressIsNoObstacle();

private:
    TestConsole& start() {
        console_.reset();
        console_ = std::make_unique<TestConsole>(*home_);
        console_->start();
        return *console_;
    }

    std::unique_ptr<ScratchHome> home_;
    std::unique_ptr<TestConsole> console_;
};

/// The configuration Tour: Spot with Dimmer and Pan, which rests at 128, and Wash with Dimmer.
void tst_Quit::init() {
    home_ = std::make_unique<ScratchHome>();
    home_->writeProfiles({});
    home_->writeConfigurations(
        {{"_default_configuration", "Tour"},
         {"Tour", rigOf({placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan", 128)}),
                         placement("Wash", 1, 10, {controlEntry("Dimmer")})})}});
}

void tst_Quit::cleanup() {
    console_.reset();
    home_.reset();
}

void tst_Quit::theFirstQuitWritesTheDefaultConfigurationWithItsCues() {
    TestConsole& console = start();
    console.newCue("3");
    console.quit();
    QVariantMap expected = rigOf({placement("Spot", 0, 1, {controlEntry("Dimmer"), controlEntry("Pan", 128)}),
                                  placement("Wash", 1, 10, {controlEntry("Dimmer")})});
    expected.insert("cues", QVariantMap{{"3", "cue data goes here"}});
    QCOMPARE(home_->settings(), std::optional(expected));
    QCOMPARE(home_->userDefaults().value("configName"), QVariant("Tour"));
}

void tst_Quit::withAllControlsAtTheirDefaultsAnEmptyArrayIsKept() {
    start().quit();
    QCOMPARE(home_->userDefaults().value("saved_state: Tour"), QVariant(QVariantList()));
}

void tst_Quit::levelsAreKeptForTheConfiguration() {
    home_->writeUserDefaults({{"saved_state: Foyer", QVariantList{level("Lamp.Dimmer", 1)}}});
    TestConsole& console = start();
    console_->control("Spot.Dimmer").setValue(200);
    console_->control("Spot.Pan").setValue(0);
    console.quit();
    QCOMPARE(home_->userDefaults().value("saved_state: Tour").toList(),
             (QVariantList{level("Spot.Dimmer", 200), level("Spot.Pan", 0)}));
    QCOMPARE(home_->userDefaults().value("saved_state: Foyer").toList(),
             QVariantList{level("Lamp.Dimmer", 1)});
}

void tst_Quit::whatTheConsoleDoesNotKnowIsKept() {
    const QVariantMap rig{{"views", QVariantList()}, {"house", "Old Town"}, {"seats", 420LL}, {"open", true}};
    home_->writeSettings(rig);
    home_->writeUserDefaults({{"configName", "Tour"}, {"a key of somebody else", 0.5}});
    start().quit();
    QCOMPARE(home_->settings(), std::optional(rig));
    QCOMPARE(home_->userDefaults().value("a key of somebody else"), QVariant(0.5));
}

void tst_Quit::theNextStartFindsEverythingAgain() {
    TestConsole& first = start();
    console_->control("Wash.Dimmer").setDMXValue(70, 0);
    console_->select("Wash.Dimmer");
    activate(console_->fixtureWindow(0));
    first.newCue(" A&B ");
    first.window().addressField().setText("127.0.0.73");
    QTest::keyClick(&first.window().addressField(), Qt::Key_Return);
    activate(console_->fixtureWindow(0));
    first.quit();

    TestConsole& second = start();
    QCOMPARE(second.configurations(), QStringList{"Tour *"});
    QCOMPARE(console_->control("Wash.Dimmer").value(), 70U);
    QCOMPARE(console_->fixture(1).selectedControl(), &console_->control("Wash.Dimmer"));
    QCOMPARE(second.cues(), QStringList{" A&&B "});
    QCOMPARE(second.window().cueMenu().title(), QString("Cues"));
    QCOMPARE(second.window().addressField().text(), QString("127.0.0.73"));
    QTRY_COMPARE(QApplication::activeWindow(), &console_->fixtureWindow(0));
}

void tst_Quit::selectionsAreKeptInTheOrderOfTheFixtures() {
    TestConsole& console = start();
    console_->select("Wash.Dimmer");
    console.quit();
    QCOMPARE(home_->userDefaults().value("control_selections").toList(), (QVariantList{"", "Wash.Dimmer"}));
}

void tst_Quit::theTitleOfTheWindowInFrontIsKept_data() {
    QTest::addColumn<int>("fixtureInFront");
    QTest::addColumn<QString>("title");

    QTest::newRow("the main window") << -1 << "Faderhall";
    QTest::newRow("the first fixture") << 0 << "Spot Univ: 0 Addr: 1";
    QTest::newRow("the second fixture") << 1 << "Wash Univ: 1 Addr: 10";
}

void tst_Quit::theTitleOfTheWindowInFrontIsKept() {
    QFETCH(const int, fixtureInFront);
    QFETCH(const QString, title);

    TestConsole& console = start();
    QWidget* const front = fixtureInFront < 0
                               ? static_cast<QWidget*>(&console.window())
                               : &console.fixtureWindow(static_cast<std::size_t>(fixtureInFront));
    activate(*front);
    console.quit();
    QCOMPARE(home_->userDefaults().value("mainWindowTitle"), QVariant(title));
}

void tst_Quit::whileAnotherProgramHasTheKeyboardItIsTheLastTitle() {
    TestConsole& console = start();
    activate(console_->fixtureWindow(0));
    QApplication::setActiveWindow(nullptr);
    QVERIFY(!QApplication::activeWindow());
    console.quit();
    QCOMPARE(home_->userDefaults().value("mainWindowTitle"), QVariant("Spot Univ: 0 Addr: 1"));
}

void tst_Quit::aSheetCountsAsItsWindow() {
    TestConsole& console = start();
    console.chooseCueItem("New Cue…");
    activate(*console.sheet());
    console.quit();
    QCOMPARE(home_->userDefaults().value("mainWindowTitle"), QVariant("Faderhall"));
}

void tst_Quit::anEditedFixtureIsKept() {
    TestConsole& console = start();
    QAbstractItemModel& table = *console.window().tableview().model();
    QVERIFY(table.setData(table.index(0, 2), "17"));
    QVERIFY(table.setData(table.index(1, 1), "5"));
    activate(console_->fixtureWindow(0));
    console.quit();
    const QVariantList views = home_->settings().value().value("views").toList();
    QCOMPARE(views.at(0).toMap().value("address"), QVariant(17LL));
    QCOMPARE(views.at(1).toMap().value("universe"), QVariant(5LL));
    QCOMPARE(home_->userDefaults().value("mainWindowTitle"), QVariant("Spot Univ: 0 Addr: 17"));
}

void tst_Quit::itIsDoneOnce() {
    TestConsole& console = start();
    console_->control("Spot.Dimmer").setValue(200);
    console.quit();
    const auto settings = home_->settings();
    const QVariantMap defaults = home_->userDefaults();
    console_->control("Spot.Dimmer").setValue(100);
    console.newCue("4");
    console.quit();
    endSession();
    QCOMPARE(home_->settings(), settings);
    QCOMPARE(home_->userDefaults(), defaults);
    console_.reset();
    QCOMPARE(home_->settings(), settings);
    QCOMPARE(home_->userDefaults(), defaults);
}

void tst_Quit::aFolderThatCannotBeWrittenIsSurvived() {
    TestConsole& console = start();
    // Files stand where the folders would have to be.
    const QString home = qEnvironmentVariable("HOME");
    QFile library(home + "/Library");
    QVERIFY(library.open(QIODevice::WriteOnly));
    QDir(home + "/.config").removeRecursively();
    QFile configuration(home + "/.config");
    QVERIFY(configuration.open(QIODevice::WriteOnly));
    console.quit();
    QVERIFY(!home_->settings());
    QCOMPARE(home_->userDefaults(), QVariantMap());
}

void tst_Quit::everyWayToQuitKeepsTheLevels_data() {
    QTest::addColumn<QString>("way");

    QTest::newRow("closing the main window") << "close";
    QTest::newRow("Ctrl+Q in the main window") << "Ctrl+Q";
    QTest::newRow("Ctrl+Q in a fixture window") << "Ctrl+Q there";
    QTest::newRow("Ctrl+Q in a fixture window with a sheet open") << "Ctrl+Q and sheet";
    QTest::newRow("SIGTERM") << "SIGTERM";
    QTest::newRow("SIGINT") << "SIGINT";
    QTest::newRow("SIGHUP") << "SIGHUP";
    QTest::newRow("the session ends") << "session";
    QTest::newRow("the toolkit is asked to quit") << "toolkit";
}

void tst_Quit::everyWayToQuitKeepsTheLevels() {
    QFETCH(const QString, way);

    TestConsole& console = start();
    console_->control("Spot.Dimmer").setValue(200);
    activate(console.fixtureWindow(1));
    QTimer::singleShot(0, this, [&way, &console] {
        if (way == "close") {
            console.window().close();
        } else if (way == "Ctrl+Q") {
            activate(console.window());
            QTest::keyClick(&console.window(), Qt::Key_Q, Qt::ControlModifier);
        } else if (way.startsWith("Ctrl+Q ")) {
            if (way == "Ctrl+Q and sheet") {
                console.chooseCueItem("New Cue…");
                activate(console.fixtureWindow(1));
            }
            QTest::keyClick(&console.fixtureWindow(1), Qt::Key_Q, Qt::ControlModifier);
        } else if (way == "session") {
            endSession();
        } else if (way == "toolkit") {
            QApplication::quit();
        } else {
            std::raise(way == "SIGTERM" ? SIGTERM : way == "SIGINT" ? SIGINT : SIGHUP);
        }
    });
    QCOMPARE(statusOfEventLoop(), 0);
    console.quit();
    QCOMPARE(home_->userDefaults().value("saved_state: Tour").toList(),
             QVariantList{level("Spot.Dimmer", 200)});
    QVERIFY(home_->settings());
}

void tst_Quit::theSessionsEndKeepsTheLevelsAtOnceAndQuits() {
    start();
    console_->control("Spot.Dimmer").setValue(200);
    QTimer::singleShot(0, this, [this] {
        endSession();
        QCOMPARE(home_->userDefaults().value("saved_state: Tour").toList(),
                 QVariantList{level("Spot.Dimmer", 200)});
    });
    QCOMPARE(statusOfEventLoop(), 0);
}

void tst_Quit::workInProgressIsNoObstacle_data() {
    QTest::addColumn<QString>("work");

    QTest::newRow("a number half typed") << "number";
    QTest::newRow("a fade") << "fade";
    QTest::newRow("a drag") << "drag";
    QTest::newRow("a sheet") << "sheet";
    QTest::newRow("a cell being edited") << "cell";
    QTest::newRow("an open menu") << "menu";
}

void tst_Quit::workInProgressIsNoObstacle() {
    QFETCH(const QString, work);

    TestConsole& console = start();
    DMXControl& fader = console.control("Spot.Dimmer");
    activate(console.fixtureWindow(0));
    ControlView& view = console.select("Spot.Dimmer");
    if (work == "number") {
        QTest::keyClicks(&view, "12");
    } else if (work == "fade") {
        fader.setDMXValue(255, 60);
        console.tick();
    } else if (work == "drag") {
        QTest::mousePress(&view, Qt::LeftButton, {}, TestConsole::placeOf(fader) + QPoint(10, 9));
        QTest::mouseMove(&view, TestConsole::placeOf(fader) + QPoint(60, 9));
    } else if (work == "sheet") {
        console.chooseConfiguration("Tour");
    } else if (work == "cell") {
        activate(console.window());
        QTableView& table = console.window().tableview();
        table.setCurrentIndex(table.model()->index(0, 2));
        QTest::keyClick(&table, Qt::Key_F2);
        QVERIFY(table.viewport()->findChild<QLineEdit*>());
    } else {
        console.window().cueMenu().popup({});
    }
    console.quit();
    console_.reset();
    QVERIFY(home_->settings());
    QCOMPARE(home_->userDefaults().value("configName"), QVariant("Tour"));
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
        QVERIFY(!window->isVisible());
    }
}

QTEST_MAIN(tst_Quit)
#include "tst_Quit.moc"
