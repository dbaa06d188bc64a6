#include "print/BackgroundPrinter.h"

#include "TestPipe.h"
#include "print/Print.h"

#include <QRegularExpression>
#include <QTest>

#include <cstdlib>
#include <string>

namespace {

constexpr int Lines = 10'000;               // a megabyte, of which a pipe holds a sixteenth
constexpr std::size_t QueueBytes = 1 << 18; // more than the pipe, so that a reader that stands still is met

std::string line(int number) {
    return std::to_string(number) + std::string(100, '.');
}

void printLines() {
    for (int number = 0; number < Lines; ++number) {
        printLine(line(number));
    }
}

} // namespace

class tst_BackgroundPrinter : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { printThrough(nullptr); }

    void withoutOneALineIsWrittenAtOnce();
    void linesOfBothStreamsAreReadInTheirOrder();
    void whatIsLeftAtTheEndIsWritten();
    void aReaderThatStandsStillHoldsNobodyUpAndIsToldWhatItMissed();
    void theEndDoesNotWaitForAReaderThatStandsStill();
};

void tst_BackgroundPrinter::withoutOneALineIsWrittenAtOnce() {
    TestPipe pipe;
    const Redirection redirected(stderr, pipe);
    printError("Art-Net output works again");
    QCOMPARE(pipe.line(), QByteArray("Art-Net output works again"));
    QVERIFY(finishPrinting());
}

void tst_BackgroundPrinter::linesOfBothStreamsAreReadInTheirOrder() {
    TestPipe pipe;
    const Redirection output(stdout, pipe);
    const Redirection error(stderr, pipe);
    const BackgroundPrinter printer;
    for (int number = 0; number < 100; number += 2) {
        printLine(line(number));
        printError(line(number + 1));
    }
    for (int number = 0; number < 100; ++number) {
        QCOMPARE(pipe.line(), QByteArray::fromStdString(line(number)));
    }
}

void tst_BackgroundPrinter::whatIsLeftAtTheEndIsWritten() {
    TestPipe pipe;
    const Redirection redirected(stdout, pipe);
    {
        const BackgroundPrinter printer;
        printLine("first");
        printLine("last");
    }
    printLine("and then at once");
    std::fflush(stdout);
    for (const char* said : {"first", "last", "and then at once"}) {
        QCOMPARE(pipe.line(), QByteArray(said));
    }
}

void tst_BackgroundPrinter::aReaderThatStandsStillHoldsNobodyUpAndIsToldWhatItMissed() {
    TestPipe pipe;
    const Redirection redirected(stdout, pipe);
    const BackgroundPrinter printer(QueueBytes);
    printLines();
    int told = 0;
    int missing = 0;
    while (told + missing < Lines) {
        const QByteArray next = pipe.line();
        if (next == line(told + missing).c_str()) {
            ++told;
        } else {
            const auto count =
                QRegularExpression("^Faderhall: (\\d+) lines? could not be printed$").match(next);
            QVERIFY2(count.hasMatch(), next.constData());
            missing += count.captured(1).toInt();
        }
    }
    QCOMPARE(told + missing, Lines);
    QVERIFY(missing > 0);
    printLine("back again");
    QCOMPARE(pipe.line(), QByteArray("back again"));
}

void tst_BackgroundPrinter::theEndDoesNotWaitForAReaderThatStandsStill() {
    TestPipe pipe;
    const Redirection redirected(stdout, pipe);
    {
        const BackgroundPrinter printer(QueueBytes);
        printLines();
    }
    printLines(); // nor does what is printed after it
    // Nothing may go astray into the stream that is redirected no longer.
    QTRY_VERIFY((pipe.empty(), finishPrinting()));
}

QTEST_APPLESS_MAIN(tst_BackgroundPrinter)
#include "tst_BackgroundPrinter.moc"
