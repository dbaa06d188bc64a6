#include "output/OutputWatch.h"

#include "artnet/Transport.h"
#include "output/EngineFixture.h"
#include "support/DatagramListener.h"
#include "support/TestClock.h"

#include <QTest>

#include <cerrno>
#include <map>
#include <memory>

namespace {

constexpr std::uint8_t ownAddress = 82;
constexpr std::uint64_t second = 1'000'000'000;
constexpr std::uint64_t millisecond = 1'000'000;
constexpr int noSocket = -1;

} // namespace

class tst_OutputWatch : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

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
    void anotherEngineStartsTheCountAfresh();

private:
    /// Sends one datagram of the universe, and none of the others.
    void send(int universe, int socket);
    void send(int universe) { send(universe, createSocket(0)); }

    std::unique_ptr<DatagramListener> listener_;
    std::unique_ptr<Engine> engine_;
    std::map<int, std::shared_ptr<FixtureLevels>> fixtures_;
    std::uint32_t level_ = 0;
};

void tst_OutputWatch::initTestCase() {
    listener_ = std::make_unique<DatagramListener>(ownAddress);
    QVERIFY(listener_->isListening());
}

void tst_OutputWatch::init() {
    fixtures_.clear();
    engine_ = std::make_unique<Engine>();
    engine_->setAddress(listener_->address());
}

void tst_OutputWatch::send(int universe, int socket) {
    auto& fixture = fixtures_[universe];
    if (!fixture) {
        fixture = makeLevels(*engine_, universe, 1);
    }
    level_ = level_ % 255 + 1; // a new one each time
    fixture->held()->setValue(0, level_);
    engine_->setPatch({fixture});
    engine_->setSocket(socket);
    engine_->tick();
}

void tst_OutputWatch::withoutUniversesNothingIsSent() {
    const OutputStatus status = OutputWatch().look(*engine_);
    QCOMPARE(status.universes, 0);
    QCOMPARE(status.datagramsPerSecond, 0.0);
    QCOMPARE(status.error, 0);
}

void tst_OutputWatch::aUniverseThatWasNeverSentCountsForNothing() {
    const TestClock clock(second / 2);
    engine_->setPatch({makeLevels(*engine_, 1, 1)});
    QCOMPARE(OutputWatch().look(*engine_).universes, 0);
}

void tst_OutputWatch::everyUniverseThatGoesOutIsCounted() {
    const TestClock clock(100 * second);
    send(0);
    send(7);
    send(255);
    QCOMPARE(OutputWatch().look(*engine_).universes, 3);
}

void tst_OutputWatch::refreshesOfTwoUniversesAreTwoDatagramsASecond() {
    TestClock clock(100 * second);
    OutputWatch watch;
    for (int i = 0; i < 3; ++i) {
        send(1);
        send(2);
        watch.look(*engine_);
        clock.advance(second);
    }
    QCOMPARE(watch.look(*engine_).datagramsPerSecond, 2.0);
}

void tst_OutputWatch::theRateStandsBetweenTwoRefreshes() {
    TestClock clock(100 * second);
    OutputWatch watch;
    send(1);
    watch.look(*engine_);
    clock.advance(second);
    send(1);
    watch.look(*engine_);
    clock.advance(second - millisecond);
    const OutputStatus status = watch.look(*engine_);
    QCOMPARE(status.datagramsPerSecond, 1.0);
    QCOMPARE(status.universes, 1);
}

void tst_OutputWatch::aFadeIsSentThirtyTimesASecond() {
    TestClock clock(100 * second);
    OutputWatch watch;
    send(1);
    watch.look(*engine_);
    for (int i = 0; i < 30; ++i) {
        clock.advance(second / 30);
        send(1);
    }
    QCOMPARE(qRound(watch.look(*engine_).datagramsPerSecond), 30);
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
    watch.look(*engine_);
    clock.advance(second);
    send(1);
    clock.advance(pause);
    const OutputStatus status = watch.look(*engine_);
    QCOMPARE(status.universes, universes);
    QCOMPARE(status.datagramsPerSecond, static_cast<double>(universes));
}

void tst_OutputWatch::aFailedSendTellsItsErrorUntilOneSucceeds() {
    const TestClock clock(100 * second);
    OutputWatch watch;
    send(1, noSocket);
    send(2);
    QCOMPARE(watch.look(*engine_).error, EBADF);
    QCOMPARE(watch.look(*engine_).universes, 1);
    send(1);
    QCOMPARE(watch.look(*engine_).error, 0);
    QCOMPARE(watch.look(*engine_).universes, 2);
}

void tst_OutputWatch::failedSendsAreNoDatagrams() {
    TestClock clock(100 * second);
    OutputWatch watch;
    send(1);
    watch.look(*engine_);
    clock.advance(second);
    send(1, noSocket);
    const OutputStatus status = watch.look(*engine_);
    QCOMPARE(status.universes, 0);
    QCOMPARE(status.datagramsPerSecond, 0.0);
}

void tst_OutputWatch::aUniverseThatFailedAndWasLeftIsForgotten() {
    TestClock clock(100 * second);
    OutputWatch watch;
    send(1, noSocket);
    clock.advance(2 * second);
    QCOMPARE(watch.look(*engine_).error, 0);
}

void tst_OutputWatch::anotherEngineStartsTheCountAfresh() {
    TestClock clock(100 * second);
    OutputWatch watch;
    send(1);
    send(2);
    watch.look(*engine_);
    init();
    clock.advance(second);
    send(1);
    QCOMPARE(watch.look(*engine_).datagramsPerSecond, 0.0);
}

QTEST_GUILESS_MAIN(tst_OutputWatch)
#include "tst_OutputWatch.moc"
