#include "print/LineQueue.h"

#include <QTest>

#include <string>

using namespace std::chrono_literals;

namespace {

constexpr int Output = 1;
constexpr int Error = 2;
constexpr std::size_t Plenty = 1 << 20;

// The text of the line that is next; where lines are missing, how many of which stream.
std::string nextOf(LineQueue& queue) {
    const auto line = queue.next();
    if (!line) {
        return "the end";
    }
    return line->text.empty() ? std::to_string(line->dropped) + " of " + std::to_string(line->descriptor)
                              : line->text;
}

} // namespace

class tst_LineQueue : public QObject {
    Q_OBJECT

private slots:
    void linesOfBothStreamsComeInTheirOrder();
    void whatFindsNoRoomIsCountedWhereItIsMissing();
    void eachStreamHasACountOfItsOwn();
    void onceFullItTakesNothingUntilAllThatWaitedIsOnItsWay();
    void aLongLineIsTakenWhenNothingElseWaits();
    void aClosedQueueGivesWhatItHasAndThenEnds();
    void aLineCountsAsWrittenOnceTheNextIsAskedFor();
};

void tst_LineQueue::linesOfBothStreamsComeInTheirOrder() {
    LineQueue queue(Plenty);
    queue.push(Output, "one");
    queue.push(Error, "two");
    queue.push(Output, "");
    const auto first = queue.next();
    QCOMPARE(first->descriptor, Output);
    QCOMPARE(first->text, std::string("one\n"));
    QCOMPARE(queue.next()->descriptor, Error);
    QCOMPARE(nextOf(queue), std::string("\n"));
}

void tst_LineQueue::whatFindsNoRoomIsCountedWhereItIsMissing() {
    LineQueue queue(1);
    queue.push(Output, "taken");
    queue.push(Output, "dropped");
    queue.push(Output, "dropped");
    QCOMPARE(nextOf(queue), std::string("taken\n"));
    queue.push(Output, "dropped, since it is still being written");
    QCOMPARE(nextOf(queue), std::string("3 of 1"));
    queue.close();
    QCOMPARE(nextOf(queue), std::string("the end"));
}

void tst_LineQueue::eachStreamHasACountOfItsOwn() {
    LineQueue queue(1);
    queue.push(Output, "taken");
    for (const int stream : {Output, Error, Output, Output, Error}) {
        queue.push(stream, "dropped");
    }
    QCOMPARE(nextOf(queue), std::string("taken\n"));
    QCOMPARE(nextOf(queue), std::string("3 of 1"));
    QCOMPARE(nextOf(queue), std::string("2 of 2"));
}

void tst_LineQueue::onceFullItTakesNothingUntilAllThatWaitedIsOnItsWay() {
    LineQueue queue(1000);
    queue.push(Output, "one");
    queue.push(Output, "two");
    queue.push(Output, std::string(1000, 'x'));
    queue.push(Output, "short enough");
    QCOMPARE(nextOf(queue), std::string("one\n"));
    queue.push(Output, "short enough");
    QCOMPARE(nextOf(queue), std::string("two\n"));
    QCOMPARE(nextOf(queue), std::string("3 of 1"));
    queue.push(Output, "three");
    QCOMPARE(nextOf(queue), std::string("three\n"));
}

void tst_LineQueue::aLongLineIsTakenWhenNothingElseWaits() {
    LineQueue queue(100);
    const std::string line(1000, 'x');
    queue.push(Output, line);
    QCOMPARE(nextOf(queue), line + "\n");
}

void tst_LineQueue::aClosedQueueGivesWhatItHasAndThenEnds() {
    LineQueue queue(Plenty);
    queue.push(Output, "last");
    queue.close();
    QCOMPARE(nextOf(queue), std::string("last\n"));
    QCOMPARE(nextOf(queue), std::string("the end"));
}

void tst_LineQueue::aLineCountsAsWrittenOnceTheNextIsAskedFor() {
    LineQueue queue(Plenty);
    QVERIFY(queue.waitUntilWritten(0ms));
    queue.push(Output, "line");
    QVERIFY(!queue.waitUntilWritten(0ms));
    queue.close();
    QCOMPARE(nextOf(queue), std::string("line\n"));
    QVERIFY(!queue.waitUntilWritten(0ms));
    QCOMPARE(nextOf(queue), std::string("the end"));
    QVERIFY(queue.waitUntilWritten(0ms));
}

QTEST_APPLESS_MAIN(tst_LineQueue)
#include "tst_LineQueue.moc"
