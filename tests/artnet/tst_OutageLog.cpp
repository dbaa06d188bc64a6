#include "artnet/OutageLog.h"

#include "support/StandardOutput.h"
#include "support/TestClock.h"

#include <QTest>

#include <cerrno>

namespace {

constexpr quint64 Second = 1'000'000'000;
constexpr int Sent = 0;

} // namespace

class tst_OutageLog : public QObject {
    Q_OBJECT

private slots:
    void saysNothingWhileDatagramsAreSent();
    void theFirstFailureIsSaidOnce();
    void worksAgainASecondAfterTheLastFailure_data();
    void worksAgainASecondAfterTheLastFailure();
    void aNetworkThatComesAndGoesInEveryTickIsOneFailure();
    void everyOutageIsSaid();
};

void tst_OutageLog::saysNothingWhileDatagramsAreSent() {
    OutageLog log;
    QCOMPARE(standardErrorOf([&] { log.note(Sent); }), QByteArray());
}

void tst_OutageLog::theFirstFailureIsSaidOnce() {
    OutageLog log;
    QCOMPARE(standardErrorOf([&] { log.note(ENETUNREACH); }),
             QByteArray("Art-Net output fails: Network is unreachable\n"));
    QCOMPARE(standardErrorOf([&] { log.note(ENETUNREACH); }), QByteArray());
    QCOMPARE(standardErrorOf([&] { log.note(EPERM); }), QByteArray());
}

void tst_OutageLog::worksAgainASecondAfterTheLastFailure_data() {
    QTest::addColumn<quint64>("nanosecondsSince");
    QTest::addColumn<QByteArray>("said");
    QTest::newRow("at once") << quint64(0) << QByteArray();
    QTest::newRow("just before") << Second - 1 << QByteArray();
    QTest::newRow("to the nanosecond") << Second << QByteArray("Art-Net output works again\n");
}

void tst_OutageLog::worksAgainASecondAfterTheLastFailure() {
    QFETCH(const quint64, nanosecondsSince);
    TestClock clock(5);
    OutageLog log;
    standardErrorOf([&] { log.note(ENETUNREACH); });
    clock.advance(nanosecondsSince);
    QTEST(standardErrorOf([&] { log.note(Sent); }), "said");
}

void tst_OutageLog::aNetworkThatComesAndGoesInEveryTickIsOneFailure() {
    TestClock clock(5);
    OutageLog log;
    const QByteArray said = standardErrorOf([&] {
        for (int tick = 0; tick < 300; ++tick) {
            clock.advance(33'300'000);
            log.note(tick % 2 == 0 ? EAGAIN : Sent);
        }
    });
    QCOMPARE(said, QByteArray("Art-Net output fails: Resource temporarily unavailable\n"));
}

void tst_OutageLog::everyOutageIsSaid() {
    TestClock clock(5);
    OutageLog log;
    const QByteArray said = standardErrorOf([&] {
        for (const int result : {EPERM, Sent, ENOBUFS, Sent}) {
            clock.advance(Second);
            log.note(result);
        }
    });
    QCOMPARE(said, QByteArray("Art-Net output fails: Operation not permitted\n"
                              "Art-Net output works again\n"
                              "Art-Net output fails: No buffer space available\n"
                              "Art-Net output works again\n"));
}

QTEST_APPLESS_MAIN(tst_OutageLog)
#include "tst_OutageLog.moc"
