#include "process/ProcessSignals.h"

#include "support/NoMoreDescriptors.h"

#include <QCoreApplication>
#include <QTest>

#include <csignal>
#include <memory>

namespace {

bool hasDisposition(int signal, void (*handler)(int)) {
    struct sigaction present {};
    sigaction(signal, nullptr, &present);
    return present.sa_handler == handler;
}

} // namespace

class tst_ProcessSignals : public QObject {
    Q_OBJECT

private slots:
    void aSignalAsksToQuitOnTheEventLoop_data();
    void aSignalAsksToQuitOnTheEventLoop();
    void theSecondSignalOfWhateverKindEndsTheProgram();
    void anotherConsoleAsksForTheMainWindow();
    void moreRequestsThanThePipeHoldsAreNoHarm();
    void requestsForAWindowThatIsNotThereArePassedOver();
    void afterwardsSignalsDoWhatTheyDid();
    void itCanBeMadeAgain();
    void withoutDescriptorsSignalsDoWhatTheyDid();
};

void tst_ProcessSignals::aSignalAsksToQuitOnTheEventLoop_data() {
    QTest::addColumn<int>("signal");

    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void tst_ProcessSignals::aSignalAsksToQuitOnTheEventLoop() {
    QFETCH(const int, signal);

    int asked = 0;
    const ProcessSignals processSignals;
    connect(&processSignals, &ProcessSignals::quitRequested, this, [&asked] { ++asked; });
    QCoreApplication::processEvents();
    QCOMPARE(asked, 0);
    std::raise(signal);
    QCOMPARE(asked, 0);
    QTRY_COMPARE(asked, 1);
    QCoreApplication::processEvents();
    QCOMPARE(asked, 1);
}

void tst_ProcessSignals::theSecondSignalOfWhateverKindEndsTheProgram() {
    const ProcessSignals processSignals;
    QVERIFY(!hasDisposition(SIGTERM, SIG_DFL));
    std::raise(SIGTERM);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        QVERIFY(hasDisposition(signal, SIG_DFL));
    }
}

void tst_ProcessSignals::anotherConsoleAsksForTheMainWindow() {
    int asked = 0;
    int quits = 0;
    const ProcessSignals processSignals;
    connect(&processSignals, &ProcessSignals::frontRequested, this, [&asked] { ++asked; });
    connect(&processSignals, &ProcessSignals::quitRequested, this, [&quits] { ++quits; });
    for (int round = 1; round <= 3; ++round) {
        ProcessSignals::requestFront(QCoreApplication::applicationPid());
        QTRY_COMPARE(asked, round);
    }
    QCOMPARE(quits, 0);
    QVERIFY(!hasDisposition(SIGTERM, SIG_DFL));
}

void tst_ProcessSignals::moreRequestsThanThePipeHoldsAreNoHarm() {
    int asked = 0;
    const ProcessSignals processSignals;
    connect(&processSignals, &ProcessSignals::frontRequested, this, [&asked] { ++asked; });
    for (int request = 0; request < 100'000; ++request) {
        std::raise(SIGUSR1);
    }
    QTRY_VERIFY(asked > 0);
}

void tst_ProcessSignals::requestsForAWindowThatIsNotThereArePassedOver() {
    ProcessSignals::ignoreFrontRequests();
    QVERIFY(hasDisposition(SIGUSR1, SIG_IGN));
    std::make_unique<ProcessSignals>().reset();
    QVERIFY(hasDisposition(SIGUSR1, SIG_IGN));
}

void tst_ProcessSignals::afterwardsSignalsDoWhatTheyDid() {
    std::make_unique<ProcessSignals>().reset();
    QVERIFY(hasDisposition(SIGTERM, SIG_DFL));
    QVERIFY(hasDisposition(SIGINT, SIG_DFL));
    QVERIFY(hasDisposition(SIGHUP, SIG_DFL));
}

void tst_ProcessSignals::itCanBeMadeAgain() {
    int asked = 0;
    for (int round = 1; round <= 3; ++round) {
        const ProcessSignals processSignals;
        connect(&processSignals, &ProcessSignals::quitRequested, this, [&asked] { ++asked; });
        std::raise(SIGTERM);
        QTRY_COMPARE(asked, round);
    }
}

void tst_ProcessSignals::withoutDescriptorsSignalsDoWhatTheyDid() {
    const NoMoreDescriptors limit;
    const ProcessSignals processSignals;
    QVERIFY(hasDisposition(SIGTERM, SIG_DFL));
}

QTEST_GUILESS_MAIN(tst_ProcessSignals)
#include "tst_ProcessSignals.moc"
