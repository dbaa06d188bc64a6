#include "artnet/DMX_Universe.h"

#include "artnet/Transport.h"
#include "support/AllocationCount.h"
#include "support/DatagramListener.h"
#include "support/TestClock.h"

#include <QTest>

#include <unistd.h>

#include <algorithm>
#include <bitset>
#include <limits>
#include <memory>
#include <utility>

namespace {

constexpr std::uint8_t OwnAddress = 72;
constexpr std::uint64_t Second = 1'000'000'000;
constexpr std::uint64_t Tick = 33'300'000;

QByteArray bytes(std::span<const std::uint8_t> data) {
    return {reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size())};
}

QByteArray sequences(const QList<QByteArray>& datagrams) {
    QByteArray result;
    for (const QByteArray& datagram : datagrams) {
        result.append(datagram.at(12));
    }
    return result;
}

} // namespace

class tst_DMX_Universe : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void aFreshUniverseHoldsTheHeaderWithLength0();
    void slot1IsAtByte18AndSlot512AtByte529();
    void aDatagramIsTheWholeHeaderAndTheSlots();
    void onlyTheLow8BitsOfTheNumberAreSent_data();
    void onlyTheLow8BitsOfTheNumberAreSent();
    void firstDatagramCarriesSequence2();
    void sequence0FollowsSequence255And2FollowsIt();
    void aFailedSendUsesUpASequenceNumber();

    void aUniverseThatNobodyWroteToIsNeverSent();
    void aChangeIsSentAtOnce();
    void twoChangesInOneTickGiveOneDatagram();
    void aChangeInEveryTickGivesADatagramPerTick();
    void unchangedLevelsAreRefreshedOneSecondAfterTheLastSend_data();
    void unchangedLevelsAreRefreshedOneSecondAfterTheLastSend();
    void tenSecondsOfUnchangedLevelsGiveTenRefreshes();
    void noRefreshOnceNobodyWritesAnyMore();
    void aSendClearsBothFlags();
    void aCallThatSendsNothingLeavesTheFlags();
    void aFailedSendClearsBothFlagsAndIsTriedAgainAfterASecond();

    void slotsThatAreNotKeptGoToZeroAndAreSent();
    void whereEverythingIsKeptOrZeroNothingIsSent();

    void universe256StandsBesideUniverse0();
    void sendingAllocatesNothing();

private:
    /// One tick of a fixture's life: it writes its levels and the universe is offered.
    std::int32_t tick(DMX_Universe& universe, bool changed) const;

    std::unique_ptr<DatagramListener> listener_;
    int socket_ = -1;
};

std::int32_t tst_DMX_Universe::tick(DMX_Universe& universe, bool changed) const {
    universe.setActive(true);
    if (changed) {
        universe.setNeedsTX(true);
    }
    return universe.sendWithSocket(socket_, listener_->address());
}

void tst_DMX_Universe::initTestCase() {
    listener_ = std::make_unique<DatagramListener>(OwnAddress);
    QVERIFY(listener_->isListening());
    socket_ = createSocket(0);
    QVERIFY(socket_ >= 0);
}

void tst_DMX_Universe::init() {
    listener_->takeArrived();
}

void tst_DMX_Universe::cleanupTestCase() {
    close(std::exchange(socket_, -1));
}

void tst_DMX_Universe::aFreshUniverseHoldsTheHeaderWithLength0() {
    const DMX_Universe universe;
    QCOMPARE(bytes(universe.packet()).toHex(), "4172742d4e657400" // ID
                                               "0050"             // OpCode ArtDmx
                                               "000e"             // ProtVer 14
                                               "00"               // Sequence
                                               "00"               // Physical
                                               "00"               // SubUni
                                               "00"               // Net
                                               "0000"             // Length
                                                   + QByteArray(1024, '0'));
    QCOMPARE(universe.universe(), 0U);
    QVERIFY(!universe.active());
    QVERIFY(!universe.needsTX());
}

void tst_DMX_Universe::slot1IsAtByte18AndSlot512AtByte529() {
    DMX_Universe universe;
    universe.dmx()[0] = 0x12;
    universe.dmx()[511] = 0x34;
    QCOMPARE(universe.packet()[18], 0x12);
    QCOMPARE(universe.packet()[529], 0x34);
}

void tst_DMX_Universe::aDatagramIsTheWholeHeaderAndTheSlots() {
    DMX_Universe universe;
    universe.setUniverse(3);
    universe.dmx()[0] = 0xFF;
    universe.dmx()[511] = 0x7F;
    QCOMPARE(tick(universe, true), 530);
    const auto datagrams = listener_->waitFor(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(datagrams.first().toHex(), "4172742d4e657400" // ID
                                        "0050"             // OpCode ArtDmx
                                        "000e"             // ProtVer 14
                                        "02"               // Sequence
                                        "00"               // Physical
                                        "03"               // SubUni
                                        "00"               // Net
                                        "0200"             // Length 512
                                        "ff" +
                                            QByteArray(1020, '0') + "7f");
}

void tst_DMX_Universe::onlyTheLow8BitsOfTheNumberAreSent_data() {
    QTest::addColumn<qint32>("number");
    QTest::addColumn<quint32>("kept");
    QTest::addColumn<quint8>("sent");

    QTest::newRow("0") << 0 << 0U << quint8(0);
    QTest::newRow("255") << 255 << 255U << quint8(255);
    QTest::newRow("256") << 256 << 256U << quint8(0);
    QTest::newRow("4660") << 0x1234 << 0x1234U << quint8(0x34);
    QTest::newRow("-1") << -1 << 0xFFFFFFFFU << quint8(0xFF);
    QTest::newRow("lowest number") << std::numeric_limits<qint32>::min() << 0x80000000U << quint8(0);
}

void tst_DMX_Universe::onlyTheLow8BitsOfTheNumberAreSent() {
    QFETCH(const qint32, number);
    QFETCH(const quint32, kept);
    QFETCH(const quint8, sent);

    DMX_Universe universe;
    universe.setUniverse(static_cast<std::uint32_t>(number));
    QCOMPARE(universe.universe(), kept);
    QCOMPARE(tick(universe, true), 530);
    const auto datagrams = listener_->waitFor(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(static_cast<quint8>(datagrams.first().at(14)), sent);
    QCOMPARE(datagrams.first().at(15), '\x00');
}

void tst_DMX_Universe::firstDatagramCarriesSequence2() {
    DMX_Universe universe;
    QCOMPARE(tick(universe, true), 530);
    QCOMPARE(sequences(listener_->waitFor(1)), QByteArray("\x02"));
}

void tst_DMX_Universe::sequence0FollowsSequence255And2FollowsIt() {
    DMX_Universe universe;
    QByteArray seen;
    for (int datagram = 0; datagram < 257; ++datagram) {
        QCOMPARE(tick(universe, true), 530);
        seen += sequences(listener_->waitFor(1));
    }
    QByteArray expected;
    for (int sequence = 2; sequence <= 255; ++sequence) {
        expected.append(static_cast<char>(sequence));
    }
    expected.append('\x00').append('\x02').append('\x03');
    QCOMPARE(seen.toHex(), expected.toHex());
}

void tst_DMX_Universe::aFailedSendUsesUpASequenceNumber() {
    DMX_Universe universe;
    universe.setActive(true);
    universe.setNeedsTX(true);
    QCOMPARE(universe.sendWithSocket(-1, listener_->address()), -1);
    QCOMPARE(tick(universe, true), 530);
    QCOMPARE(sequences(listener_->waitFor(1)), QByteArray("\x03"));
}

void tst_DMX_Universe::aUniverseThatNobodyWroteToIsNeverSent() {
    TestClock clock(0);
    DMX_Universe universe;
    for (const std::uint64_t now : {std::uint64_t{0}, Second, 3600 * Second}) {
        clock.set(now);
        QCOMPARE(universe.sendWithSocket(socket_, listener_->address()), 0);
    }
    universe.setNeedsTX(true);
    QCOMPARE(universe.sendWithSocket(socket_, listener_->address()), 0);
    QVERIFY(listener_->takeArrived().isEmpty());
}

void tst_DMX_Universe::aChangeIsSentAtOnce() {
    const TestClock clock(0);
    DMX_Universe universe;
    QCOMPARE(tick(universe, true), 530);
    QCOMPARE(tick(universe, true), 530);
    QCOMPARE(listener_->waitFor(2).size(), 2);
}

void tst_DMX_Universe::twoChangesInOneTickGiveOneDatagram() {
    const TestClock clock(0);
    DMX_Universe universe;
    for (const std::size_t slot : {0U, 1U}) {
        universe.dmx()[slot] = 0xAA;
        universe.setActive(true);
        universe.setNeedsTX(true);
    }
    QCOMPARE(universe.sendWithSocket(socket_, listener_->address()), 530);
    QCOMPARE(universe.sendWithSocket(socket_, listener_->address()), 0);
    const auto datagrams = listener_->waitFor(1);
    QCOMPARE(datagrams.size(), 1);
    QCOMPARE(datagrams.first().mid(18, 3).toHex(), QByteArray("aaaa00"));
}

void tst_DMX_Universe::aChangeInEveryTickGivesADatagramPerTick() {
    TestClock clock(0);
    DMX_Universe universe;
    for (std::uint8_t level = 1; level <= 30; ++level) {
        clock.advance(Tick);
        universe.dmx()[0] = level;
        QCOMPARE(tick(universe, true), 530);
    }
    const auto datagrams = listener_->waitFor(30);
    QCOMPARE(datagrams.size(), 30);
    QCOMPARE(datagrams.last().at(18), '\x1E');
}

void tst_DMX_Universe::unchangedLevelsAreRefreshedOneSecondAfterTheLastSend_data() {
    QTest::addColumn<quint64>("lastSend");
    QTest::addColumn<quint64>("nanosecondsSince");
    QTest::addColumn<qint32>("sent");

    const quint64 beforeWrap = std::numeric_limits<quint64>::max() - 10;
    QTest::newRow("at once") << quint64(5) << quint64(0) << 0;
    QTest::newRow("just before") << quint64(5) << quint64(999'999'999) << 0;
    QTest::newRow("to the nanosecond") << quint64(5) << quint64(1'000'000'000) << 530;
    QTest::newRow("late") << quint64(5) << quint64(1'000'000'001) << 530;
    QTest::newRow("just before, the clock wraps") << beforeWrap << quint64(999'999'999) << 0;
    QTest::newRow("to the nanosecond, the clock wraps") << beforeWrap << quint64(1'000'000'000) << 530;
}

void tst_DMX_Universe::unchangedLevelsAreRefreshedOneSecondAfterTheLastSend() {
    QFETCH(const quint64, lastSend);
    QFETCH(const quint64, nanosecondsSince);
    QFETCH(const qint32, sent);

    TestClock clock(lastSend);
    DMX_Universe universe;
    QCOMPARE(tick(universe, true), 530);
    clock.advance(nanosecondsSince);
    QCOMPARE(tick(universe, false), sent);
}

void tst_DMX_Universe::tenSecondsOfUnchangedLevelsGiveTenRefreshes() {
    TestClock clock(7 * Second);
    DMX_Universe universe;
    QCOMPARE(tick(universe, true), 530);
    int refreshes = 0;
    // A refresh goes out at the first tick after a whole second, the 31st after the last one.
    for (int count = 0; count < 310; ++count) {
        clock.advance(Tick);
        refreshes += tick(universe, false) == 530 ? 1 : 0;
    }
    QCOMPARE(refreshes, 10);
    QCOMPARE(listener_->waitFor(11).size(), 11);
}

void tst_DMX_Universe::noRefreshOnceNobodyWritesAnyMore() {
    TestClock clock(7 * Second);
    DMX_Universe universe;
    QCOMPARE(tick(universe, true), 530);
    clock.advance(3600 * Second);
    QCOMPARE(universe.sendWithSocket(socket_, listener_->address()), 0);
    QCOMPARE(tick(universe, false), 530);
}

void tst_DMX_Universe::aSendClearsBothFlags() {
    DMX_Universe universe;
    QCOMPARE(tick(universe, true), 530);
    QVERIFY(!universe.active());
    QVERIFY(!universe.needsTX());
}

void tst_DMX_Universe::aCallThatSendsNothingLeavesTheFlags() {
    const TestClock clock(0);
    DMX_Universe universe;
    universe.setNeedsTX(true);
    QCOMPARE(universe.sendWithSocket(socket_, listener_->address()), 0);
    QVERIFY(universe.needsTX());
    QVERIFY(!universe.active());

    universe.setNeedsTX(false);
    universe.setActive(true);
    QCOMPARE(universe.sendWithSocket(socket_, listener_->address()), 0);
    QVERIFY(!universe.needsTX());
    QVERIFY(universe.active());
}

void tst_DMX_Universe::aFailedSendClearsBothFlagsAndIsTriedAgainAfterASecond() {
    TestClock clock(7 * Second);
    DMX_Universe universe;
    universe.setActive(true);
    universe.setNeedsTX(true);
    QCOMPARE(universe.sendWithSocket(-1, listener_->address()), -1);
    QVERIFY(!universe.active());
    QVERIFY(!universe.needsTX());

    clock.advance(Second - 1);
    QCOMPARE(tick(universe, false), 0);
    clock.advance(1);
    QCOMPARE(tick(universe, false), 530);
}

void tst_DMX_Universe::slotsThatAreNotKeptGoToZeroAndAreSent() {
    DMX_Universe universe;
    std::ranges::fill(universe.dmx(), std::uint8_t{7});
    std::bitset<512> kept;
    kept.set(0);
    kept.set(511);
    universe.clearSlotsExcept(kept);
    QCOMPARE(bytes(universe.dmx()), "\x07" + QByteArray(510, '\0') + "\x07");
    QVERIFY(universe.needsTX());
    QVERIFY(!universe.active());
}

void tst_DMX_Universe::whereEverythingIsKeptOrZeroNothingIsSent() {
    DMX_Universe universe;
    universe.dmx()[4] = 7;
    std::bitset<512> kept;
    kept.set(4);
    universe.clearSlotsExcept(kept);
    QCOMPARE(universe.dmx()[4], std::uint8_t{7});
    QVERIFY(!universe.needsTX());
}

void tst_DMX_Universe::universe256StandsBesideUniverse0() {
    DMX_Universe first;
    DMX_Universe second;
    second.setUniverse(256);
    first.dmx()[0] = 0x11;
    second.dmx()[0] = 0x22;
    for (DMX_Universe* universe : {&first, &first, &second}) {
        QCOMPARE(tick(*universe, true), 530);
    }
    const auto datagrams = listener_->waitFor(3);
    QCOMPARE(datagrams.size(), 3);
    QCOMPARE(datagrams.at(1).mid(12, 7).toHex(), QByteArray("03000000020011"));
    QCOMPARE(datagrams.at(2).mid(12, 7).toHex(), QByteArray("02000000020022"));
}

void tst_DMX_Universe::sendingAllocatesNothing() {
    DMX_Universe universe;
    const std::size_t before = allocationCount();
    const std::int32_t sent = tick(universe, true);
    const std::size_t after = allocationCount();
    QCOMPARE(sent, 530);
    QCOMPARE(after - before, std::size_t{0});
    QVERIFY(before > 0);
}

QTEST_APPLESS_MAIN(tst_DMX_Universe)
#include "tst_DMX_Universe.moc"
