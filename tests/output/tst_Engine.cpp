#include "output/Engine.h"

#include "artnet/Transport.h"
#include "output/EngineFixture.h"
#include "support/AllocationCount.h"
#include "support/DatagramListener.h"
#include "support/StandardOutput.h"
#include "support/TestClock.h"

#include <QDeadlineTimer>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <optional>
#include <thread>
#include <vector>

namespace {

constexpr std::uint8_t OwnAddress = 83;
constexpr std::uint8_t OtherAddress = 84;
constexpr std::uint64_t Second = 1'000'000'000;
constexpr std::uint64_t Tick = 33'300'000;
constexpr qsizetype HeaderSize = 18;

// The level of a DMX slot, 1..512.
int levelIn(const QByteArray& datagram, qsizetype slot) {
    return static_cast<std::uint8_t>(datagram.at(HeaderSize - 1 + slot));
}

bool isOpen(int descriptor) {
    return fcntl(descriptor, F_GETFD) >= 0;
}

// From the lock, so that the other thread gets it.
void stayAway(std::chrono::microseconds duration) {
    const auto until = std::chrono::steady_clock::now() + duration;
    while (std::chrono::steady_clock::now() < until) {
    }
}

} // namespace

class tst_Engine : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void nothingIsSentWithoutFixtures();
    void aFixtureThatIsNotPartOfThePatchIsNotSent();
    void aChangeIsSentOnceWithTheNextTick();
    void aChangeOfAnyLevelIsSent();
    void unchangedLevelsAreRefreshedOnceASecond();
    void severalChangesAreOneDatagram();
    void fixturesShareTheirUniverse();
    void eachUniverseHasADatagramOfItsOwn();
    void ofTwoFixturesInASlotTheLastIsHeard();
    void aFadeAdvancesWithEveryTick();
    void theSlotsOfAUniverseAreToldAsTheyAreSent();

    void manyLevelsGoInOneTick();
    void noDatagramShowsHalfAnEdit_data();
    void noDatagramShowsHalfAnEdit();

    void aPausedTickDoesNothing();
    void aFadeGoesOnByTheClockAfterAPause();

    void whatNothingDrivesAnyMoreGoesDark();
    void whatAFixtureLeavesGoesDark();
    void aUniverseThatItsLastFixtureLeavesIsSentNoMore();
    void slotsOfFixturesOutsideThePatchAreLeftAlone();

    void theAddressAndTheSocketAreExchanged();
    void theSocketIsClosedWithTheEngine();
    void failuresAreCountedAndSaid();

    void thereIsNewsWhenSomethingChanged();
    void aLevelWithoutASlotIsNewsToo();
    void theListenerIsCalledOnceUntilTheNewsIsTaken();
    void theListenerMayAskTheEngine();

    void anIdleTickAllocatesNothing();
    void aTickInMidFadeAllocatesNothing();

private:
    std::shared_ptr<FixtureLevels> add(std::int32_t universe, std::uint32_t first, std::size_t count = 1);
    void goTo(const std::vector<LevelChange>& changes) { engine_->goTo(changes); }

    std::optional<DatagramListener> listener_;
    std::optional<TestClock> clock_;
    std::optional<Engine> engine_;
    Engine::Patch patch_;
};

void tst_Engine::initTestCase() {
    listener_.emplace(OwnAddress);
    QVERIFY(listener_->isListening());
}

void tst_Engine::init() {
    clock_.emplace(0);
    engine_.emplace();
    const int socket = createSocket(0);
    QVERIFY(socket >= 0);
    engine_->setSocket(socket);
    engine_->setAddress(listener_->address());
    listener_->takeArrived();
}

void tst_Engine::cleanup() {
    engine_.reset();
    patch_.clear();
    clock_.reset();
}

// Adds a fixture to the patch.
std::shared_ptr<FixtureLevels> tst_Engine::add(std::int32_t universe, std::uint32_t first,
                                               std::size_t count) {
    patch_.push_back(makeLevels(*engine_, universe, first, count));
    engine_->setPatch(patch_);
    return patch_.back();
}

// --- What is sent ---------------------------------------------------------------------------------------

void tst_Engine::nothingIsSentWithoutFixtures() {
    for (int tick = 0; tick < 100; ++tick) {
        clock_->advance(Second);
        engine_->tick();
    }
    QVERIFY(engine_->sendRecords().empty());
    QVERIFY(listener_->takeArrived().isEmpty());
}

void tst_Engine::aFixtureThatIsNotPartOfThePatchIsNotSent() {
    const auto levels = makeLevels(*engine_, 0, 1);
    levels->held()->setValue(0, 77);
    clock_->advance(Second);
    engine_->tick();
    QVERIFY(engine_->sendRecords().empty());
}

void tst_Engine::aChangeIsSentOnceWithTheNextTick() {
    const auto levels = add(5, 3);
    engine_->tick();
    QCOMPARE(engine_->sendRecords().front().sent, 0U);
    levels->held()->setValue(0, 77);
    QCOMPARE(engine_->sendRecords().front().sent, 0U);
    engine_->tick();
    engine_->tick();
    QCOMPARE(engine_->sendRecords().front().sent, 1U);
    const QList<QByteArray> datagrams = listener_->waitFor(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(datagrams.first().at(14), '\x05');
    QCOMPARE(levelIn(datagrams.first(), 3), 77);
}

void tst_Engine::aChangeOfAnyLevelIsSent() {
    const auto levels = add(0, 1, 3);
    for (const std::size_t index : {0U, 1U, 2U}) {
        levels->held()->setValue(index, 9);
        engine_->tick();
        QCOMPARE(engine_->sendRecords().front().sent, index + 1);
    }
}

void tst_Engine::unchangedLevelsAreRefreshedOnceASecond() {
    clock_->set(7 * Second);
    const auto levels = add(0, 1);
    levels->held()->setValue(0, 9);
    engine_->tick();
    QCOMPARE(engine_->sendRecords().front().sent, 1U);
    // A refresh goes out at the first tick after a whole second, the 31st after the last one.
    for (int tick = 0; tick < 310; ++tick) {
        clock_->advance(Tick);
        engine_->tick();
    }
    QCOMPARE(engine_->sendRecords().front().sent, 11U);
    QCOMPARE(listener_->waitFor(11).size(), 11);
}

void tst_Engine::severalChangesAreOneDatagram() {
    const auto levels = add(0, 1, 512);
    for (std::size_t index = 0; index < 512; ++index) {
        levels->held()->setValue(index, 9);
    }
    engine_->tick();
    const QList<QByteArray> datagrams = listener_->waitFor(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(datagrams.first().mid(HeaderSize), QByteArray(512, '\x09'));
}

void tst_Engine::fixturesShareTheirUniverse() {
    const auto left = add(5, 1);
    const auto right = add(5, 2);
    left->held()->setValue(0, 1);
    right->held()->setValue(0, 2);
    engine_->tick();
    QCOMPARE(engine_->sendRecords().size(), std::size_t{1});
    const QList<QByteArray> datagrams = listener_->waitFor(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(levelIn(datagrams.first(), 1), 1);
    QCOMPARE(levelIn(datagrams.first(), 2), 2);
}

void tst_Engine::eachUniverseHasADatagramOfItsOwn() {
    const auto first = add(0, 1);
    const auto second = add(256, 1);
    first->held()->setValue(0, 0x11);
    second->held()->setValue(0, 0x22);
    engine_->tick();
    first->held()->setValue(0, 0x12);
    engine_->tick();
    const QList<QByteArray> datagrams = listener_->waitFor(3);
    QCOMPARE(datagrams.size(), 3);
    QCOMPARE(datagrams.at(0).mid(12, 7).toHex(), QByteArray("02000000020011"));
    QCOMPARE(datagrams.at(1).mid(12, 7).toHex(), QByteArray("02000000020022"));
    QCOMPARE(datagrams.at(2).mid(12, 7).toHex(), QByteArray("03000000020012"));
}

void tst_Engine::ofTwoFixturesInASlotTheLastIsHeard() {
    const auto under = add(0, 1);
    const auto over = add(0, 1);
    under->held()->setValue(0, 10);
    over->held()->setValue(0, 20);
    engine_->tick();
    QCOMPARE(levelIn(listener_->waitFor(1).first(), 1), 20);
    engine_->setPatch({over, under});
    engine_->tick();
    QCOMPARE(levelIn(listener_->waitFor(1).first(), 1), 10);
}

void tst_Engine::aFadeAdvancesWithEveryTick() {
    const auto levels = add(0, 1);
    goTo({{levels.get(), 0, 200, 2}});
    engine_->tick();
    QCOMPARE(levels->held()->value(0), 0U);
    for (const std::uint32_t level : {50U, 100U, 150U, 200U}) {
        clock_->advance(Second / 2);
        engine_->tick();
        QCOMPARE(levels->held()->value(0), level);
        QCOMPARE(levelIn(listener_->waitFor(1).first(), 1), static_cast<int>(level));
    }
}

void tst_Engine::theSlotsOfAUniverseAreToldAsTheyAreSent() {
    const auto levels = add(5, 512);
    levels->held()->setValue(0, 77);
    QCOMPARE(engine_->slotLevels(5)[511], 0);
    engine_->tick();
    QCOMPARE(engine_->slotLevels(5)[511], 77);
    QCOMPARE(engine_->slotLevels(6), Engine::SlotLevels{});
    QCOMPARE(engine_->sendRecords().size(), std::size_t{1}); // asking makes no universe
}

// --- Edits that land as a whole -------------------------------------------------------------------------

void tst_Engine::manyLevelsGoInOneTick() {
    const auto left = add(0, 1, 256);
    const auto right = add(0, 257, 256);
    std::vector<LevelChange> changes;
    for (const auto& fixture : {left, right}) {
        for (std::uint32_t index = 0; index < 256; ++index) {
            changes.push_back({fixture.get(), index, 9, 0});
        }
    }
    engine_->goTo(changes);
    engine_->tick();
    const QList<QByteArray> datagrams = listener_->waitFor(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(datagrams.first().mid(HeaderSize), QByteArray(512, '\x09'));
}

void tst_Engine::noDatagramShowsHalfAnEdit_data() {
    QTest::addColumn<bool>("moves");

    QTest::newRow("levels that go elsewhere") << false;
    QTest::newRow("a fixture that moves") << true;
}

// While another thread ticks.
void tst_Engine::noDatagramShowsHalfAnEdit() {
    QFETCH(const bool, moves);
    constexpr std::uint32_t half = 256;
    const auto levels = add(0, 1, half);
    const std::array places{placesFrom(1, half), placesFrom(half + 1, half)};
    std::array<std::vector<LevelChange>, 2> changes;
    for (std::uint32_t index = 0; index < half; ++index) {
        changes[0].push_back({levels.get(), index, 1, 0});
        changes[1].push_back({levels.get(), index, 2, 0});
    }
    engine_->goTo(changes[0]);
    std::atomic<bool> isEnded = false;
    std::thread ticking([&] {
        while (!isEnded) {
            engine_->tick();
            stayAway(std::chrono::microseconds(10));
        }
    });
    QList<QByteArray> datagrams;
    const QDeadlineTimer deadline(std::chrono::seconds(3));
    for (int edit = 0; datagrams.size() < 2000 && !deadline.hasExpired(); ++edit) {
        const auto turn = static_cast<std::size_t>(edit % 2);
        if (moves) {
            levels->setPlaces(0, places[turn]);
        } else {
            engine_->goTo(changes[turn]);
        }
        datagrams += listener_->takeArrived();
        stayAway(std::chrono::microseconds(3));
    }
    isEnded = true;
    ticking.join();

    QVERIFY(!datagrams.isEmpty());
    for (const QByteArray& datagram : datagrams) {
        const QByteArray first = datagram.mid(HeaderSize, half);
        const QByteArray second = datagram.mid(HeaderSize + half, half);
        QCOMPARE(first.count(first.at(0)), half);
        QCOMPARE(second.count(second.at(0)), half);
        QVERIFY(first.at(0) == 0 || second.at(0) == 0);
    }
}

// --- Pauses ---------------------------------------------------------------------------------------------

void tst_Engine::aPausedTickDoesNothing() {
    const auto levels = add(0, 1);
    engine_->setPaused(true);
    levels->held()->setValue(0, 9);
    clock_->advance(10 * Second);
    engine_->tick();
    QCOMPARE(engine_->sendRecords().front().sent, 0U);
    QCOMPARE(engine_->slotLevels(0)[0], 0);
    QVERIFY(!engine_->takeNews());
    engine_->setPaused(false);
    engine_->tick();
    QCOMPARE(engine_->sendRecords().front().sent, 1U);
    QCOMPARE(engine_->slotLevels(0)[0], 9);
    QVERIFY(engine_->takeNews());
}

void tst_Engine::aFadeGoesOnByTheClockAfterAPause() {
    const auto levels = add(0, 1);
    goTo({{levels.get(), 0, 200, 2}});
    engine_->setPaused(true);
    clock_->advance(Second);
    engine_->tick();
    QCOMPARE(levels->held()->value(0), 0U);
    engine_->setPaused(false);
    engine_->tick();
    QCOMPARE(levels->held()->value(0), 100U);
}

// --- What nothing drives --------------------------------------------------------------------------------

void tst_Engine::whatNothingDrivesAnyMoreGoesDark() {
    const auto leaving = add(0, 1, 2);
    const auto staying = add(0, 2, 2);
    for (const auto& fixture : {leaving, staying}) {
        goTo({{fixture.get(), 0, 9, 0}, {fixture.get(), 1, 9, 0}});
    }
    engine_->tick();
    QCOMPARE(listener_->waitFor(1).size(), 1);
    engine_->setPatch({staying});
    engine_->tick();
    const QList<QByteArray> datagrams = listener_->waitFor(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(datagrams.first().mid(HeaderSize, 4).toHex(), QByteArray("00090900"));
}

void tst_Engine::whatAFixtureLeavesGoesDark() {
    const auto levels = add(0, 1, 2);
    goTo({{levels.get(), 0, 7, 0}, {levels.get(), 1, 8, 0}});
    engine_->tick();
    QCOMPARE(listener_->waitFor(1).size(), 1);
    levels->setPlaces(0, placesFrom(3, 2));
    engine_->tick();
    const QList<QByteArray> datagrams = listener_->waitFor(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(datagrams.first().mid(HeaderSize, 5).toHex(), QByteArray("0000070800"));
}

void tst_Engine::aUniverseThatItsLastFixtureLeavesIsSentNoMore() {
    const auto levels = add(0, 1);
    levels->held()->setValue(0, 7);
    engine_->tick();
    QCOMPARE(listener_->waitFor(1).size(), 1);
    levels->setPlaces(1, placesFrom(1, 1));
    clock_->advance(Tick);
    engine_->tick();
    QCOMPARE(engine_->slotLevels(0)[0], 0);
    QCOMPARE(engine_->slotLevels(1)[0], 7);
    clock_->advance(10 * Second);
    engine_->tick();
    const QList<QByteArray> datagrams = listener_->waitFor(2);
    QCOMPARE(datagrams.size(), 2);
    for (const QByteArray& datagram : datagrams) {
        QCOMPARE(datagram.at(14), '\x01');
    }
}

void tst_Engine::slotsOfFixturesOutsideThePatchAreLeftAlone() {
    const auto levels = add(0, 1);
    levels->held()->setValue(0, 7);
    engine_->tick();
    const auto outside = makeLevels(*engine_, 0, 1);
    outside->setPlaces(0, placesFrom(100, 1));
    QCOMPARE(engine_->slotLevels(0)[0], 7);
}

// --- Where it goes --------------------------------------------------------------------------------------

void tst_Engine::theAddressAndTheSocketAreExchanged() {
    DatagramListener other(OtherAddress);
    QVERIFY(other.isListening());
    const auto levels = add(0, 1);
    engine_->setAddress(other.address());
    levels->held()->setValue(0, 1);
    engine_->tick();
    QCOMPARE(other.waitFor(1).size(), 1);

    const int first = createSocket(0);
    engine_->setSocket(first);
    const int second = createSocket(0);
    engine_->setSocket(second);
    QVERIFY(!isOpen(first));
    QVERIFY(isOpen(second));
    levels->held()->setValue(0, 2);
    engine_->tick();
    QCOMPARE(levelIn(other.waitFor(1).first(), 1), 2);
    QVERIFY(listener_->takeArrived().isEmpty());
    engine_->setSocket(-1);
    QVERIFY(!isOpen(second));
}

void tst_Engine::theSocketIsClosedWithTheEngine() {
    const int socket = createSocket(0);
    engine_->setSocket(socket);
    QVERIFY(isOpen(socket));
    engine_.reset();
    QVERIFY(!isOpen(socket));
}

void tst_Engine::failuresAreCountedAndSaid() {
    engine_->setSocket(-1);
    const auto levels = add(0, 1);
    add(1, 1);
    const QByteArray said = standardErrorOf([&] {
        clock_->advance(Second);
        engine_->tick();
        levels->held()->setValue(0, 1);
        engine_->tick();
    });
    QCOMPARE(said, QByteArray("Art-Net output fails: Bad file descriptor\n"));
    QCOMPARE(engine_->sendRecords().size(), std::size_t{2});
    for (const SendRecord& record : engine_->sendRecords()) {
        QCOMPARE(record.error, EBADF);
        QCOMPARE(record.sent, 0U);
        QCOMPARE(record.lastNanoseconds, Second);
    }
}

// --- News -----------------------------------------------------------------------------------------------

void tst_Engine::thereIsNewsWhenSomethingChanged() {
    const auto levels = add(0, 1);
    engine_->tick();
    QVERIFY(!engine_->takeNews());
    levels->held()->setValue(0, 9);
    QVERIFY(!engine_->takeNews());
    engine_->tick();
    QVERIFY(engine_->takeNews());
    QVERIFY(!engine_->takeNews());
    levels->held()->takeHasMoved();
    engine_->tick();
    QVERIFY(!engine_->takeNews());
    clock_->advance(Second);
    engine_->tick(); // a refresh, but nothing new
    QCOMPARE(engine_->sendRecords().front().sent, 2U);
    QVERIFY(!engine_->takeNews());
}

void tst_Engine::aLevelWithoutASlotIsNewsToo() {
    const auto levels = add(0, 513);
    goTo({{levels.get(), 0, 200, 2}});
    engine_->tick();
    QVERIFY(!engine_->takeNews());
    clock_->advance(Second);
    engine_->tick();
    QVERIFY(engine_->takeNews());
}

void tst_Engine::theListenerIsCalledOnceUntilTheNewsIsTaken() {
    int calls = 0;
    engine_->setNewsListener([&calls] { ++calls; });
    const auto levels = add(0, 1);
    engine_->tick();
    QCOMPARE(calls, 0);
    for (const std::uint32_t level : {1U, 2U, 3U}) {
        levels->held()->setValue(0, level);
        engine_->tick();
        QCOMPARE(calls, 1);
    }
    QVERIFY(engine_->takeNews());
    levels->held()->takeHasMoved();
    engine_->tick();
    QCOMPARE(calls, 1);
    levels->held()->setValue(0, 4);
    engine_->tick();
    QCOMPARE(calls, 2);
}

// It is called without the lock.
void tst_Engine::theListenerMayAskTheEngine() {
    int seen = 0;
    engine_->setNewsListener([&] {
        seen = engine_->slotLevels(0)[0];
        engine_->takeNews();
    });
    const auto levels = add(0, 1);
    levels->held()->setValue(0, 9);
    engine_->tick();
    QCOMPARE(seen, 9);
}

// --- Memory ---------------------------------------------------------------------------------------------

void tst_Engine::anIdleTickAllocatesNothing() {
    for (int universe = 0; universe < 4; ++universe) {
        add(universe, 1, 512);
    }
    engine_->tick();
    const std::size_t before = allocationCount();
    for (int tick = 0; tick < 100; ++tick) {
        clock_->advance(Tick);
        engine_->tick();
    }
    QCOMPARE(allocationCount(), before);
    QVERIFY(engine_->sendRecords().front().sent >= 3);
}

void tst_Engine::aTickInMidFadeAllocatesNothing() {
    const auto levels = add(0, 1, 512);
    engine_->tick();
    std::vector<LevelChange> changes;
    for (std::uint32_t index = 0; index < 512; ++index) {
        changes.push_back({levels.get(), index, 255, 3});
    }
    engine_->goTo(changes);
    const std::size_t before = allocationCount();
    for (int tick = 0; tick < 60; ++tick) {
        clock_->advance(Tick);
        engine_->tick();
    }
    QCOMPARE(allocationCount(), before);
    QVERIFY(engine_->sendRecords().front().sent >= 59);
}

QTEST_APPLESS_MAIN(tst_Engine)
#include "tst_Engine.moc"
