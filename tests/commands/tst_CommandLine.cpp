#include "commands/CommandLine.h"

#include "support/StandardOutput.h"

#include <QRegularExpression>
#include <QTest>

#include <vector>

namespace {

/// What the program makes of the arguments, and what it says to them.
struct Answer {
    CommandLine commandLine;
    QByteArray output;
    QByteArray error;
};

Answer answerTo(const QStringList& arguments) {
    std::vector<QByteArray> texts{"faderhall"};
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
        answer.output = standardOutputOf(
            [&] { answer.commandLine = readCommandLine(static_cast<int>(texts.size()), argv.data()); });
    });
    return answer;
}

} // namespace

class tst_CommandLine : public QObject {
    Q_OBJECT

private slots:
    void withoutArgumentsTheProgramStarts();
    void theFolderOfTheTablesIsTakenAsItStands_data();
    void theFolderOfTheTablesIsTakenAsItStands();
    void fixturesToImportAreAllFilesThatAreNamed_data();
    void fixturesToImportAreAllFilesThatAreNamed();
    void helpIsToldAndEndsTheProgram_data();
    void helpIsToldAndEndsTheProgram();
    void theVersionIsToldAndEndsTheProgram_data();
    void theVersionIsToldAndEndsTheProgram();
    void theRigIsCheckedOrListedOnRequest_data();
    void theRigIsCheckedOrListedOnRequest();
    void whatIsNotUnderstoodIsNamedAndEndsTheProgram_data();
    void whatIsNotUnderstoodIsNamedAndEndsTheProgram();
    void noDisplayIsNeeded();
};

void tst_CommandLine::withoutArgumentsTheProgramStarts() {
    const Answer answer = answerTo({});
    QVERIFY(!answer.commandLine.exitStatus);
    QCOMPARE(answer.commandLine.task, CommandLine::Console);
    QVERIFY(answer.commandLine.resources.isNull());
    QCOMPARE(answer.output, QByteArray());
    QCOMPARE(answer.error, QByteArray());
}

void tst_CommandLine::theFolderOfTheTablesIsTakenAsItStands_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("folder");

    QTest::newRow("two arguments") << QStringList{"--resources", "/srv/rig"} << "/srv/rig";
    QTest::newRow("one argument") << QStringList{"--resources=/srv/rig"} << "/srv/rig";
    QTest::newRow("a relative folder") << QStringList{"--resources", "../rig"} << "../rig";
    QTest::newRow("blanks and letters beyond ASCII")
        << QStringList{"--resources", "/srv/B\u00fchne 1"} << QString("/srv/B\u00fchne 1");
    QTest::newRow("the last one counts") << QStringList{"--resources", "a", "--resources", "b"} << "b";
    QTest::newRow("a folder like an option") << QStringList{"--resources=--help"} << "--help";
}

void tst_CommandLine::theFolderOfTheTablesIsTakenAsItStands() {
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, folder);

    const Answer answer = answerTo(arguments);
    QVERIFY(!answer.commandLine.exitStatus);
    QCOMPARE(answer.commandLine.resources, folder);
    QCOMPARE(answer.output + answer.error, QByteArray());
}

void tst_CommandLine::fixturesToImportAreAllFilesThatAreNamed_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("into");

    QTest::newRow("one") << QStringList{"--import", "a.qxf"} << QStringList{"a.qxf"} << QString()
                         << QString();
    QTest::newRow("several") << QStringList{"--import", "a.qxf", "b.json", "c.qxf"}
                             << QStringList{"a.qxf", "b.json", "c.qxf"} << QString() << QString();
    QTest::newRow("the option again") << QStringList{"--import", "a.qxf", "--import", "b.qxf"}
                                      << QStringList{"a.qxf", "b.qxf"} << QString() << QString();
    QTest::newRow("a mode and a settings file")
        << QStringList{"--into", "show.plist", "--import", "a.qxf", "--mode", "8 bit", "b.qxf"}
        << QStringList{"a.qxf", "b.qxf"} << "8 bit"
        << "show.plist";
}

void tst_CommandLine::fixturesToImportAreAllFilesThatAreNamed() {
    QFETCH(const QStringList, arguments);
    QFETCH(const QStringList, files);
    QFETCH(const QString, mode);
    QFETCH(const QString, into);

    const Answer answer = answerTo(arguments);
    QVERIFY(!answer.commandLine.exitStatus);
    QCOMPARE(answer.commandLine.task, CommandLine::Import);
    QCOMPARE(answer.commandLine.toImport.files, files);
    QCOMPARE(answer.commandLine.toImport.mode, mode);
    QCOMPARE(answer.commandLine.toImport.mode.isNull(), mode.isNull());
    QCOMPARE(answer.commandLine.toImport.into, into);
    QCOMPARE(answer.output + answer.error, QByteArray());
}

void tst_CommandLine::helpIsToldAndEndsTheProgram_data() {
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("long") << QStringList{"--help"};
    QTest::newRow("short") << QStringList{"-h"};
    QTest::newRow("before the version") << QStringList{"--version", "--help"};
    QTest::newRow("with a folder") << QStringList{"--resources", "x", "-h"};
}

void tst_CommandLine::helpIsToldAndEndsTheProgram() {
    QFETCH(const QStringList, arguments);

    const Answer answer = answerTo(arguments);
    QCOMPARE(answer.commandLine.exitStatus, std::optional(0));
    QCOMPARE(answer.error, QByteArray());
    for (const char* told :
         {"Usage: ", "--help", "--version", "--resources <DIR>", "--check", "--list", "DMX512", "Art-Net"}) {
        QVERIFY2(answer.output.contains(told), answer.output.constData());
    }
    QVERIFY(answer.output.endsWith(".\n"));
}

void tst_CommandLine::theVersionIsToldAndEndsTheProgram_data() {
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("long") << QStringList{"--version"};
    QTest::newRow("short") << QStringList{"-v"};
}

void tst_CommandLine::theVersionIsToldAndEndsTheProgram() {
    QFETCH(const QStringList, arguments);

    const Answer answer = answerTo(arguments);
    QCOMPARE(answer.commandLine.exitStatus, std::optional(0));
    QCOMPARE(answer.error, QByteArray());
    const QRegularExpression line(R"(\Afaderhall \d+\.\d+\.\d+\n\z)");
    QVERIFY2(line.match(answer.output).hasMatch(), answer.output.constData());
}

void tst_CommandLine::theRigIsCheckedOrListedOnRequest_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("task");
    QTest::addColumn<QString>("folder");

    QTest::newRow("a check") << QStringList{"--check"} << int{CommandLine::Check} << QString();
    QTest::newRow("of a folder") << QStringList{"--resources", "/srv/rig", "--check"}
                                 << int{CommandLine::Check} << "/srv/rig";
    QTest::newRow("a list") << QStringList{"--list"} << int{CommandLine::List} << QString();
    QTest::newRow("a folder alone") << QStringList{"--resources", "--check"} << int{CommandLine::Console}
                                    << "--check";
}

void tst_CommandLine::theRigIsCheckedOrListedOnRequest() {
    QFETCH(const QStringList, arguments);
    QFETCH(const int, task);
    QFETCH(const QString, folder);

    const Answer answer = answerTo(arguments);
    QVERIFY(!answer.commandLine.exitStatus);
    QCOMPARE(int{answer.commandLine.task}, task);
    QCOMPARE(answer.commandLine.resources, folder);
}

void tst_CommandLine::whatIsNotUnderstoodIsNamedAndEndsTheProgram_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("named");

    QTest::newRow("an unknown option") << QStringList{"--resource", "x"} << QByteArray("resource");
    QTest::newRow("an unknown letter") << QStringList{"-x"} << QByteArray("x");
    QTest::newRow("no folder") << QStringList{"--resources"} << QByteArray("resources");
    QTest::newRow("a file") << QStringList{"show.plist"} << QByteArray("show.plist");
    QTest::newRow("a check and a list") << QStringList{"--check", "--list"} << QByteArray("--list");
    QTest::newRow("an import and a check")
        << QStringList{"--import", "a.qxf", "--check"} << QByteArray("--check");
    QTest::newRow("nothing to import") << QStringList{"--import"} << QByteArray("import");
    QTest::newRow("a mode of nothing")
        << QStringList{"--mode", "8 bit"} << QByteArray("'--mode' needs '--import'");
    QTest::newRow("a settings file for nothing")
        << QStringList{"--into", "show.plist"} << QByteArray("'--into' needs '--import'");
    QTest::newRow("help behind what is not understood")
        << QStringList{"--nonsense", "--help"} << QByteArray("nonsense");
}

void tst_CommandLine::whatIsNotUnderstoodIsNamedAndEndsTheProgram() {
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, named);

    const Answer answer = answerTo(arguments);
    QCOMPARE(answer.commandLine.exitStatus, std::optional(1));
    QCOMPARE(answer.output, QByteArray());
    QVERIFY(answer.error.startsWith("faderhall: "));
    QVERIFY2(answer.error.contains(named), answer.error.constData());
    QVERIFY(answer.error.endsWith("\nTry 'faderhall --help'.\n"));
}

void tst_CommandLine::noDisplayIsNeeded() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    qputenv("QT_QPA_PLATFORM", "none such");
    const Answer answer = answerTo({"--version"});
    qputenv("QT_QPA_PLATFORM", platform);
    QCOMPARE(answer.commandLine.exitStatus, std::optional(0));
}

QTEST_APPLESS_MAIN(tst_CommandLine)
#include "tst_CommandLine.moc"
