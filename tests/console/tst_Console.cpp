#include "console/Console.h"

#include "rig/FixtureObserver.h"
#include "support/DatagramListener.h"
#include "support/ScratchHome.h"
#include "support/TestRig.h"

#include <QFileInfo>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>

namespace {

constexpr std::uint8_t OwnAddress = 81;
constexpr std::uint8_t OtherAddress = 82;
const char* const ownAddress = "127.0.0.81";
const char* const otherAddress = "127.0.0.82";

QVariantMap rigOf(const QVariantList& views) {
    return {{"views", views}};
}

QVariantMap level(const QString& key, qlonglong value) {
    return {{"key", key}, {"value", value}, {"time", 0LL}};
}

/// What a datagram of universe 0 says of the slots 1 and 10; -1 when there is none.
QPair<int, int> levelsIn(const QByteArray& datagram) {
    if (datagram.isEmpty()) {
        return {-1, -1};
    }
    return {static_cast<std::uint8_t>(datagram.at(18)), static_cast<std::uint8_t>(datagram.at(27))};
}

/// Ticks an engine without a pause, on a thread of its own, as long as it lives.
class RestlessTicks {
public:
    explicit RestlessTicks(Engine& engine)
        : thread_([this, &engine] {
              while (!isEnded_) {
                  engine.tick();
                  std::this_thread::yield();
              }
          }) {}
    ~RestlessTicks() {
        isEnded_ = true;
        thread_.join();
    }
    RestlessTicks(const RestlessTicks&) = delete;
    RestlessTicks& operator=(const RestlessTicks&) = delete;

private:
    std::atomic<bool> isEnded_ = false;
    std::thread thread_;
};

/// Looks at a fixture and counts what it is told.
class Onlooker : public FixtureObserver {
public:
    bool seesLevels() const override { return true; }
    void levelsMissed() override {}
    void controlChanged(DMXControl&) override { ++changes; }
    void entryChanged(DMXControl&) override {}
    void fixtureMoved() override {}

    int changes = 0;
};

} // namespace

/// A console without windows.
class tst_Console : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { home_.reset(); }

    void nothingIsSentBeforeTheFirstTick();
    void theFirstTickSendsTheRestoredLevels();
    void aLevelAndACueGoOut();
    void aCueIsExecutedInWhateverOrderItsRecordsStand_data();
    void aCueIsExecutedInWhateverOrderItsRecordsStand();
    void aNewCueIsCurrentUnlessItHasNoNumber();
    void anAddressIsTakenOrRefused();
    void quittingWritesTheFiles();
    void quittingWithoutAWindowKeepsTheTitleOfTheLast();
    void itIsWrittenOnce();
    void withoutQuittingNothingIsWritten();

    void theOutputTicksByItself();
    void whatTheOutputMovedIsTold();
    void itEndsInTheMiddleOfAFade();

    void aRigSwitchIsOneEdit();
    void aCueIsOneEdit();
    void twoConsolesStandSideBySide();

private:
    std::unique_ptr<ScratchHome> home_;
};

/// The configurations Tour, which is the default, and Foyer, each with two faders in the slots 1 and 10 of
/// universe 0 and levels of the last quit.
void tst_Console::init() {
    home_ = std::make_unique<ScratchHome>();
    home_->writeProfiles({});
    home_->writeConfigurations({{"_default_configuration", "Tour"},
                                {"Tour", rigOf({placement("Spot", 0, 1, {controlEntry("Dimmer")}),
                                                placement("Wash", 0, 10, {controlEntry("Dimmer")})})},
                                {"Foyer", rigOf({placement("Lamp", 0, 1, {controlEntry("Dimmer")}),
                                                 placement("Lustre", 0, 10, {controlEntry("Dimmer")})})}});
    home_->writeUserDefaults(
        {{"tx_address", ownAddress},
         {"mainWindowTitle", "Faderhall"},
         {"saved_state: Tour", QVariantList{level("Spot.Dimmer", 200), level("Wash.Dimmer", 100)}},
         {"saved_state: Foyer", QVariantList{level("Lamp.Dimmer", 90), level("Lustre.Dimmer", 80)}}});
}

void tst_Console::nothingIsSentBeforeTheFirstTick() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    Console console(home_->resources());
    console.engine().tick();
    console.load();
    QCOMPARE(listener.takeArrived().size(), 0);
}

void tst_Console::theFirstTickSendsTheRestoredLevels() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    Console console(home_->resources());
    console.load();
    console.engine().tick();
    const QList<QByteArray> datagrams = listener.waitFor(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(levelsIn(datagrams.value(0)), qMakePair(200, 100));
}

void tst_Console::aLevelAndACueGoOut() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    Console console(home_->resources());
    console.load();
    QVERIFY(console.createCue("1"));
    console.stepper().storeCue();
    console.faders().find("Spot.Dimmer")->setValue(7);
    console.engine().tick();
    QCOMPARE(levelsIn(listener.waitFor(1).value(0)), qMakePair(7, 100));
    console.stepper().clear();
    console.engine().tick();
    QCOMPARE(levelsIn(listener.waitFor(1).value(0)), qMakePair(0, 0));
    console.stepper().next();
    console.engine().tick();
    QCOMPARE(levelsIn(listener.waitFor(1).value(0)), qMakePair(200, 100));
}

void tst_Console::aCueIsExecutedInWhateverOrderItsRecordsStand_data() {
    QTest::addColumn<QVariantList>("records");
    QTest::addColumn<int>("spot");
    QTest::addColumn<int>("wash");

    const QVariantMap spot = level("Spot.Dimmer", 30);
    const QVariantMap wash = level("Wash.Dimmer", 40);
    QTest::newRow("that of the faders") << QVariantList{spot, wash} << 30 << 40;
    QTest::newRow("another") << QVariantList{wash, spot} << 30 << 40;
    QTest::newRow("the first alone") << QVariantList{spot} << 30 << 0;
    QTest::newRow("the last alone") << QVariantList{wash} << 0 << 40;
    QTest::newRow("one of no fader before") << QVariantList{level("A", 1), spot, wash} << 30 << 40;
    QTest::newRow("one of no fader between") << QVariantList{spot, level("T", 1), wash} << 30 << 40;
    QTest::newRow("one of no fader behind") << QVariantList{spot, wash, level("Z", 1)} << 30 << 40;
    QTest::newRow("one twice") << QVariantList{spot, level("Spot.Dimmer", 50), wash} << 50 << 40;
    QTest::newRow("one twice, apart") << QVariantList{spot, wash, level("Spot.Dimmer", 50)} << 50 << 40;
}

void tst_Console::aCueIsExecutedInWhateverOrderItsRecordsStand() {
    QFETCH(const QVariantList, records);
    QFETCH(const int, spot);
    QFETCH(const int, wash);

    QVariantMap rig = rigOf({placement("Spot", 0, 1, {controlEntry("Dimmer")}),
                             placement("Wash", 0, 10, {controlEntry("Dimmer")})});
    rig.insert("cues", QVariantMap{{"1", records}});
    home_->writeSettings(rig);
    Console console(home_->resources());
    console.load();
    console.stepper().choose("1");
    QCOMPARE(console.faders().find("Spot.Dimmer")->value(), static_cast<std::uint32_t>(spot));
    QCOMPARE(console.faders().find("Wash.Dimmer")->value(), static_cast<std::uint32_t>(wash));
}

void tst_Console::aNewCueIsCurrentUnlessItHasNoNumber() {
    Console console(home_->resources());
    console.load();
    QVERIFY(console.createCue("2.5"));
    QCOMPARE(console.stepper().currCue(), std::optional(QString("2.5")));
    QVERIFY(!console.createCue(""));
    QCOMPARE(console.stepper().currCue(), std::optional(QString("2.5")));
    QCOMPARE(console.cues().sortedCueList(), QStringList{"2.5"});
}

void tst_Console::anAddressIsTakenOrRefused() {
    DatagramListener listener(OtherAddress);
    QVERIFY(listener.isListening());
    Console console(home_->resources());
    console.load();
    console.setIPAddress(otherAddress);
    console.setIPAddress("256.1.1.1");
    console.engine().tick();
    QCOMPARE(listener.waitFor(1).size(), 1);
    QCOMPARE(console.destination().text(), QString(otherAddress));
}

void tst_Console::quittingWritesTheFiles() {
    Console console(home_->resources());
    console.load();
    QVERIFY(console.createCue("3"));
    console.setIPAddress(otherAddress);
    console.faders().find("Spot.Dimmer")->setValue(7);
    console.faders().find("Wash.Dimmer")->becomeFirstResponder();
    console.terminate("Wash Univ: 0 Addr: 10");
    QVariantMap expected = rigOf({placement("Spot", 0, 1, {controlEntry("Dimmer")}),
                                  placement("Wash", 0, 10, {controlEntry("Dimmer")})});
    expected.insert("cues", QVariantMap{{"3", "cue data goes here"}});
    QCOMPARE(home_->settings(), std::optional(expected));
    const QVariantMap defaults = home_->userDefaults();
    QCOMPARE(defaults.value("configName"), QVariant("Tour"));
    QCOMPARE(defaults.value("tx_address"), QVariant(otherAddress));
    QCOMPARE(defaults.value("mainWindowTitle"), QVariant("Wash Univ: 0 Addr: 10"));
    QCOMPARE(defaults.value("control_selections").toList(), (QVariantList{"", "Wash.Dimmer"}));
    QCOMPARE(defaults.value("saved_state: Tour").toList(),
             (QVariantList{level("Spot.Dimmer", 7), level("Wash.Dimmer", 100)}));
}

void tst_Console::quittingWithoutAWindowKeepsTheTitleOfTheLast() {
    Console console(home_->resources());
    console.load();
    console.terminate();
    QCOMPARE(home_->userDefaults().value("mainWindowTitle"), QVariant("Faderhall"));
}

void tst_Console::itIsWrittenOnce() {
    Console console(home_->resources());
    console.load();
    console.terminate();
    const auto settings = home_->settings();
    QVERIFY(console.createCue("3"));
    console.terminate();
    QCOMPARE(home_->settings(), settings);
}

void tst_Console::withoutQuittingNothingIsWritten() {
    {
        Console console(home_->resources());
        console.load();
        QVERIFY(console.createCue("3"));
    }
    QVERIFY(!home_->settings());
    QVERIFY(!QFileInfo::exists(RecoveryFile::defaultPath()));
}

// --- With its output -----------------------------------------------------------------------------------

void tst_Console::theOutputTicksByItself() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    Console console(home_->resources());
    console.load();
    console.startOutput();
    QCOMPARE(listener.waitFor(1).size(), 1); // without an event loop
    console.faders().find("Spot.Dimmer")->setValue(7);
    QCOMPARE(levelsIn(listener.waitFor(1).value(0)), qMakePair(7, 100));
}

void tst_Console::whatTheOutputMovedIsTold() {
    Console console(home_->resources());
    console.load();
    Onlooker onlooker;
    console.fixtures().at(0)->addObserver(onlooker);
    console.startOutput();
    console.follow();
    console.faders().find("Spot.Dimmer")->setDMXValue(0, 1);
    const int before = onlooker.changes;
    QTRY_VERIFY(onlooker.changes > before + 5);
    QTRY_COMPARE(console.faders().find("Spot.Dimmer")->value(), 0U);
    console.fixtures().at(0)->removeObserver(onlooker);
}

void tst_Console::itEndsInTheMiddleOfAFade() {
    for (int end = 0; end < 5; ++end) {
        Console console(home_->resources());
        console.load();
        console.startOutput();
        console.follow();
        console.faders().find("Spot.Dimmer")->setDMXValue(0, 60);
        QTest::qWait(40);
    }
}

// --- One edit ------------------------------------------------------------------------------------------

void tst_Console::aRigSwitchIsOneEdit() {
    constexpr int faders = 512;
    const auto fullUniverse = [](const QString& name) {
        QVariantList controls;
        for (int i = 0; i < faders; ++i) {
            controls.append(controlEntry(QString::number(i)));
        }
        return rigOf({placement(name, 0, 1, controls)});
    };
    const auto allAt = [](const QString& name, int value) {
        QVariantList records;
        for (int i = 0; i < faders; ++i) {
            records.append(level(QString("%1.%2").arg(name).arg(i), value));
        }
        return records;
    };
    home_->writeConfigurations({{"_default_configuration", "Tour"},
                                {"Tour", fullUniverse("Wash")},
                                {"Foyer", fullUniverse("Lamp")}});
    home_->writeUserDefaults({{"tx_address", ownAddress},
                              {"saved_state: Tour", allAt("Wash", 200)},
                              {"saved_state: Foyer", allAt("Lamp", 90)}});
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    Console console(home_->resources());
    console.load();
    const QByteArray tour(faders, char(200));
    const QByteArray foyer(faders, char(90));
    int tours = 0;
    int foyers = 0;
    const auto tick = [&console] { console.engine().tick(); };
    connect(&console.fixtures(), &Fixtures::aboutToBeRemoved, this, tick);
    connect(&console, &Console::fixturesReplaced, this, tick);
    connect(&console.fixtures(), &Fixtures::inserted, this, tick);
    const RestlessTicks ticks(console.engine());
    for (int load = 0; load < 100; ++load) {
        console.loadConfiguration(load % 2 == 0 ? "Foyer" : "Tour", 0);
        for (const QByteArray& datagram : listener.takeArrived()) {
            const QByteArray levels = datagram.mid(18);
            QVERIFY(levels == tour || levels == foyer);
            tours += levels == tour ? 1 : 0;
            foyers += levels == foyer ? 1 : 0;
        }
    }
    QVERIFY(tours >= 50 && foyers >= 50);
}

void tst_Console::aCueIsOneEdit() {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    Console console(home_->resources());
    console.load();
    QVERIFY(console.createCue("1"));
    console.stepper().storeCue();
    const QPair<int, int> stored(200, 100);
    const QPair<int, int> dark(0, 0);
    const RestlessTicks ticks(console.engine());
    for (int change = 0; change < 20'000; ++change) {
        if (change % 2 == 0) {
            console.stepper().clear();
        } else {
            console.stepper().next();
        }
        for (const QByteArray& datagram : listener.takeArrived()) {
            const QPair<int, int> levels = levelsIn(datagram);
            QVERIFY2(levels == stored || levels == dark,
                     qPrintable(QString("%1 and %2").arg(levels.first).arg(levels.second)));
        }
    }
}

void tst_Console::twoConsolesStandSideBySide() {
    DatagramListener listener(OwnAddress);
    DatagramListener otherListener(OtherAddress);
    QVERIFY(listener.isListening() && otherListener.isListening());
    Console console(home_->resources());
    const ScratchHome otherHome;
    otherHome.writeProfiles({});
    // The same fixture, so that each would find the other's faders, were there one registry for both.
    otherHome.writeSettings(rigOf({placement("Spot", 0, 1, {controlEntry("Dimmer", 5)})}));
    otherHome.writeUserDefaults({{"tx_address", otherAddress}});
    {
        Console other(otherHome.resources());
        console.load();
        other.load();
        console.faders().find("Spot.Dimmer")->setValue(30);
        console.engine().tick();
        other.engine().tick();
        QCOMPARE(levelsIn(listener.waitFor(1).value(0)), qMakePair(30, 100));
        QCOMPARE(levelsIn(otherListener.waitFor(1).value(0)), qMakePair(5, 0));
        QVERIFY(other.createCue("1"));
        other.stepper().clear();
        QCOMPARE(console.faders().find("Spot.Dimmer")->value(), 30U);
        QCOMPARE(console.cues().sortedCueList(), QStringList());
        console.terminate();
        other.terminate();
    }
    console.engine().tick();
    QCOMPARE(console.faders().find("Spot.Dimmer")->value(), 30U);
    QVERIFY(!home_->settings()->contains("cues"));
    QCOMPARE(home_->userDefaults().value("saved_state: Tour").toList().size(), 2);
    QCOMPARE(otherHome.settings()->value("cues").toMap().keys(), QStringList{"1"});
    QCOMPARE(otherHome.userDefaults().value("tx_address"), QVariant(otherAddress));
}

QTEST_GUILESS_MAIN(tst_Console)
#include "tst_Console.moc"
