#include "rig/Fixtures.h"

#include "support/StandardOutput.h"
#include "support/TestClock.h"
#include "support/TestRig.h"

#include <QTest>

#include <memory>

namespace {

QVariantMap oneFader(const QString& name, int address = 1, int level = 0) {
    return placement(name, 0, address, {controlEntry("Pan", level)});
}

QStringList namesOf(const Fixtures& fixtures) {
    QStringList names;
    for (const auto& fixture : fixtures.rows()) {
        names.append(fixture->name());
    }
    return names;
}

} // namespace

class tst_Fixtures : public QObject {
    Q_OBJECT

private slots:
    void init() { rig_ = std::make_unique<TestRig>(); }
    void cleanup() { rig_.reset(); }

    void atFirstThereAreNone();
    void aNewFixtureStandsBelowTheOthers();
    void severalAreInsertedBeforeARow();
    void someAreTakenAway();
    void allAreReplaced();
    void whatComesAndGoesIsSaid();
    void theyGoAfterItIsSaid();

    void ofSeveralWithOneKeyTheLastRowIsFound();
    void whereOneGoesAnotherWithItsKeyIsFound();
    void fixturesWhoseNamesAndPartsMeetShareKeysToo();
    void replacedFixturesLeaveTheirKeysFree();

    void whatComesIsSentInOneTick();
    void levelsArePreparedBeforeTheyGoOut_data();
    void levelsArePreparedBeforeTheyGoOut();
    void ofTwoInASlotTheLastRowIsHeard();
    void aFixtureThatGoesLeavesNothingLit();
    void fixturesThatStayGoOnFading();

    void aSelectionOfARemovedFixturesControlIsForgotten();
    void otherSelectionsStay();
    void twoRigsStandSideBySide();
    void theEngineOutlivesTheFixtures();

private:
    Fixtures& fixtures() { return rig_->fixtures(); }
    int level(std::size_t slot) { return rig_->engine().slotLevels(0)[slot - 1]; }

    std::unique_ptr<TestRig> rig_;
};

void tst_Fixtures::atFirstThereAreNone() {
    QCOMPARE(fixtures().count(), std::size_t{0});
    QCOMPARE(fixtures().at(0), nullptr);
    fixtures().tellMoved();
    rig_->tick();
    QVERIFY(rig_->engine().sendRecords().empty());
}

void tst_Fixtures::aNewFixtureStandsBelowTheOthers() {
    const Fixture& first = fixtures().add(oneFader("A"));
    const Fixture& second = fixtures().add(oneFader("B"));
    QCOMPARE(namesOf(fixtures()), QStringList({"A", "B"}));
    QCOMPARE(fixtures().at(0), &first);
    QCOMPARE(fixtures().at(1), &second);
    QCOMPARE(fixtures().at(2), nullptr);
    QCOMPARE(fixtures().rowOf(first), std::size_t{0});
    QCOMPARE(fixtures().rowOf(second), std::size_t{1});
    TestRig other;
    QCOMPARE(fixtures().rowOf(other.add(oneFader("A"))), std::size_t{2});
}

void tst_Fixtures::severalAreInsertedBeforeARow() {
    Fixture& first = fixtures().add(oneFader("A"));
    Fixture& last = fixtures().add(oneFader("D"));
    fixtures().insert(1, {oneFader("B"), oneFader("C")});
    QCOMPARE(namesOf(fixtures()), QStringList({"A", "B", "C", "D"}));
    QCOMPARE(fixtures().at(0), &first);
    QCOMPARE(fixtures().at(3), &last);
    fixtures().insert(0, {oneFader("0")});
    fixtures().insert(5, {oneFader("E"), oneFader("F")});
    fixtures().insert(3, {});
    QCOMPARE(namesOf(fixtures()), QStringList({"0", "A", "B", "C", "D", "E", "F"}));
}

void tst_Fixtures::someAreTakenAway() {
    fixtures().insert(0, {oneFader("A"), oneFader("B"), oneFader("C"), oneFader("D")});
    fixtures().remove(1, 2);
    QCOMPARE(namesOf(fixtures()), QStringList({"A", "D"}));
    QCOMPARE(rig_->faders().find("B.Pan"), nullptr);
    QCOMPARE(rig_->faders().find("C.Pan"), nullptr);
    QCOMPARE(rig_->faders().count(), std::size_t{2});
}

void tst_Fixtures::allAreReplaced() {
    fixtures().insert(0, {oneFader("A"), oneFader("B")});
    fixtures().replaceAll({oneFader("C"), oneFader("D"), oneFader("E")});
    QCOMPARE(namesOf(fixtures()), QStringList({"C", "D", "E"}));
    QCOMPARE(rig_->faders().count(), std::size_t{3});
    QCOMPARE(rig_->faders().find("A.Pan"), nullptr);
    QVERIFY(rig_->faders().find("E.Pan"));
    fixtures().replaceAll({});
    QCOMPARE(fixtures().count(), std::size_t{0});
    QCOMPARE(rig_->faders().count(), std::size_t{0});
}

void tst_Fixtures::whatComesAndGoesIsSaid() {
    QStringList said;
    connect(&fixtures(), &Fixtures::inserted, this, [&](std::size_t row, std::size_t count) {
        said.append(QString("+%1 at %2 of %3").arg(count).arg(row).arg(fixtures().count()));
    });
    connect(&fixtures(), &Fixtures::aboutToBeRemoved, this, [&](std::size_t row, std::size_t count) {
        said.append(QString("-%1 at %2 of %3").arg(count).arg(row).arg(fixtures().count()));
    });
    fixtures().add(oneFader("A"));
    fixtures().insert(0, {oneFader("B"), oneFader("C")});
    fixtures().remove(1, 2);
    fixtures().replaceAll({oneFader("D"), oneFader("E")});
    QCOMPARE(said,
             QStringList({"+1 at 0 of 1", "+2 at 0 of 3", "-2 at 1 of 3", "-1 at 0 of 1", "+2 at 0 of 2"}));
}

// Whoever shows a fixture still may ask it for everything.
void tst_Fixtures::theyGoAfterItIsSaid() {
    fixtures().insert(0, {oneFader("A"), oneFader("B")});
    QStringList seen;
    connect(&fixtures(), &Fixtures::aboutToBeRemoved, this, [&](std::size_t row, std::size_t) {
        seen.append(fixtures().at(row)->controls().front()->key());
        seen.append(rig_->faders().find(seen.last()) ? "found" : "not found");
    });
    fixtures().remove(1, 1);
    fixtures().replaceAll({});
    QCOMPARE(seen, QStringList({"B.Pan", "found", "A.Pan", "found"}));
}

void tst_Fixtures::ofSeveralWithOneKeyTheLastRowIsFound() {
    standardOutputOf([this] {
        fixtures().add(oneFader("A"));
        fixtures().add(oneFader("A"));
    });
    QCOMPARE(&rig_->control("A.Pan").fixture(), fixtures().at(1));
    const QByteArray output = standardOutputOf([this] { fixtures().insert(1, {oneFader("A")}); });
    QCOMPARE(output, "DMXControl 'A.Pan' already exists!\n");
    QCOMPARE(&rig_->control("A.Pan").fixture(), fixtures().at(2));
    QCOMPARE(rig_->faders().count(), std::size_t{1});
}

void tst_Fixtures::whereOneGoesAnotherWithItsKeyIsFound() {
    standardOutputOf([this] {
        fixtures().insert(0, {oneFader("A"), oneFader("A"), oneFader("A"), oneFader("B")});
    });
    fixtures().remove(2, 1);
    QCOMPARE(&rig_->control("A.Pan").fixture(), fixtures().at(1));
    fixtures().remove(0, 1);
    QCOMPARE(&rig_->control("A.Pan").fixture(), fixtures().at(0));
    fixtures().remove(0, 1);
    QCOMPARE(rig_->faders().find("A.Pan"), nullptr);
    QVERIFY(rig_->faders().find("B.Pan"));
}

// "A.B" with "Pan" and "A" with "B.Pan".
void tst_Fixtures::fixturesWhoseNamesAndPartsMeetShareKeysToo() {
    standardOutputOf([this] {
        fixtures().add(placement("A", 0, 1, {controlEntry("B.Pan")}));
        fixtures().add(oneFader("A.B"));
    });
    QCOMPARE(&rig_->control("A.B.Pan").fixture(), fixtures().at(1));
    fixtures().remove(1, 1);
    QCOMPARE(&rig_->control("A.B.Pan").fixture(), fixtures().at(0));
}

void tst_Fixtures::replacedFixturesLeaveTheirKeysFree() {
    fixtures().add(oneFader("A"));
    QCOMPARE(standardOutputOf([this] { fixtures().replaceAll({oneFader("A")}); }), "");
    QCOMPARE(&rig_->control("A.Pan").fixture(), fixtures().at(0));
}

void tst_Fixtures::whatComesIsSentInOneTick() {
    fixtures().replaceAll({oneFader("A", 1, 10), oneFader("B", 2, 20)});
    QCOMPARE(level(1), 0);
    rig_->tick();
    QCOMPARE(level(1), 10);
    QCOMPARE(level(2), 20);
    fixtures().insert(1, {oneFader("C", 3, 30), oneFader("D", 4, 40)});
    rig_->tick();
    QCOMPARE(level(3), 30);
    QCOMPARE(level(4), 40);
}

void tst_Fixtures::levelsArePreparedBeforeTheyGoOut_data() {
    QTest::addColumn<bool>("replace");
    QTest::newRow("inserted") << false;
    QTest::newRow("in the place of all") << true;
}

// Even a tick in the midst of it sends none of the levels that are not prepared yet.
void tst_Fixtures::levelsArePreparedBeforeTheyGoOut() {
    QFETCH(const bool, replace);
    bool isPrepared = false;
    const auto prepare = [&] {
        rig_->engine().tick();
        QCOMPARE(level(1), 0);
        rig_->control("A.Pan").setValue(99);
        isPrepared = true;
    };
    const QVariantList placements{oneFader("A", 1, 10)};
    replace ? fixtures().replaceAll(placements, prepare) : fixtures().insert(0, placements, prepare);
    QVERIFY(isPrepared);
    rig_->tick();
    QCOMPARE(level(1), 99);
}

void tst_Fixtures::ofTwoInASlotTheLastRowIsHeard() {
    fixtures().add(oneFader("Last", 1, 20));
    rig_->tick();
    fixtures().insert(0, {oneFader("First", 1, 10)});
    rig_->tick();
    QCOMPARE(level(1), 20);
    fixtures().remove(1, 1);
    rig_->tick();
    QCOMPARE(level(1), 10);
}

void tst_Fixtures::aFixtureThatGoesLeavesNothingLit() {
    fixtures().insert(0, {oneFader("A", 1, 10), oneFader("B", 2, 20)});
    rig_->tick();
    fixtures().remove(0, 1);
    rig_->tick();
    QCOMPARE(level(1), 0);
    QCOMPARE(level(2), 20);
    fixtures().replaceAll({});
    rig_->tick();
    QCOMPARE(level(2), 0);
}

void tst_Fixtures::fixturesThatStayGoOnFading() {
    constexpr std::uint64_t second = 1'000'000'000;
    TestClock clock(0);
    fixtures().add(oneFader("A"));
    rig_->control("A.Pan").setDMXValue(200, 2);
    clock.set(second / 2);
    rig_->tick();
    QCOMPARE(level(1), 50);
    fixtures().insert(0, {oneFader("B", 2)});
    fixtures().remove(0, 1);
    clock.set(second);
    rig_->tick();
    QCOMPARE(level(1), 100);
}

// A selection that was saved is found by its key, and may so be another fixture's fader.
void tst_Fixtures::aSelectionOfARemovedFixturesControlIsForgotten() {
    standardOutputOf([this] { fixtures().insert(0, {oneFader("A"), oneFader("A")}); });
    fixtures().at(0)->setSelectedControl(&rig_->control("A.Pan"));
    QCOMPARE(&fixtures().at(0)->selectedControl()->fixture(), fixtures().at(1));
    fixtures().remove(1, 1);
    QCOMPARE(fixtures().at(0)->selectedControl(), nullptr);
}

void tst_Fixtures::otherSelectionsStay() {
    fixtures().insert(0, {oneFader("A"), oneFader("B")});
    rig_->control("A.Pan").becomeFirstResponder();
    fixtures().remove(1, 1);
    QCOMPARE(fixtures().at(0)->selectedControl(), &rig_->control("A.Pan"));
    fixtures().insert(0, {oneFader("C")});
    QCOMPARE(fixtures().at(1)->selectedControl(), &rig_->control("A.Pan"));
}

void tst_Fixtures::twoRigsStandSideBySide() {
    TestRig other;
    QCOMPARE(standardOutputOf([&] {
                 fixtures().add(oneFader("A", 1, 10));
                 other.add(oneFader("A", 1, 20));
             }),
             "");
    rig_->tick();
    QCOMPARE(level(1), 10);
    QVERIFY(other.engine().slotLevels(0) == Engine::SlotLevels{});
    other.tick();
    QCOMPARE(other.engine().slotLevels(0)[0], 20);
    rig_->control("A.Pan").setValue(11);
    QCOMPARE(other.control("A.Pan").value(), 20U);
    fixtures().replaceAll({});
    QVERIFY(other.faders().find("A.Pan"));
    other.tick();
    QCOMPARE(other.engine().slotLevels(0)[0], 20);
}

void tst_Fixtures::theEngineOutlivesTheFixtures() {
    Engine engine;
    Faders faders;
    const Profiles profiles;
    {
        Fixtures fixtures(engine, faders, profiles);
        fixtures.add(oneFader("A", 1, 10));
        engine.tick();
        QCOMPARE(engine.slotLevels(0)[0], 10);
    }
    QCOMPARE(faders.count(), std::size_t{0});
    engine.tick();
    QCOMPARE(engine.slotLevels(0)[0], 0);
}

QTEST_APPLESS_MAIN(tst_Fixtures)
#include "tst_Fixtures.moc"
