#include "StartedConsole.h"
#include "commands/HeadlessCommandLine.h"
#include "console/Resources.h"
#include "process/HomeFolder.h"

#include <QCoreApplication>

#include <clocale>
#include <cstdio>
#include <cstdlib>

// The console without windows: the rig that was saved goes out, and what the operator made elsewhere is kept.
int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // a line at a time, into a pipe too
    const HeadlessCommandLine commandLine = readHeadlessCommandLine(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // an application object sets the user's, and stored numbers have none
    if (commandLine.exitStatus) {
        return *commandLine.exitStatus;
    }
    ensureHome();
    if (!prepareProcess()) {
        return EXIT_FAILURE;
    }
    StartedConsole started(resourceFolder(commandLine.resources, commandLine.programFolder),
                           commandLine.address);
    if (started.exitStatus()) {
        return *started.exitStatus();
    }
    Console& console = started.console();
    const QCoreApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    started.processSignals().listen();
    QObject::connect(&started.processSignals(), &ProcessSignals::quitRequested, &console,
                     [] { QCoreApplication::exit(); });
    console.restoreControlSelections(); // so that they are saved again
    console.follow();
    const int status = QCoreApplication::exec();
    console.terminate();
    return status;
}
