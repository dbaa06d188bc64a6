#include "commands/CommandLine.h"

#include "commands/Answers.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace {

constexpr auto description = "Faderhall is a lighting console: faders on the screen, DMX512 over Art-Net.";

constexpr QLatin1StringView programName("faderhall");

CommandLine ended(int status) {
    CommandLine commandLine;
    commandLine.exitStatus = status;
    return commandLine;
}

// What the program can be told, in the order in which its help tells it.
struct Options {
    QCommandLineOption help{{"h", "help"}, "Tell what the program takes, and end."};
    QCommandLineOption version{{"v", "version"}, "Tell the program's version, and end."};
    QCommandLineOption resources{"resources", "Take profiles.plist and configurations.plist from <DIR>.",
                                 "DIR"};
    QCommandLineOption check{"check", "Tell what is wrong with the rig, and end."};
    QCommandLineOption list{"list", "List the fixtures and cues of the rig, and end."};
    QCommandLineOption fixtures{"import", "Print these fixture definitions as profiles, and end.", "FILE..."};
    QCommandLineOption mode{"mode", "With --import: take only the modes of this name.", "NAME"};
    QCommandLineOption into{"into", "With --import: add the profiles to this settings file.", "FILE"};

    QList<QCommandLineOption> all() const {
        return {help, version, resources, check, list, fixtures, mode, into};
    }
};

// Why what was given makes no sense together; null when it does.
QString contradictionIn(const QCommandLineParser& parser, const Options& options) {
    const bool imports = parser.isSet(options.fixtures);
    if (int{parser.isSet(options.check)} + int{parser.isSet(options.list)} + int{imports} > 1) {
        return "Only one of --check, --list and --import can be done at a time.";
    }
    for (const QCommandLineOption& option : {options.mode, options.into}) {
        if (parser.isSet(option) && !imports) {
            return QString("'--%1' needs '--import'.").arg(option.names().first());
        }
    }
    if (!parser.positionalArguments().isEmpty() && !imports) {
        return QString("Unexpected argument '%1'.").arg(parser.positionalArguments().first());
    }
    return {};
}

CommandLine::Task taskOf(const QCommandLineParser& parser, const Options& options) {
    if (parser.isSet(options.fixtures)) {
        return CommandLine::Import;
    }
    if (parser.isSet(options.check)) {
        return CommandLine::Check;
    }
    return parser.isSet(options.list) ? CommandLine::List : CommandLine::Console;
}

} // namespace

CommandLine readCommandLine(int argc, char** argv) {
    const QCoreApplication application(argc, argv); // the parser's texts ask it for the program's name
    QCoreApplication::setApplicationName(programName);
    QCoreApplication::setApplicationVersion(FADERHALL_VERSION);
    const Options options;
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    parser.addOptions(options.all());
    if (!parser.parse(QCoreApplication::arguments())) {
        return ended(refuse(programName, parser.errorText()));
    }
    if (parser.isSet(options.help)) {
        return ended(answer(parser.helpText()));
    }
    if (parser.isSet(options.version)) {
        return ended(answer(QString("%1 %2").arg(programName, QCoreApplication::applicationVersion())));
    }
    if (const QString reason = contradictionIn(parser, options); !reason.isNull()) {
        return ended(refuse(programName, reason));
    }
    return {.task = taskOf(parser, options),
            .resources = parser.value(options.resources),
            .programFolder = QCoreApplication::applicationDirPath(),
            .toImport = {.files = parser.values(options.fixtures) + parser.positionalArguments(),
                         .mode = parser.value(options.mode),
                         .into = parser.value(options.into)},
            .exitStatus = {}};
}
