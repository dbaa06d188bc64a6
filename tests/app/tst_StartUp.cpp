#include "TestConsole.h"

#include "rig/DMXControl.h"
#include "support/DatagramListener.h"
#include "support/StandardOutput.h"
#include "support/TestClock.h"
#include "support/TestRig.h"
#include "window/AddressField.h"
#include "window/WindowMenu.h"

#include <QApplication>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

namespace {

constexpr std::uint8_t OwnAddress = 76;
constexpr std::uint64_t Second = 1'000'000'000;
const char* const ownAddress = "127.0.0.76";

QVariantMap rigOf(const QVariantList& views) {
    return {{"views", views}};
}

/// What the console prints during an action, without what the test framework says in between.
QByteArray saidDuring(const std::function<void()>& action) {
    QByteArray said;
    for (const QByteArray& line : standardOutputOf(action).split('\n')) {
        if (!line.isEmpty() && !line.startsWith("QWARN")) {
            said += line + '\n';
        }
    }
    return said;
}

QVariantMap named(const QString& profile) {
    return {{"profile", profile}};
}

} // namespace

/// What the console makes of its files when it starts.
class tst_StartUp : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theFirstStartLoadsTheDefaultConfiguration();
    void theSettingsFileWinsOverTheDefaultConfiguration();
    void aSettingsFileWithoutANameIsAnUnknownConfiguration();
    void withoutASettingsFileTheDefaultWinsOverTheStoredName();
    void anEmptyStoredNameIsAName();
    void theNameOfTheDefaultIsNotListed();
    void configurationsAreListedOnceAndWithoutKeys();

    void aUserProfileReplacesAResourceProfileAndIsNamedOnce();
    void withoutUserProfilesNothingIsSaid();
    void withoutProfilesFixturesHaveNoControls();
    void withoutProfilesUserProfilesAreNotKept();
    void withoutConfigurationsTheMenuIsEmpty();
    void withoutTablesTheSettingsFileIsEnough();
    void aDefaultThatIsNotInTheTableLoadsNothing();
    void aTableWithoutADefaultLoadsNothing();
    void withoutViewsThereAreNoFixtures();
    void aSettingsFileThatCannotBeReadIsNone_data();
    void aSettingsFileThatCannotBeReadIsNone();

    void theLevelsOfTheConfigurationAreRestored();
    void theWindowThatWasInFrontComesToTheFront_data();
    void theWindowThatWasInFrontComesToTheFront();
    void theLastFixtureIsInFrontOtherwise();
    void theSelectionsAreRestored();
    void theStoredAddressIsApplied();
    void aStoredAddressThatIsNoneIsRefused();
    void aTypedAddressIsAppliedOrUndone();
    void theFirstTickSendsTheRestoredLevelsToTheStoredAddress();
    void withoutFixturesNoDatagramIsSent();
    void aUniverseWithoutFixturesIsNotSent();
    void theTableShowsTheFixtures();
    void theCueMenuListsTheCues();
    void theWindowMenuNumbersTheWindows();

    void settingsOfAnyTypesAreSurvivedAndKept_data();
    void settingsOfAnyTypesAreSurvivedAndKept();
    void userDefaultsOfAnyTypesAreSurvived_data();
    void userDefaultsOfAnyTypesAreSurvived();

private:
    TestConsole& start() {
        console_ = std::make_unique<TestConsole>(*home_);
        console_->start();
        return *console_;
    }

    std::unique_ptr<ScratchHome> home_;
    std::unique_ptr<TestConsole> console_;
};

/// Two configurations, Foyer and Tour, of which Tour is the default, and a profile Dimmer.
void tst_StartUp::init() {
    home_ = std::make_unique<ScratchHome>();
    home_->writeProfiles({{"Dimmer", QVariantList{controlEntry("Level")}}});
    home_->writeConfigurations({{"_default_configuration", "Tour"},
                                {"Tour", rigOf({placement("Spot", 0, 1, {named("Dimmer")}),
                                                placement("Wash", 1, 10, {named("Dimmer")})})},
                                {"Foyer", rigOf({placement("Lamp", 4, 1, {named("Dimmer")})})}});
}

void tst_StartUp::cleanup() {
    console_.reset();
    home_.reset();
}

void tst_StartUp::theFirstStartLoadsTheDefaultConfiguration() {
    TestConsole& console = start();
    QCOMPARE(console.configurations(), (QStringList{"Foyer", "Tour *"}));
    QCOMPARE(console.fixtures(), (QStringList{"Spot Univ: 0 Addr: 1", "Wash Univ: 1 Addr: 10"}));
    QVERIFY(console.fixtureWindow(0).isVisible());
    QVERIFY(console.fixtureWindow(1).isVisible());
    QVERIFY(console.window().isVisible());
    QCOMPARE(console.window().addressField().text(), QString("127.0.0.1"));
    console_->control("Spot.Level").setValue(9);
    console.quit();
    QCOMPARE(home_->userDefaults().value("tx_address"), QVariant("127.0.0.1"));
    QCOMPARE(home_->userDefaults().value("configName"), QVariant("Tour"));
    QCOMPARE(home_->userDefaults().value("saved_state: Tour").toList().size(), 1);
}

void tst_StartUp::theSettingsFileWinsOverTheDefaultConfiguration() {
    home_->writeSettings(rigOf({placement("Mine", 2, 3, {named("Dimmer")})}));
    home_->writeUserDefaults({{"configName", "Foyer"}});
    TestConsole& console = start();
    QCOMPARE(console.fixtures(), QStringList{"Mine Univ: 2 Addr: 3"});
    QCOMPARE(console.configurations(), (QStringList{"Foyer *", "Tour"}));
}

void tst_StartUp::aSettingsFileWithoutANameIsAnUnknownConfiguration() {
    home_->writeSettings(rigOf({placement("Mine", 2, 3, {named("Dimmer")})}));
    TestConsole& console = start();
    QCOMPARE(console.fixtures(), QStringList{"Mine Univ: 2 Addr: 3"});
    QCOMPARE(console.configurations(), (QStringList{"Foyer", "Tour"}));
    console_->control("Mine.Level").setValue(9);
    console.quit();
    QCOMPARE(home_->userDefaults().value("configName"), QVariant("unknown_config"));
    QCOMPARE(home_->userDefaults().value("saved_state: unknown_config").toList().size(), 1);
}

void tst_StartUp::withoutASettingsFileTheDefaultWinsOverTheStoredName() {
    home_->writeUserDefaults({{"configName", "Foyer"}});
    TestConsole& console = start();
    QCOMPARE(console.configurations(), (QStringList{"Foyer", "Tour *"}));
    QCOMPARE(console.fixtures().size(), 2);
}

void tst_StartUp::anEmptyStoredNameIsAName() {
    home_->writeSettings(rigOf({}));
    home_->writeUserDefaults({{"configName", ""}});
    TestConsole& console = start();
    console.quit();
    QCOMPARE(home_->userDefaults().value("configName"), QVariant(""));
    QVERIFY(home_->userDefaults().contains("saved_state: "));
}

void tst_StartUp::theNameOfTheDefaultIsNotListed() {
    home_->writeConfigurations(
        {{"_default_configuration", rigOf({placement("Lamp", 0, 1, {})})}, {"Tour", rigOf({})}});
    TestConsole& console = start();
    QCOMPARE(console.configurations(), QStringList{"Tour"});
    QCOMPARE(console.fixtures(), QStringList());
}

void tst_StartUp::configurationsAreListedOnceAndWithoutKeys() {
    home_->writeConfigurations({{"Tour & Co", rigOf({})}, {"Broken", "none"}});
    TestConsole& console = start();
    QCOMPARE(console.configurations(), (QStringList{"Broken", "Tour && Co"}));
    for (const QAction* item : console.window().configMenu().actions()) {
        QVERIFY(item->shortcut().isEmpty());
    }
}

void tst_StartUp::aUserProfileReplacesAResourceProfileAndIsNamedOnce() {
    QVariantMap rig =
        rigOf({placement("Spot", 0, 1, {named("Dimmer")}), placement("Wash", 0, 9, {named("Mine")})});
    rig.insert("profiles", QVariantMap{{"Dimmer", QVariantList{controlEntry("Own")}},
                                       {"Mine", QVariantList{named("Dimmer"), controlEntry("Second")}}});
    home_->writeSettings(rig);
    const QByteArray said = saidDuring([this] { start(); });
    QCOMPARE(said, QByteArray("Adding user profile: 'Dimmer'\nAdding user profile: 'Mine'\n"));
    QVERIFY(console_->faders().find("Spot.Own"));
    QVERIFY(!console_->faders().find("Spot.Level"));
    QVERIFY(console_->faders().find("Wash.Own"));
    QVERIFY(console_->faders().find("Wash.Second"));

    // For the whole run: also in a configuration that knows nothing of it.
    const QByteArray saidLater = saidDuring([this] { console_->loadConfiguration("Foyer"); });
    QCOMPARE(saidLater, QByteArray());
    QVERIFY(console_->faders().find("Lamp.Own"));
}

void tst_StartUp::withoutUserProfilesNothingIsSaid() {
    QCOMPARE(saidDuring([this] { start(); }), QByteArray());
}

void tst_StartUp::withoutProfilesFixturesHaveNoControls() {
    QVERIFY(QFile::remove(home_->resources() + "/profiles.plist"));
    TestConsole& console = start();
    QCOMPARE(console.fixtures().size(), 2);
    QCOMPARE(console_->faders().count(), std::size_t{0});
    console.tick();
}

void tst_StartUp::withoutProfilesUserProfilesAreNotKept() {
    QVERIFY(QFile::remove(home_->resources() + "/profiles.plist"));
    QVariantMap rig = rigOf({placement("Spot", 0, 1, {named("Mine"), controlEntry("Own")})});
    rig.insert("profiles", QVariantMap{{"Mine", QVariantList{controlEntry("Level")}}});
    home_->writeSettings(rig);
    const QByteArray said = saidDuring([this] { start(); });
    QCOMPARE(said, QByteArray("Adding user profile: 'Mine'\n"));
    QVERIFY(!console_->faders().find("Spot.Level"));
    QVERIFY(console_->faders().find("Spot.Own"));
}

void tst_StartUp::withoutConfigurationsTheMenuIsEmpty() {
    QVERIFY(QFile::remove(home_->resources() + "/configurations.plist"));
    TestConsole& console = start();
    QCOMPARE(console.configurations(), QStringList());
    QCOMPARE(console.fixtures(), QStringList());
    console.tick();
    console.newCue("3");
    QCOMPARE(console.window().cueMenu().title(), QString("Cue: 3"));
    QCOMPARE(console.cues(), QStringList());
    console.chooseCueItem("Next Cue");
    console.chooseCueItem("Store Cue");
    console.chooseCueItem("Delete Cue");
    console.quit();
    QCOMPARE(home_->userDefaults().value("configName"), QVariant("unknown_config"));
    QVERIFY(!home_->settings());
}

void tst_StartUp::withoutTablesTheSettingsFileIsEnough() {
    QVERIFY(QDir(home_->resources()).removeRecursively());
    home_->writeSettings(rigOf({placement("Mine", 2, 3, {controlEntry("Level")})}));
    home_->writeUserDefaults({{"configName", "Mine"}});
    TestConsole& console = start();
    QCOMPARE(console.fixtures(), QStringList{"Mine Univ: 2 Addr: 3"});
    QVERIFY(console_->faders().find("Mine.Level"));
}

void tst_StartUp::aDefaultThatIsNotInTheTableLoadsNothing() {
    home_->writeConfigurations(
        {{"_default_configuration", "Festival"}, {"Tour", rigOf({placement("A", 0, 1, {})})}});
    TestConsole& console = start();
    QCOMPARE(console.configurations(), QStringList{"Tour"});
    QCOMPARE(console.fixtures(), QStringList());
    console.quit();
    QCOMPARE(home_->userDefaults().value("configName"), QVariant("Festival"));
    QVERIFY(!home_->settings());
}

void tst_StartUp::aTableWithoutADefaultLoadsNothing() {
    home_->writeConfigurations({{"Tour", rigOf({placement("A", 0, 1, {})})}});
    home_->writeUserDefaults({{"configName", "Tour"}});
    TestConsole& console = start();
    QCOMPARE(console.configurations(), QStringList{"Tour"});
    QCOMPARE(console.fixtures(), QStringList());
    console.quit();
    QCOMPARE(home_->userDefaults().value("configName"), QVariant("unknown_config"));
}

void tst_StartUp::withoutViewsThereAreNoFixtures() {
    home_->writeSettings(QVariantMap{{"house", "Old Town"}});
    TestConsole& console = start();
    QCOMPARE(console.fixtures(), QStringList());
    console.tick();
    console.quit();
    QCOMPARE(home_->settings(), std::optional(QVariantMap{{"house", "Old Town"}}));
}

void tst_StartUp::aSettingsFileThatCannotBeReadIsNone_data() {
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("views");
    QTest::newRow("an array") << QByteArray("<plist version=\"1.0\"><array/></plist>");
    QTest::newRow("cut off") << QByteArray("<plist version=\"1.0\"><dict><key>views</key><arr");
}

void tst_StartUp::aSettingsFileThatCannotBeReadIsNone() {
    QFETCH(const QByteArray, bytes);

    home_->writeSettings(bytes);
    TestConsole& console = start();
    QCOMPARE(console.configurations(), (QStringList{"Foyer", "Tour *"}));
    QCOMPARE(console.fixtures().size(), 2);
}

void tst_StartUp::theLevelsOfTheConfigurationAreRestored() {
    const QVariantMap spot{{"key", "Spot.Level"}, {"value", 200LL}, {"time", 0LL}};
    const QVariantMap other{{"key", "Wash.Level"}, {"value", 100LL}, {"time", 0LL}};
    home_->writeUserDefaults(
        {{"saved_state: Tour", QVariantList{spot}}, {"saved_state: Foyer", QVariantList{other}}});
    start();
    QCOMPARE(console_->control("Spot.Level").value(), 200U);
    QCOMPARE(console_->control("Wash.Level").value(), 0U);
}

void tst_StartUp::theWindowThatWasInFrontComesToTheFront_data() {
    QTest::addColumn<QString>("title");

    QTest::newRow("the main window") << "Faderhall";
    QTest::newRow("the first fixture") << "Spot Univ: 0 Addr: 1";
    QTest::newRow("the last fixture") << "Wash Univ: 1 Addr: 10";
}

void tst_StartUp::theWindowThatWasInFrontComesToTheFront() {
    QFETCH(const QString, title);

    home_->writeUserDefaults({{"mainWindowTitle", title}});
    start();
    QTRY_COMPARE(QApplication::activeWindow()->windowTitle(), title);
}

void tst_StartUp::theLastFixtureIsInFrontOtherwise() {
    home_->writeUserDefaults({{"mainWindowTitle", "Lamp Univ: 4 Addr: 1"}});
    start();
    QTRY_COMPARE(QApplication::activeWindow()->windowTitle(), QString("Wash Univ: 1 Addr: 10"));
}

void tst_StartUp::theSelectionsAreRestored() {
    home_->writeUserDefaults({{"control_selections", QVariantList{"Spot.Level", ""}}});
    start();
    ControlView& spot = console_->fixtureWindow(0).view();
    QCOMPARE(console_->fixture(0).selectedControl(), &console_->control("Spot.Level"));
    QCOMPARE(spot.listener(), &console_->control("Spot.Level"));
    QCOMPARE(console_->fixtureWindow(0).focusWidget(), &spot);
    QCOMPARE(console_->fixture(1).selectedControl(), nullptr);
}

void tst_StartUp::theStoredAddressIsApplied() {
    home_->writeUserDefaults({{"tx_address", " 0127.1.2.3x"}});
    TestConsole& console = start();
    QCOMPARE(console.window().addressField().text(), QString("127.1.2.3"));
    console.quit();
    QCOMPARE(home_->userDefaults().value("tx_address"), QVariant("127.1.2.3"));
}

void tst_StartUp::aStoredAddressThatIsNoneIsRefused() {
    home_->writeUserDefaults({{"tx_address", "somewhere"}});
    QCOMPARE(start().window().addressField().text(), QString("somewhere"));
}

void tst_StartUp::aTypedAddressIsAppliedOrUndone() {
    home_->writeUserDefaults({{"tx_address", ownAddress}});
    TestConsole& console = start();
    AddressField& field = console.window().addressField();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&field, " 127.0.0.077 ");
    QTest::keyClick(&field, Qt::Key_Return);
    QCOMPARE(field.text(), QString("127.0.0.77"));
    for (const char* refused : {"256.1.1.1", "1.2.3", "-1.2.3.4", " ", "127.0.0.one"}) {
        QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&field, refused);
        QTest::keyClick(&field, Qt::Key_Return);
        QCOMPARE(field.text(), QString("127.0.0.77"));
    }
    console.quit();
    QCOMPARE(home_->userDefaults().value("tx_address"), QVariant("127.0.0.77"));
}

void tst_StartUp::theFirstTickSendsTheRestoredLevelsToTheStoredAddress() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    const QVariantMap spot{{"key", "Spot.Level"}, {"value", 200LL}, {"time", 0LL}};
    home_->writeUserDefaults({{"tx_address", ownAddress}, {"saved_state: Tour", QVariantList{spot}}});
    start().tick();
    const QList<QByteArray> datagrams = listener.waitFor(1);
    QVERIFY(!datagrams.isEmpty());
    QCOMPARE(datagrams.at(0).size(), 530);
    QCOMPARE(datagrams.at(0).at(14), char(0));
    QCOMPARE(datagrams.at(0).at(18), char(200));
}

void tst_StartUp::withoutFixturesNoDatagramIsSent() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    home_->writeSettings(rigOf({}));
    home_->writeUserDefaults({{"tx_address", ownAddress}});
    TestConsole& console = start();
    for (int ticks = 0; ticks < 5; ++ticks) {
        console.tick();
    }
    QCOMPARE(listener.takeArrived().size(), 0);
}

void tst_StartUp::aUniverseWithoutFixturesIsNotSent() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    home_->writeSettings(rigOf({placement("Spot", 3, 1, {named("Dimmer")})}));
    home_->writeUserDefaults({{"tx_address", ownAddress}});
    TestConsole& console = start();
    TestClock clock(1000 * Second);
    console.control("Spot.Level").setValue(200);
    console.tick();
    listener.takeArrived();
    QAbstractItemModel& table = *console.window().tableview().model();
    QVERIFY(table.setData(table.index(0, 1), "4")); // leaves a slot behind that goes dark
    for (int ticks = 0; ticks < 5; ++ticks) {
        clock.advance(Second);
        console.tick();
    }
    const QList<QByteArray> datagrams = listener.waitFor(5);
    QCOMPARE(datagrams.size(), 5);
    for (const QByteArray& datagram : datagrams) {
        QCOMPARE(datagram.at(14), char(4));
    }
    QVERIFY(table.setData(table.index(0, 1), "3"));
    console.tick();
    QCOMPARE(listener.waitFor(1).value(0).mid(14, 1), QByteArray("\3"));
}

void tst_StartUp::theTableShowsTheFixtures() {
    const QTableView& table = start().window().tableview();
    QCOMPARE(table.model()->rowCount(), 2);
    QCOMPARE(table.model()->columnCount(), 3);
    QCOMPARE(table.model()->index(1, 0).data().toString(), QString("Wash"));
    QCOMPARE(table.model()->index(1, 1).data().toString(), QString("1"));
    QCOMPARE(table.model()->index(1, 2).data().toString(), QString("10"));
}

void tst_StartUp::theCueMenuListsTheCues() {
    QVariantMap rig = rigOf({});
    rig.insert("cues",
               QVariantMap{{"10", QVariantList()}, {"2", "cue data goes here"}, {"1.5", QVariantList()}});
    home_->writeSettings(rig);
    TestConsole& console = start();
    QCOMPARE(console.cues(), (QStringList{"1.5", "2", "10"}));
    QCOMPARE(console.window().cueMenu().title(), QString("Cues"));
}

void tst_StartUp::theWindowMenuNumbersTheWindows() {
    QStringList items;
    for (const QAction* item : start().window().windowMenu().actions()) {
        if (item->isSeparator()) {
            break; // below are commands
        }
        items.append(item->text() + " / " + item->shortcut().toString(QKeySequence::PortableText));
    }
    QCOMPARE(items, (QStringList{"Faderhall / Ctrl+0", "Spot Univ: 0 Addr: 1 / Ctrl+1",
                                 "Wash Univ: 1 Addr: 10 / Ctrl+2"}));
}

void tst_StartUp::settingsOfAnyTypesAreSurvivedAndKept_data() {
    QTest::addColumn<QVariantMap>("rig");
    QTest::addColumn<int>("fixtures");

    const QVariantMap everyWrongType{{"name", QVariantList{1LL}},
                                     {"address", QVariantMap{{"a", 1LL}}},
                                     {"universe", QByteArray("u")},
                                     {"layer", "layer"},
                                     {"profiles", "profiles"}};
    const QVariantMap farOff{{"name", "Far"},
                             {"address", 9000000000LL},
                             {"universe", -9000000000LL},
                             {"layer", 1e300},
                             {"profiles", QVariantList{controlEntry("Level"), controlEntry("Level#", -5)}}};
    QTest::newRow("empty") << QVariantMap() << 0;
    QTest::newRow("views a text") << QVariantMap{{"views", "ab"}} << 0;
    QTest::newRow("views a dictionary") << QVariantMap{{"views", everyWrongType}} << 0;
    QTest::newRow("placements of any types")
        << rigOf({"a", 1LL, true, 0.5, QVariantList(), QVariantMap(), QByteArray("x")}) << 7;
    QTest::newRow("a placement of wrong types") << rigOf({everyWrongType}) << 1;
    QTest::newRow("numbers out of range") << rigOf({farOff}) << 1;
    QTest::newRow("entries of any types")
        << rigOf({placement("Odd", 0, 1,
                            {"a", 1LL, QVariantList{1LL}, QVariantMap(), QVariantMap{{"profile", 7LL}},
                             QVariantMap{{"profile", "Odd"}, {"name", QVariantMap()}},
                             QVariantMap{{"name", 5LL}, {"channels", "two"}, {"default", QVariantList()}}})})
        << 1;
    QTest::newRow("profiles of wrong types")
        << QVariantMap{{"profiles", QVariantMap{{"A", "text"}, {"B", QVariantMap()}, {"C", 1LL}}},
                       {"views", QVariantList{placement("S", 0, 1, {named("A"), named("B"), named("C")})}}}
        << 1;
    QTest::newRow("profiles a list") << QVariantMap{{"profiles", QVariantList{"A"}}} << 0;
    QTest::newRow("cues a text") << QVariantMap{{"cues", "1"}} << 0;
    QTest::newRow("cues of any types") << QVariantMap{{"cues", QVariantMap{{"1", 1LL},
                                                                           {"2", QVariantMap()},
                                                                           {"3", QVariantList{1LL, "x"}},
                                                                           {"", QVariantList()},
                                                                           {"Clear", "x"},
                                                                           {"A&B", true}}}}
                                       << 0;
}

void tst_StartUp::settingsOfAnyTypesAreSurvivedAndKept() {
    QFETCH(const QVariantMap, rig);
    QFETCH(const int, fixtures);

    home_->writeSettings(rig);
    TestConsole& console = start();
    QCOMPARE(console.fixtures().size(), fixtures);
    console.tick();
    for (int cue = 0; cue < 8; ++cue) {
        console.chooseCueItem(cue % 3 == 2 ? "Prev Cue" : "Next Cue");
    }
    console.chooseCueItem("Clear");
    console.chooseCueItem("Clear Timing");
    console.chooseCueItem("Store Cue");
    console.tick();
    console.quit();
    QCOMPARE(home_->settings(), std::optional(rig));
}

void tst_StartUp::userDefaultsOfAnyTypesAreSurvived_data() {
    QTest::addColumn<QVariant>("value");

    QTest::newRow("a text") << QVariant("text");
    QTest::newRow("an empty text") << QVariant("");
    QTest::newRow("an integer") << QVariant(7LL);
    QTest::newRow("a real") << QVariant(-1e300);
    QTest::newRow("a boolean") << QVariant(true);
    QTest::newRow("data") << QVariant(QByteArray("\0\1", 2));
    QTest::newRow("an empty array") << QVariant(QVariantList());
    QTest::newRow("an array of anything")
        << QVariant(QVariantList{1LL, "x", QVariantMap{{"key", 1LL}}, QVariantList()});
    QTest::newRow("two texts") << QVariant(QVariantList{"x", "y"});
    QTest::newRow("far off") << QVariant(QVariantList{9000000000LL, -9000000000LL});
    QTest::newRow("a dictionary") << QVariant(QVariantMap{{"key", "Spot.Level"}, {"value", "x"}});
}

void tst_StartUp::userDefaultsOfAnyTypesAreSurvived() {
    QFETCH(const QVariant, value);

    QVariantMap defaults{{"a key of somebody else", value}};
    for (const char* key :
         {"configName", "mainWindowTitle", "control_selections", "tx_address", "saved_state: Tour",
          "faderhall_main_window", "faderhall_window_0", "faderhall_window_1"}) {
        defaults.insert(key, value);
    }
    home_->writeUserDefaults(defaults);
    TestConsole& console = start();
    QCOMPARE(console.fixtures().size(), 2);
    QCOMPARE(console.configurations(), (QStringList{"Foyer", "Tour *"}));
    console.tick();
    console.quit();
    QCOMPARE(home_->userDefaults().value("a key of somebody else"), value);
    QCOMPARE(home_->userDefaults().value("configName"), QVariant("Tour"));
    QCOMPARE(home_->userDefaults().value("control_selections"), QVariant(QVariantList{"", ""}));
}

QTEST_MAIN(tst_StartUp)
#include "tst_StartUp.moc"
