#include "print/LineWriter.h"

#include "TestPipe.h"

#include <QTest>

#include <csignal>
#include <thread>

namespace {

constexpr int Output = 1;
constexpr int Error = 2;

} // namespace

class tst_LineWriter : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { std::signal(SIGPIPE, SIG_IGN); }

    void aLineIsWrittenAsItIs();
    void linesThatWereDroppedAreTold_data();
    void linesThatWereDroppedAreTold();
    void aReaderThatComesBackIsToldWhatItMissed();
    void theOtherStreamMissesNothing();
    void aDescriptorThatDoesNotWaitIsWaitedFor();
};

void tst_LineWriter::aLineIsWrittenAsItIs() {
    TestPipe pipe;
    const Redirection redirected(stdout, pipe);
    LineWriter().write({.descriptor = Output, .text = "B\u00fchne\n"});
    QCOMPARE(pipe.line(), QByteArray("B\u00fchne"));
}

void tst_LineWriter::linesThatWereDroppedAreTold_data() {
    QTest::addColumn<int>("lines");
    QTest::addColumn<QByteArray>("told");

    QTest::newRow("one") << 1 << QByteArray("Faderhall: 1 line could not be printed");
    QTest::newRow("two") << 2 << QByteArray("Faderhall: 2 lines could not be printed");
}

void tst_LineWriter::linesThatWereDroppedAreTold() {
    QFETCH(const int, lines);

    TestPipe pipe;
    const Redirection redirected(stderr, pipe);
    LineWriter().write({.descriptor = Error, .text = {}, .dropped = static_cast<std::size_t>(lines)});
    QTEST(pipe.line(), "told");
}

void tst_LineWriter::aReaderThatComesBackIsToldWhatItMissed() {
    LineWriter writer;
    {
        TestPipe broken;
        const Redirection redirected(stdout, broken);
        broken.closeReader();
        writer.write({.descriptor = Output, .text = "one\n"});
        writer.write({.descriptor = Output, .text = "two\n"});
        writer.write({.descriptor = Output, .text = {}, .dropped = 3});
    }
    TestPipe pipe;
    const Redirection redirected(stdout, pipe);
    writer.write({.descriptor = Output, .text = "six\n"});
    writer.write({.descriptor = Output, .text = "seven\n"});
    QCOMPARE(pipe.line(), QByteArray("Faderhall: 5 lines could not be printed"));
    QCOMPARE(pipe.line(), QByteArray("six"));
    QCOMPARE(pipe.line(), QByteArray("seven"));
}

void tst_LineWriter::theOtherStreamMissesNothing() {
    TestPipe broken;
    TestPipe pipe;
    const Redirection output(stdout, broken);
    const Redirection error(stderr, pipe);
    broken.closeReader();
    LineWriter writer;
    writer.write({.descriptor = Output, .text = "one\n"});
    writer.write({.descriptor = Error, .text = "two\n"});
    QCOMPARE(pipe.line(), QByteArray("two"));
}

void tst_LineWriter::aDescriptorThatDoesNotWaitIsWaitedFor() {
    TestPipe pipe;
    const Redirection redirected(stdout, pipe);
    fcntl(pipe.writer(), F_SETFL, O_NONBLOCK);
    const std::string line(1 << 20, 'x'); // more than a pipe holds
    std::thread writing([&] { LineWriter().write({.descriptor = Output, .text = line + '\n'}); });
    const QByteArray read = pipe.line();
    writing.join();
    QVERIFY(read == line.c_str());
}

QTEST_APPLESS_MAIN(tst_LineWriter)
#include "tst_LineWriter.moc"
