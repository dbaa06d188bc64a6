#include "rig/Fixture.h"

#include "clock/MonotonicClock.h"
#include "rig/FixtureObserver.h"
#include "rig/Placement.h"
#include "support/AllocationCount.h"
#include "support/StandardOutput.h"
#include "support/TestClock.h"
#include "support/TestRig.h"

#include <QTest>

#include <array>
#include <memory>

namespace {

constexpr std::uint64_t Second = 1'000'000'000;
constexpr std::uint64_t Tick = 33'300'000;

using SlotArray = std::array<std::uint8_t, 512>;

const QVariantMap sixteenBits{{"name", "Tilt"}, {"channels", qlonglong{2}}};

// What a tick does with the levels of one fixture.
bool updateDMX(Fixture& fixture, SlotArray& levels) {
    return fixture.levels().held()->updateDMX(levels, monotonicNanoseconds());
}

QStringList tooltips(const Fixture& fixture) {
    QStringList result;
    for (const auto& control : fixture.controls()) {
        result.append(control->toolTip());
    }
    return result;
}

QList<quint32> addresses(const Fixture& fixture) {
    QList<quint32> result;
    for (const auto& control : fixture.controls()) {
        result.append(control->address());
    }
    return result;
}

// So many faders, each with a name of its own.
QVariantList faders(int count) {
    QVariantMap fader = controlEntry("#");
    fader["newlayer"] = true;
    QVariantList entries;
    entries.fill(fader, count);
    return entries;
}

class TestObserver : public FixtureObserver {
public:
    explicit TestObserver(Fixture& fixture) : fixture_(fixture) { fixture_.addObserver(*this); }
    ~TestObserver() override { fixture_.removeObserver(*this); }
    TestObserver(const TestObserver&) = delete;
    TestObserver& operator=(const TestObserver&) = delete;
    TestObserver(TestObserver&&) = delete;
    TestObserver& operator=(TestObserver&&) = delete;

    bool seesLevels() const override { return sees; }
    void levelsMissed() override { ++missed; }
    void controlChanged(DMXControl& control) override { changed.append(control.name()); }
    void entryChanged(DMXControl& control) override { typed.append(control.name()); }
    void fixtureMoved() override { ++moves; }

    bool sees = true;
    int missed = 0;
    int moves = 0;
    QStringList changed;
    QStringList typed;

private:
    Fixture& fixture_;
};

} // namespace

class tst_Fixture : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aPlacementIsReadFromNumbersAndStrings_data();
    void aPlacementIsReadFromNumbersAndStrings();
    void controlsStandInTheirColumns();
    void controlsGetConsecutiveSlots();
    void addresses0And1GiveTheSameSlots();
    void aBlankIsHiddenAndItsPlaceIsTaken();
    void aLabelTakesARowAndNoSlot();
    void keysAreFixtureNestedProfilesAndControl();
    void theLayerNumberRunsOn();
    void aFixtureWithoutProfilesIsEmpty_data();
    void aFixtureWithoutProfilesIsEmpty();

    void anUpdateReportsAChangeOfAnyControl();
    void aPatchedFixtureMovesToItsNewSlots();
    void theSlotsOfAnotherFixtureStayAsTheyAre();

    void aFixtureOutsideItsUniverseWritesNothing_data();
    void aFixtureOutsideItsUniverseWritesNothing();
    void aFixtureHalfOutsideItsUniverseWritesTheRest();
    void aFixtureThatUnfoldsWithoutEndIsBounded();
    void manyFixturesThatUnfoldWithoutEndAreBoundedTogether();
    void namesOfAnyLengthAreKept();

    void aRunningFadeIsToldStepByStep();
    void whoSeesNothingIsToldOnlyThatItMissesSomething();
    void everyObserverIsTold();
    void whatIsTypedIsTold();
    void aTickThatNobodyWatchesAllocatesNothing();
    void theNeighbourIsTheNextThatIsNoDummy();
    void aFixtureThatGoesTakesItsKeysAlong();

private:
    QStringList keys() {
        QStringList result;
        for (const DMXControl* const control : rig_->faders().sorted()) {
            result.append(control->key());
        }
        return result;
    }

    std::unique_ptr<TestRig> rig_;
};

void tst_Fixture::init() {
    rig_ = std::make_unique<TestRig>();
}

void tst_Fixture::cleanup() {
    rig_.reset();
}

void tst_Fixture::aPlacementIsReadFromNumbersAndStrings_data() {
    QTest::addColumn<QVariantMap>("placement");
    QTest::addColumn<QString>("name");
    QTest::addColumn<quint32>("universe");
    QTest::addColumn<quint32>("address");
    QTest::addColumn<quint32>("layer");

    QTest::newRow("numbers") << QVariantMap{{"name", "Spot"},
                                            {"universe", qlonglong{3}},
                                            {"address", qlonglong{10}},
                                            {"layer", qlonglong{2}}}
                             << "Spot" << 3U << 10U << 2U;
    QTest::newRow("strings") << QVariantMap{{"name", "Spot"},
                                            {"universe", "12"},
                                            {"address", "5abc"},
                                            {"layer", " 7"}}
                             << "Spot" << 12U << 5U << 7U;
    QTest::newRow("nothing") << QVariantMap{} << QString() << 0U << 0U << 0U;
    QTest::newRow("other types") << QVariantMap{{"name", qlonglong{5}},
                                                {"universe", QVariantList{qlonglong{1}}},
                                                {"address", "x"},
                                                {"layer", QByteArray("3")}}
                                 << QString() << 0U << 0U << 0U;
    QTest::newRow("negative and beyond") << QVariantMap{{"name", ""},
                                                        {"universe", qlonglong{-1}},
                                                        {"address", qlonglong{-7}},
                                                        {"layer", qlonglong{99'999'999'999}}}
                                         << "" << 4294967295U << 4294967289U << 2147483647U;
}

void tst_Fixture::aPlacementIsReadFromNumbersAndStrings() {
    QFETCH(const QVariantMap, placement);
    const Fixture& fixture = rig_->add(placement);
    QTEST(fixture.name(), "name");
    QTEST(fixture.universe(), "universe");
    QTEST(fixture.address(), "address");
    QTEST(fixture.layerNum(), "layer");
}

void tst_Fixture::controlsStandInTheirColumns() {
    const Fixture& fixture =
        rig_->add(placement("Spot", 0, 1,
                            {QVariantMap{{"label", "Position"}, {"header", true}}, controlEntry("Pan"),
                             controlEntry("Tilt"), QVariantMap{{"name", "Dimmer"}, {"header", true}}}));
    const auto& controls = fixture.controls();
    QCOMPARE(controls.size(), std::size_t{4});
    QCOMPARE(fixture.frameOf(*controls[0]), QRect(0, 0, 150, 19));
    QCOMPARE(fixture.frameOf(*controls[1]), QRect(0, 19, 150, 19));
    QCOMPARE(fixture.frameOf(*controls[2]), QRect(0, 38, 150, 19));
    QCOMPARE(fixture.frameOf(*controls[3]), QRect(150, 0, 150, 19));
    QCOMPARE(fixture.size(), QSize(300, 57));
    for (const auto& control : controls) {
        QVERIFY(!control->hide());
        QCOMPARE(fixture.controlAt(fixture.frameOf(*control).center()), control.get());
    }
}

void tst_Fixture::controlsGetConsecutiveSlots() {
    const Fixture& fixture =
        rig_->add(placement("Spot", 4, 10, {controlEntry("Pan"), sixteenBits, controlEntry("Zoom")}));
    QCOMPARE(addresses(fixture), QList<quint32>({9, 10, 12}));
    QCOMPARE(tooltips(fixture), QStringList({"Univ: 4, Addr: 10", "Univ: 4, Addr: 11", "Univ: 4, Addr: 13"}));
}

void tst_Fixture::addresses0And1GiveTheSameSlots() {
    const Fixture& zero = rig_->add("Spot 0", {"Pan", "Tilt"}, 0, 0);
    const Fixture& one = rig_->add("Spot 1", {"Pan", "Tilt"}, 0, 1);
    QCOMPARE(addresses(zero), QList<quint32>({0, 1}));
    QCOMPARE(addresses(one), QList<quint32>({0, 1}));
}

void tst_Fixture::aBlankIsHiddenAndItsPlaceIsTaken() {
    const Fixture& fixture = rig_->add(placement(
        "Spot", 0, 1, {controlEntry("Pan"), QVariantMap{{"blank", qlonglong{4}}}, controlEntry("Tilt")}));
    const auto& controls = fixture.controls();
    QVERIFY(controls[1]->hide());
    QCOMPARE(fixture.frameOf(*controls[2]), QRect(0, 19, 150, 19));
    QCOMPARE(addresses(fixture), QList<quint32>({0, 1, 5}));
    QCOMPARE(fixture.size(), QSize(150, 38));
    QCOMPARE(fixture.controlAt(QPoint(1, 20)), controls[2].get());
    QCOMPARE(fixture.controlAt(QPoint(1, 38)), nullptr);
}

void tst_Fixture::aLabelTakesARowAndNoSlot() {
    const Fixture& fixture = rig_->add(
        placement("Spot", 0, 1, {controlEntry("Pan"), QVariantMap{{"label", "Beam"}}, controlEntry("Zoom")}));
    QCOMPARE(addresses(fixture), QList<quint32>({0, 1, 1}));
    QCOMPARE(fixture.frameOf(*fixture.controls()[2]), QRect(0, 38, 150, 19));
    QVERIFY(!fixture.controls()[1]->hide());
    QCOMPARE(fixture.controlAt(QPoint(1, 20)), fixture.controls()[1].get());
}

void tst_Fixture::keysAreFixtureNestedProfilesAndControl() {
    rig_->profiles().setTable(QVariantMap{{"RGB", QVariantList{controlEntry("Red"), controlEntry("Blue")}}});
    const Fixture& fixture =
        rig_->add({{"name", "Wash"},
                   {"layer", qlonglong{2}},
                   {"profiles", QVariantList{QVariantMap{{"profile", "RGB"}, {"name", "Cell #"}},
                                             QVariantMap{{"profile", "Unknown"}, {"name", "Fog"}},
                                             controlEntry("A#B#")}}});
    QCOMPARE(keys(), QStringList({"Wash.A2B#", "Wash.Cell 2.Blue", "Wash.Cell 2.Red"}));
    QCOMPARE(fixture.key(), "Wash");
    QCOMPARE(&rig_->control("Wash.Cell 2.Red"), fixture.controls().front().get());
}

void tst_Fixture::theLayerNumberRunsOn() {
    QVariantMap raising = controlEntry("Dimmer #");
    raising["newlayer"] = true;
    const Fixture& fixture =
        rig_->add(placement("Wash", 0, 1, {controlEntry("Pan #"), raising, raising, controlEntry("Zoom #")}));
    QCOMPARE(keys(), QStringList({"Wash.Dimmer 2", "Wash.Dimmer 3", "Wash.Pan 1", "Wash.Zoom 3"}));
    QCOMPARE(fixture.layerNum(), 3U);
}

void tst_Fixture::aFixtureWithoutProfilesIsEmpty_data() {
    QTest::addColumn<QVariant>("profiles");
    QTest::newRow("none") << QVariant();
    QTest::newRow("an empty array") << QVariant(QVariantList());
    QTest::newRow("a text") << QVariant("RGB");
    QTest::newRow("a dictionary") << QVariant(controlEntry("Pan"));
    QTest::newRow("texts") << QVariant(QVariantList{"RGB", "RGB"});
}

void tst_Fixture::aFixtureWithoutProfilesIsEmpty() {
    QFETCH(const QVariant, profiles);
    Fixture& fixture = rig_->add({{"name", "Spot"}, {"profiles", profiles}});
    QVERIFY(fixture.controls().empty());
    QCOMPARE(fixture.size(), QSize(150, 0));
    QVERIFY(!fixture.levels().held()->hasMoved());
    QCOMPARE(fixture.endControl(false), nullptr);
    QCOMPARE(fixture.selectedControl(), nullptr);
}

void tst_Fixture::anUpdateReportsAChangeOfAnyControl() {
    Fixture& fixture = rig_->add("Spot", {"1", "2", "3"});
    for (const char* key : {"Spot.1", "Spot.2", "Spot.3"}) {
        SlotArray levels{};
        rig_->control(key).setValue(9);
        QVERIFY(updateDMX(fixture, levels));
        QVERIFY(!updateDMX(fixture, levels));
        rig_->control(key).setValue(0);
    }
}

void tst_Fixture::aPatchedFixtureMovesToItsNewSlots() {
    Fixture& fixture = rig_->add("Spot", {"Pan"}, 5, 1);
    TestObserver observer(fixture);
    rig_->control("Spot.Pan").setValue(77);
    rig_->tick();
    fixture.setAddress(10);
    fixture.setUniverse(6);
    fixture.rescanControls();
    QCOMPARE(observer.moves, 1);
    QCOMPARE(fixture.title(), "Spot Univ: 6 Addr: 10");
    QCOMPARE(tooltips(fixture), QStringList("Univ: 6, Addr: 10"));
    rig_->tick();
    QCOMPARE(rig_->engine().slotLevels(6)[9], 77);
    QCOMPARE(rig_->engine().slotLevels(5)[0], 0); // nothing drives it any more
}

void tst_Fixture::theSlotsOfAnotherFixtureStayAsTheyAre() {
    Fixture& fixture = rig_->add("Spot", {"Pan"}, 0, 3);
    SlotArray levels{};
    levels.fill(50);
    SlotArray expected = levels;
    expected[2] = 0;
    QVERIFY(updateDMX(fixture, levels));
    QCOMPARE(levels, expected);
}

void tst_Fixture::aFixtureOutsideItsUniverseWritesNothing_data() {
    QTest::addColumn<QVariant>("address");
    QTest::newRow("513") << QVariant(qlonglong{513});
    QTest::newRow("600") << QVariant(qlonglong{600});
    QTest::newRow("-7") << QVariant(qlonglong{-7});
    QTest::newRow("4294967295") << QVariant(qlonglong{4294967295});
    QTest::newRow("-1") << QVariant("-1");
    QTest::newRow("lowest") << QVariant(qlonglong{-2147483648});
}

void tst_Fixture::aFixtureOutsideItsUniverseWritesNothing() {
    QFETCH(const QVariant, address);
    Fixture& fixture = rig_->add({{"name", "Spot"},
                                  {"address", address},
                                  {"profiles", QVariantList{controlEntry("Pan", 200), sixteenBits}}});
    rig_->control("Spot.Tilt").setValue(40000);
    SlotArray levels{};
    QVERIFY(!updateDMX(fixture, levels));
    QCOMPARE(levels, SlotArray{});
    rig_->tick();
    QCOMPARE(rig_->engine().slotLevels(0), Engine::SlotLevels{});
    QCOMPARE(rig_->engine().sendRecords().size(), std::size_t{1});
}

void tst_Fixture::aFixtureHalfOutsideItsUniverseWritesTheRest() {
    Fixture& fixture =
        rig_->add(placement("Spot", 0, 511, {controlEntry("Pan", 200), sixteenBits, controlEntry("Zoom")}));
    rig_->control("Spot.Tilt").setValue(40000); // over slot 512
    rig_->control("Spot.Zoom").setValue(9);     // beyond it
    SlotArray levels{};
    QVERIFY(updateDMX(fixture, levels));
    SlotArray expected{};
    expected[510] = 200;
    QCOMPARE(levels, expected);
    QVERIFY(!updateDMX(fixture, levels));
}

void tst_Fixture::aFixtureThatUnfoldsWithoutEndIsBounded() {
    const QByteArray output =
        standardOutputOf([this] { rig_->add(placement("Spot", 0, 1, faders(100'000))); });
    QVERIFY(output.startsWith("Profile expansion stopped: it adds more than any fixture or rig has\n"));
    QCOMPARE(rig_->fixtures().at(0)->controls().size(), std::size_t{8192});
}

void tst_Fixture::manyFixturesThatUnfoldWithoutEndAreBoundedTogether() {
    // Together 64 times a million characters; the seventeenth finds no room any more.
    const QVariantMap longName = controlEntry(QString(1'000'000, 'x') + "#");
    std::size_t controls = 0;
    standardOutputOf([&] {
        for (int fixture = 0; fixture < 20; ++fixture) {
            controls += rig_->add(placement("Spot", 0, 1, QVariantList(10, longName))).controls().size();
        }
    });
    QVERIFY(controls >= 60 && controls <= 100);
    rig_->fixtures().replaceAll({});
    // They leave their room to the next rig.
    QCOMPARE(rig_->add("Spot", {"Pan"}).controls().size(), std::size_t{1});
}

void tst_Fixture::namesOfAnyLengthAreKept() {
    const QString name = QString(100'000, 'x') + "#";
    Fixture& fixture = rig_->add(placement(name, 0, 1, {controlEntry(name)}));
    QCOMPARE(fixture.name(), name);
    QCOMPARE(keys(), QStringList(name + "." + QString(100'000, 'x') + "1"));
    fixture.rescanControls();
    QVERIFY(fixture.title().startsWith("xxxx"));
}

void tst_Fixture::aRunningFadeIsToldStepByStep() {
    TestClock clock(0);
    Fixture& fixture = rig_->add("Spot", {"Pan", "Tilt"});
    rig_->control("Spot.Pan").setDMXValue(200, 2);
    TestObserver observer(fixture);
    rig_->tick();
    QCOMPARE(observer.changed, QStringList());
    clock.set(Second);
    rig_->tick();
    QCOMPARE(rig_->control("Spot.Pan").value(), 100U);
    QCOMPARE(observer.changed, QStringList("Pan"));
    rig_->tick();
    QCOMPARE(observer.changed, QStringList("Pan"));
}

void tst_Fixture::whoSeesNothingIsToldOnlyThatItMissesSomething() {
    TestClock clock(0);
    Fixture& fixture = rig_->add("Spot", {"Pan", "Tilt"});
    TestObserver observer(fixture);
    rig_->control("Spot.Pan").setTime(1);
    observer.changed.clear();
    observer.sees = false;
    rig_->control("Spot.Pan").setDMXValue(200, 2);
    clock.set(Second);
    rig_->tick();
    rig_->tick();
    QCOMPARE(observer.missed, 1);
    QCOMPARE(observer.changed, QStringList());
    observer.sees = true;
    rig_->tick();
    QCOMPARE(observer.changed, QStringList());
}

void tst_Fixture::everyObserverIsTold() {
    Fixture& fixture = rig_->add("Spot", {"Pan"});
    TestObserver first(fixture);
    {
        TestObserver second(fixture);
        second.sees = false;
        rig_->control("Spot.Pan").setValue(1);
        QCOMPARE(first.changed.size(), 1);
        QCOMPARE(second.changed.size(), 1); // it may forget what it does not see
    }
    rig_->control("Spot.Pan").setValue(2);
    QCOMPARE(first.changed.size(), 2);
}

void tst_Fixture::whatIsTypedIsTold() {
    Fixture& fixture = rig_->add("Spot", {"Pan", "Tilt"});
    TestObserver observer(fixture);
    rig_->control("Spot.Tilt").type('5');
    QCOMPARE(observer.typed, QStringList("Tilt"));
    QCOMPARE(observer.changed, QStringList());
}

void tst_Fixture::aTickThatNobodyWatchesAllocatesNothing() {
    TestClock clock(100 * Second); // so that the first send, which fails and says so, comes at once
    Fixture& fixture = rig_->add(placement("Spot", 0, 1, faders(512)));
    TestObserver observer(fixture);
    observer.sees = false;
    rig_->tick();
    for (const auto& control : fixture.controls()) {
        control->setDMXValue(255, 3);
    }
    const std::size_t before = allocationCount();
    for (int tick = 0; tick < 60; ++tick) {
        clock.advance(Tick);
        rig_->tick();
    }
    QCOMPARE(allocationCount(), before);
    QVERIFY(observer.missed >= 59);
}

void tst_Fixture::theNeighbourIsTheNextThatIsNoDummy() {
    const QVariantMap label{{"label", "Position"}};
    const Fixture& fixture =
        rig_->add(placement("Spot", 0, 1,
                            {label, controlEntry("Pan"), label, controlEntry("Tilt"), controlEntry("Zoom"),
                             QVariantMap{{"blank", qlonglong{1}}}}));
    const DMXControl& pan = rig_->control("Spot.Pan");
    const DMXControl& tilt = rig_->control("Spot.Tilt");
    const DMXControl& zoom = rig_->control("Spot.Zoom");
    QCOMPARE(&fixture.neighbourOf(pan, false), &tilt);
    QCOMPARE(&fixture.neighbourOf(tilt, true), &pan);
    QCOMPARE(&fixture.neighbourOf(zoom, false), &pan);
    QCOMPARE(&fixture.neighbourOf(pan, true), &zoom);
    QCOMPARE(fixture.endControl(false), &pan);
    QCOMPARE(fixture.endControl(true), &zoom);
    const Fixture& one = rig_->add(placement("One", 0, 1, {label, controlEntry("Pan"), label}));
    QCOMPARE(&one.neighbourOf(rig_->control("One.Pan"), false), &rig_->control("One.Pan"));
    QCOMPARE(&one.neighbourOf(rig_->control("One.Pan"), true), &rig_->control("One.Pan"));
    const Fixture& none = rig_->add(placement("None", 0, 1, {label}));
    QCOMPARE(none.endControl(false), nullptr);
    QCOMPARE(none.endControl(true), nullptr);
}

void tst_Fixture::aFixtureThatGoesTakesItsKeysAlong() {
    {
        const Fixture fixture(Placement::fromEntry(placement("Spot", 0, 1, {controlEntry("Pan")})),
                              rig_->profiles(), rig_->faders(),
                              std::make_shared<FixtureLevels>(rig_->engine()));
        QCOMPARE(keys(), QStringList("Spot.Pan"));
    }
    QCOMPARE(keys(), QStringList());
}

QTEST_APPLESS_MAIN(tst_Fixture)
#include "tst_Fixture.moc"
