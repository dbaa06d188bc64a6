#include "commands/HeadlessCommandLine.h"

#include "support/StandardOutput.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTest>

#include <vector>

namespace {

/// What the program makes of the arguments, and what it says to them.
struct Answer {
    HeadlessCommandLine commandLine;
    QByteArray output;
    QByteArray error;
};

Answer answerTo(const QStringList& arguments) {
    std::vector<QByteArray> texts{"faderhall-headless"};
    for (const QString& argument : arguments) {
        texts.push_back(argument.toUtf8());
    }
    std::vector<char*> argv;
    argv.reserve(texts.size() + 1);
    for (QByteArray& text : texts) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);
    Answer answer;
    answer.error = standardErrorOf([&] {
        answer.output = standardOutputOf([&] {
            answer.commandLine = readHeadlessCommandLine(static_cast<int>(texts.size()), argv.data());
        });
    });
    return answer;
}

} // namespace

class tst_HeadlessCommandLine : public QObject {
    Q_OBJECT

private slots:
    void withoutArgumentsTheProgramStartsWhereItSentBefore();
    void theFolderOfTheTablesIsTakenAsItStands_data();
    void theFolderOfTheTablesIsTakenAsItStands();
    void anAddressIsTaken_data();
    void anAddressIsTaken();
    void helpIsToldAndEndsTheProgram_data();
    void helpIsToldAndEndsTheProgram();
    void theVersionIsToldAndEndsTheProgram_data();
    void theVersionIsToldAndEndsTheProgram();
    void whatIsNotUnderstoodIsNamedAndEndsTheProgram_data();
    void whatIsNotUnderstoodIsNamedAndEndsTheProgram();
    void noApplicationObjectIsLeft();
};

void tst_HeadlessCommandLine::withoutArgumentsTheProgramStartsWhereItSentBefore() {
    const Answer answer = answerTo({});
    QVERIFY(!answer.commandLine.exitStatus);
    QVERIFY(answer.commandLine.resources.isNull());
    QVERIFY(answer.commandLine.address.isNull());
    QCOMPARE(answer.output + answer.error, QByteArray());
}

void tst_HeadlessCommandLine::theFolderOfTheTablesIsTakenAsItStands_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("folder");

    QTest::newRow("two arguments") << QStringList{"--resources", "/srv/rig"} << "/srv/rig";
    QTest::newRow("one argument") << QStringList{"--resources=/srv/rig"} << "/srv/rig";
    QTest::newRow("a relative folder") << QStringList{"--resources", "../rig"} << "../rig";
    QTest::newRow("with an address") << QStringList{"--to", "10.0.0.1", "--resources", "rig"} << "rig";
}

void tst_HeadlessCommandLine::theFolderOfTheTablesIsTakenAsItStands() {
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, folder);

    const Answer answer = answerTo(arguments);
    QVERIFY(!answer.commandLine.exitStatus);
    QCOMPARE(answer.commandLine.resources, folder);
    QCOMPARE(answer.output + answer.error, QByteArray());
}

void tst_HeadlessCommandLine::anAddressIsTaken_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("address");

    QTest::newRow("two arguments") << QStringList{"--to", "192.168.1.40"} << "192.168.1.40";
    QTest::newRow("one argument") << QStringList{"--to=2.255.255.255"} << "2.255.255.255";
    QTest::newRow("with a folder") << QStringList{"--resources", "rig", "--to", "10.0.0.1"} << "10.0.0.1";
}

void tst_HeadlessCommandLine::anAddressIsTaken() {
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, address);

    const Answer answer = answerTo(arguments);
    QVERIFY(!answer.commandLine.exitStatus);
    QCOMPARE(answer.commandLine.address, address);
    QCOMPARE(answer.output + answer.error, QByteArray());
}

void tst_HeadlessCommandLine::helpIsToldAndEndsTheProgram_data() {
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("long") << QStringList{"--help"};
    QTest::newRow("short") << QStringList{"-h"};
    QTest::newRow("before the version") << QStringList{"--version", "--help"};
    QTest::newRow("with an address that is none") << QStringList{"--to", "x", "-h"};
}

void tst_HeadlessCommandLine::helpIsToldAndEndsTheProgram() {
    QFETCH(const QStringList, arguments);

    const Answer answer = answerTo(arguments);
    QCOMPARE(answer.commandLine.exitStatus, std::optional(0));
    QCOMPARE(answer.error, QByteArray());
    for (const char* told : {"Usage: ", "--help", "--version", "--resources <DIR>", "--to <ADDRESS>",
                             "without windows", "Art-Net"}) {
        QVERIFY2(answer.output.contains(told), answer.output.constData());
    }
    QVERIFY(answer.output.endsWith(".\n"));
}

void tst_HeadlessCommandLine::theVersionIsToldAndEndsTheProgram_data() {
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("long") << QStringList{"--version"};
    QTest::newRow("short") << QStringList{"-v"};
}

void tst_HeadlessCommandLine::theVersionIsToldAndEndsTheProgram() {
    QFETCH(const QStringList, arguments);

    const Answer answer = answerTo(arguments);
    QCOMPARE(answer.commandLine.exitStatus, std::optional(0));
    QCOMPARE(answer.error, QByteArray());
    const QRegularExpression line(R"(\Afaderhall-headless \d+\.\d+\.\d+\n\z)");
    QVERIFY2(line.match(answer.output).hasMatch(), answer.output.constData());
}

void tst_HeadlessCommandLine::whatIsNotUnderstoodIsNamedAndEndsTheProgram_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("named");

    QTest::newRow("an unknown option") << QStringList{"--resource", "x"} << QByteArray("resource");
    QTest::newRow("an unknown letter") << QStringList{"-x"} << QByteArray("x");
    QTest::newRow("no folder") << QStringList{"--resources"} << QByteArray("resources");
    QTest::newRow("no address") << QStringList{"--to"} << QByteArray("to");
    QTest::newRow("an empty address") << QStringList{"--to", ""} << QByteArray("'' is no IPv4 address.");
    QTest::newRow("a name") << QStringList{"--to", "rack"} << QByteArray("'rack' is no IPv4 address.");
    QTest::newRow("a byte too large")
        << QStringList{"--to", "192.168.1.256"} << QByteArray("'192.168.1.256' is no IPv4 address.");
    QTest::newRow("IPv6") << QStringList{"--to", "::1"} << QByteArray("'::1' is no IPv4 address.");
    QTest::newRow("a file") << QStringList{"show.plist"} << QByteArray("show.plist");
    QTest::newRow("what only the desktop program does") << QStringList{"--check"} << QByteArray("check");
    QTest::newRow("help behind what is not understood")
        << QStringList{"--nonsense", "--help"} << QByteArray("nonsense");
}

void tst_HeadlessCommandLine::whatIsNotUnderstoodIsNamedAndEndsTheProgram() {
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, named);

    const Answer answer = answerTo(arguments);
    QCOMPARE(answer.commandLine.exitStatus, std::optional(1));
    QCOMPARE(answer.output, QByteArray());
    QVERIFY(answer.error.startsWith("faderhall-headless: "));
    QVERIFY2(answer.error.contains(named), answer.error.constData());
    QVERIFY(answer.error.endsWith("\nTry 'faderhall-headless --help'.\n"));
}

// The console starts to send before it has one of its own.
void tst_HeadlessCommandLine::noApplicationObjectIsLeft() {
    answerTo({"--to", "10.0.0.1"});
    QVERIFY(!QCoreApplication::instance());
}

QTEST_APPLESS_MAIN(tst_HeadlessCommandLine)
#include "tst_HeadlessCommandLine.moc"
