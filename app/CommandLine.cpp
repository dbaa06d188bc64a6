#include "CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr auto description = "Faderhall is a lighting console: faders on the screen, DMX512 over Art-Net.";

CommandLine refused(const QString& reason) {
    std::fprintf(stderr, "faderhall: %s\nTry 'faderhall --help'.\n", qUtf8Printable(reason));
    return {.task = {}, .resources = {}, .exitStatus = EXIT_FAILURE};
}

CommandLine answered(const QString& answer) {
    std::printf("%s\n", qUtf8Printable(answer.trimmed()));
    return {.task = {}, .resources = {}, .exitStatus = EXIT_SUCCESS};
}

} // namespace

CommandLine readCommandLine(int argc, char** argv) {
    const QCoreApplication application(argc, argv); // the parser's texts ask it for the program's name
    QCoreApplication::setApplicationName("faderhall");
    QCoreApplication::setApplicationVersion(FADERHALL_VERSION);
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    const QCommandLineOption help({"h", "help"}, "Tell what the program takes, and end.");
    const QCommandLineOption version({"v", "version"}, "Tell the program's version, and end.");
    const QCommandLineOption resources("resources",
                                       "Take profiles.plist and configurations.plist from <DIR>.", "DIR");
    const QCommandLineOption check("check", "Tell what is wrong with the rig, and end.");
    const QCommandLineOption list("list", "List the fixtures and cues of the rig, and end.");
    parser.addOptions({help, version, resources, check, list});
    if (!parser.parse(QCoreApplication::arguments())) {
        return refused(parser.errorText());
    }
    if (parser.isSet(help)) {
        return answered(parser.helpText());
    }
    if (parser.isSet(version)) {
        return answered(QString("faderhall %1").arg(QCoreApplication::applicationVersion()));
    }
    if (!parser.positionalArguments().isEmpty()) {
        return refused(QString("Unexpected argument '%1'.").arg(parser.positionalArguments().first()));
    }
    if (parser.isSet(check) && parser.isSet(list)) {
        return refused("Only one of --check and --list can be done at a time.");
    }
    const CommandLine::Task looking = parser.isSet(list) ? CommandLine::List : CommandLine::Console;
    return {.task = parser.isSet(check) ? CommandLine::Check : looking,
            .resources = parser.value(resources),
            .exitStatus = {}};
}
