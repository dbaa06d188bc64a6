#include "plist/BackgroundWrite.h"

#include <QTest>

#include <atomic>
#include <thread>

class tst_BackgroundWrite : public QObject {
    Q_OBJECT

private slots:
    void whatWasNeverBegunIsFinished();
    void theCallerGoesOnWhileItIsWritten();
    void aFailureIsToldOnce();
    void theEndWaitsForWhatIsBeingWritten();
};

void tst_BackgroundWrite::whatWasNeverBegunIsFinished() {
    BackgroundWrite writing;
    QVERIFY(!writing.isRunning());
    QVERIFY(writing.finish());
}

void tst_BackgroundWrite::theCallerGoesOnWhileItIsWritten() {
    std::promise<void> mayEnd;
    BackgroundWrite writing;
    QVERIFY(writing.start([end = mayEnd.get_future().share()] {
        end.wait();
        return true;
    }));
    QVERIFY(writing.isRunning());
    mayEnd.set_value();
    QVERIFY(writing.finish());
    QVERIFY(!writing.isRunning());
}

void tst_BackgroundWrite::aFailureIsToldOnce() {
    BackgroundWrite writing;
    QVERIFY(writing.start([] { return false; }));
    QVERIFY(!writing.finish());
    QVERIFY(writing.finish());
}

void tst_BackgroundWrite::theEndWaitsForWhatIsBeingWritten() {
    std::promise<void> hasBegun;
    std::atomic<bool> isWritten = false;
    {
        BackgroundWrite writing;
        QVERIFY(writing.start([&] {
            hasBegun.set_value();
            for (int turn = 0; turn < 1000; ++turn) {
                std::this_thread::yield();
            }
            isWritten = true;
            return true;
        }));
        hasBegun.get_future().wait();
    }
    QVERIFY(isWritten);
}

QTEST_GUILESS_MAIN(tst_BackgroundWrite)
#include "tst_BackgroundWrite.moc"
