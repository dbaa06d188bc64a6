#include "QuitSignals.h"

#include "support/NoMoreDescriptors.h"

#include <QCoreApplication>
#include <QTest>

#include <csignal>
#include <memory>

namespace {

bool hasDefaultDisposition(int signal) {
    struct sigaction present {};
    sigaction(signal, nullptr, &present);
    return present.sa_handler == SIG_DFL;
}

} // namespace

class tst_QuitSignals : public QObject {
    Q_OBJECT

private slots:
    void aSignalAsksToQuitOnTheEventLoop_data();
    void aSignalAsksToQuitOnTheEventLoop();
    void severalSignalsAskOnce();
    void theSecondSignalOfAKindEndsTheProgram();
    void afterwardsSignalsDoWhatTheyDid();
    void itCanBeMadeAgain();
    void withoutDescriptorsSignalsDoWhatTheyDid();
};

void tst_QuitSignals::aSignalAsksToQuitOnTheEventLoop_data() {
    QTest::addColumn<int>("signal");

    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void tst_QuitSignals::aSignalAsksToQuitOnTheEventLoop() {
    QFETCH(const int, signal);

    int asked = 0;
    const QuitSignals quitSignals([&asked] { ++asked; });
    QCoreApplication::processEvents();
    QCOMPARE(asked, 0);
    std::raise(signal);
    QCOMPARE(asked, 0);
    QTRY_COMPARE(asked, 1);
    QCoreApplication::processEvents();
    QCOMPARE(asked, 1);
}

void tst_QuitSignals::severalSignalsAskOnce() {
    int asked = 0;
    const QuitSignals quitSignals([&asked] { ++asked; });
    std::raise(SIGTERM);
    std::raise(SIGINT);
    QTRY_COMPARE(asked, 1);
    std::raise(SIGHUP);
    QTest::qWait(50);
    QCOMPARE(asked, 1);
}

void tst_QuitSignals::theSecondSignalOfAKindEndsTheProgram() {
    const QuitSignals quitSignals([] {});
    QVERIFY(!hasDefaultDisposition(SIGTERM));
    std::raise(SIGTERM);
    QVERIFY(hasDefaultDisposition(SIGTERM));
    QVERIFY(!hasDefaultDisposition(SIGINT));
}

void tst_QuitSignals::afterwardsSignalsDoWhatTheyDid() {
    std::make_unique<QuitSignals>([] {}).reset();
    QVERIFY(hasDefaultDisposition(SIGTERM));
    QVERIFY(hasDefaultDisposition(SIGINT));
    QVERIFY(hasDefaultDisposition(SIGHUP));
}

void tst_QuitSignals::itCanBeMadeAgain() {
    int asked = 0;
    for (int round = 1; round <= 3; ++round) {
        const QuitSignals quitSignals([&asked] { ++asked; });
        std::raise(SIGTERM);
        QTRY_COMPARE(asked, round);
    }
}

void tst_QuitSignals::withoutDescriptorsSignalsDoWhatTheyDid() {
    const NoMoreDescriptors limit;
    const QuitSignals quitSignals([] {});
    QVERIFY(hasDefaultDisposition(SIGTERM));
}

QTEST_GUILESS_MAIN(tst_QuitSignals)
#include "tst_QuitSignals.moc"
