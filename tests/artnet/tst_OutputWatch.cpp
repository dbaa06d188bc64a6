#include "artnet/OutputWatch.h"

#include "artnet/DMX_Universe.h"
#include "artnet/Transport.h"
#include "support/DatagramListener.h"
#include "support/TestClock.h"

#include <QTest>

#include <unistd.h>

#include <cerrno>
#include <memory>

namespace {

constexpr std::uint8_t ownAddress = 76;
constexpr std::uint64_t second = 1'000'000'000;
constexpr std::uint64_t millisecond = 1'000'000;
constexpr int noSocket = -1;

} // namespace

class tst_OutputWatch : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase() const;

    void withoutUniversesNothingIsSent();
    void aUniverseThatWasNeverSentCountsForNothing();
    void everyUniverseThatGoesOutIsCounted();
    void refreshesOfTwoUniversesAreTwoDatagramsASecond();
    void theRateStandsBetweenTwoRefreshes();
    void aFadeIsSentThirtyTimesASecond();
    void aUniverseThatIsNotSentAnyMoreDropsOut_data();
    void aUniverseThatIsNotSentAnyMoreDropsOut();
    void aFailedSendTellsItsErrorUntilOneSucceeds();
    void failedSendsAreNoDatagrams();
    void aUniverseThatFailedAndWasLeftIsForgotten();
    void releasedUniversesStartTheCountAfresh();

private:
    void send(int universe, int socket) const;
    void send(int universe) const { send(universe, socket_); }

    std::unique_ptr<DatagramListener> listener_;
    int socket_ = -1;
};

void tst_OutputWatch::initTestCase() {
    listener_ = std::make_unique<DatagramListener>(ownAddress);
    QVERIFY(listener_->isListening());
    socket_ = createSocket(0);
}

void tst_OutputWatch::init() {
    DMX_Universe::releaseUniverses();
}

void tst_OutputWatch::cleanupTestCase() const {
    DMX_Universe::releaseUniverses();
    close(socket_);
}

void tst_OutputWatch::send(int universe, int socket) const {
    DMX_Universe& sent = DMX_Universe::getUniverse(universe);
    sent.setActive(true);
    sent.setNeedsTX(true);
    sent.sendWithSocket(socket, listener_->address());
}

void tst_OutputWatch::withoutUniversesNothingIsSent() {
    const OutputStatus status = OutputWatch().look();
    QCOMPARE(status.universes, 0);
    QCOMPARE(status.datagramsPerSecond, 0.0);
    QCOMPARE(status.error, 0);
}

void tst_OutputWatch::aUniverseThatWasNeverSentCountsForNothing() {
    const TestClock clock(second / 2);
    DMX_Universe::getUniverse(1);
    QCOMPARE(OutputWatch().look().universes, 0);
}

void tst_OutputWatch::everyUniverseThatGoesOutIsCounted() {
    const TestClock clock(100 * second);
    send(0);
    send(7);
    send(255);
    QCOMPARE(OutputWatch().look().universes, 3);
}

void tst_OutputWatch::refreshesOfTwoUniversesAreTwoDatagramsASecond() {
    TestClock clock(100 * second);
    OutputWatch watch;
    for (int i = 0; i < 3; ++i) {
        send(1);
        send(2);
        watch.look();
        clock.advance(second);
    }
    QCOMPARE(watch.look().datagramsPerSecond, 2.0);
}

void tst_OutputWatch::theRateStandsBetweenTwoRefreshes() {
    TestClock clock(100 * second);
    OutputWatch watch;
    send(1);
    watch.look();
    clock.advance(second);
    send(1);
    watch.look();
    clock.advance(second - millisecond);
    const OutputStatus status = watch.look();
    QCOMPARE(status.datagramsPerSecond, 1.0);
    QCOMPARE(status.universes, 1);
}

void tst_OutputWatch::aFadeIsSentThirtyTimesASecond() {
    TestClock clock(100 * second);
    OutputWatch watch;
    send(1);
    watch.look();
    for (int i = 0; i < 30; ++i) {
        clock.advance(second / 30);
        send(1);
    }
    QCOMPARE(qRound(watch.look().datagramsPerSecond), 30);
}

void tst_OutputWatch::aUniverseThatIsNotSentAnyMoreDropsOut_data() {
    QTest::addColumn<quint64>("pause");
    QTest::addColumn<int>("universes");

    QTest::newRow("a late refresh") << quint64{1500 * millisecond} << 1;
    QTest::newRow("longer") << quint64{1501 * millisecond} << 0;
}

void tst_OutputWatch::aUniverseThatIsNotSentAnyMoreDropsOut() {
    QFETCH(const quint64, pause);
    QFETCH(const int, universes);

    TestClock clock(100 * second);
    OutputWatch watch;
    send(1);
    watch.look();
    clock.advance(second);
    send(1);
    clock.advance(pause);
    const OutputStatus status = watch.look();
    QCOMPARE(status.universes, universes);
    QCOMPARE(status.datagramsPerSecond, static_cast<double>(universes));
}

void tst_OutputWatch::aFailedSendTellsItsErrorUntilOneSucceeds() {
    const TestClock clock(100 * second);
    OutputWatch watch;
    send(1, noSocket);
    send(2);
    QCOMPARE(watch.look().error, EBADF);
    QCOMPARE(watch.look().universes, 1);
    send(1);
    QCOMPARE(watch.look().error, 0);
    QCOMPARE(watch.look().universes, 2);
}

void tst_OutputWatch::failedSendsAreNoDatagrams() {
    TestClock clock(100 * second);
    OutputWatch watch;
    send(1);
    watch.look();
    clock.advance(second);
    send(1, noSocket);
    const OutputStatus status = watch.look();
    QCOMPARE(status.universes, 0);
    QCOMPARE(status.datagramsPerSecond, 0.0);
}

void tst_OutputWatch::aUniverseThatFailedAndWasLeftIsForgotten() {
    TestClock clock(100 * second);
    OutputWatch watch;
    send(1, noSocket);
    clock.advance(2 * second);
    QCOMPARE(watch.look().error, 0);
}

void tst_OutputWatch::releasedUniversesStartTheCountAfresh() {
    TestClock clock(100 * second);
    OutputWatch watch;
    send(1);
    send(2);
    watch.look();
    DMX_Universe::releaseUniverses();
    clock.advance(second);
    send(1);
    QCOMPARE(watch.look().datagramsPerSecond, 0.0);
}

QTEST_GUILESS_MAIN(tst_OutputWatch)
#include "tst_OutputWatch.moc"
