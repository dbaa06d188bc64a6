#include "AppDelegate.h"
#include "StartedConsole.h"
#include "commands/CheckCommand.h"
#include "commands/CommandLine.h"
#include "console/Resources.h"
#include "process/DesktopIdentity.h"
#include "process/DisplayCheck.h"
#include "process/HomeFolder.h"
#include "process/SessionBus.h"

#include <QApplication>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <optional>

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // a line at a time, into a pipe too
    const CommandLine commandLine = readCommandLine(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // an application object sets the user's, and stored numbers have none
    if (commandLine.exitStatus) {
        return *commandLine.exitStatus;
    }
    ensureHome();
    if (commandLine.task == CommandLine::Import) {
        return importFixtures(commandLine.toImport);
    }
    if (commandLine.task != CommandLine::Console) {
        return checkCommand(commandLine, argc, argv);
    }
    if (!prepareProcess()) {
        return EXIT_FAILURE;
    }
    SessionBus bus;
    // The light first: whatever holds up a bus, a display or a window comes after it.
    StartedConsole started(resourceFolder(commandLine.resources, commandLine.programFolder));
    if (started.exitStatus()) {
        return *started.exitStatus();
    }
    bus.giveUpIfSilent();
    std::optional<QApplication> application;
    {
        const DisplayCheck check;
        application.emplace(argc, argv);
    }
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setQuitOnLastWindowClosed(false);
    identifyToDesktop();
    started.processSignals().listen();
    AppDelegate delegate(started.console(), started.processSignals());
    delegate.applicationDidFinishLaunching();
    const int status = QApplication::exec();
    delegate.applicationWillTerminate();
    return status;
}
