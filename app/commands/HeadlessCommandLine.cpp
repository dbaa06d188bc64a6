#include "commands/HeadlessCommandLine.h"

#include "artnet/Address.h"
#include "commands/Answers.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace {

constexpr QLatin1StringView programName("faderhall-headless");
constexpr auto description =
    "Faderhall without windows: sends the rig that was saved as Art-Net, until it is told to quit.";

HeadlessCommandLine ended(int status) {
    HeadlessCommandLine commandLine;
    commandLine.exitStatus = status;
    return commandLine;
}

} // namespace

HeadlessCommandLine readHeadlessCommandLine(int argc, char** argv) {
    const QCoreApplication application(argc, argv); // the parser's texts ask it for the program's name
    QCoreApplication::setApplicationName(programName);
    QCoreApplication::setApplicationVersion(FADERHALL_VERSION);
    const QCommandLineOption help({"h", "help"}, "Tell what the program takes, and end.");
    const QCommandLineOption version({"v", "version"}, "Tell the program's version, and end.");
    const QCommandLineOption resources("resources",
                                       "Take profiles.plist and configurations.plist from <DIR>.", "DIR");
    const QCommandLineOption to("to", "Send to this IPv4 address, from now on.", "ADDRESS");
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    parser.addOptions({help, version, resources, to});
    if (!parser.parse(QCoreApplication::arguments())) {
        return ended(refuse(programName, parser.errorText()));
    }
    if (parser.isSet(help)) {
        return ended(answer(parser.helpText()));
    }
    if (parser.isSet(version)) {
        return ended(answer(QString("%1 %2").arg(programName, QCoreApplication::applicationVersion())));
    }
    if (!parser.positionalArguments().isEmpty()) {
        return ended(refuse(programName,
                            QString("Unexpected argument '%1'.").arg(parser.positionalArguments().first())));
    }
    const QString address = parser.value(to);
    if (parser.isSet(to) && !parseAddress(address.toStdString())) {
        return ended(refuse(programName, QString("'%1' is no IPv4 address.").arg(address)));
    }
    return {.resources = parser.value(resources),
            .programFolder = QCoreApplication::applicationDirPath(),
            .address = address,
            .exitStatus = {}};
}
