#include "AppDelegate.h"
#include "commands/CheckCommand.h"
#include "commands/CommandLine.h"
#include "plist/WholeFile.h"
#include "print/BackgroundPrinter.h"
#include "print/Print.h"
#include "process/ConsoleLock.h"
#include "process/DesktopIdentity.h"
#include "process/DisplayCheck.h"
#include "process/HomeFolder.h"
#include "process/ProcessSignals.h"
#include "process/SessionBus.h"
#include "process/StandardStreams.h"
#include "process/StartConditions.h"
#include "process/ToolkitMessages.h"
#include "settings/RecoveryFile.h"
#include "settings/SettingsFile.h"
#include "settings/UserDefaults.h"

#include <QApplication>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

// What runs that were killed while they wrote left behind; only for a console that is alone on its files.
void cleanUpAfterKilledRuns() {
    for (const QString& path :
         {SettingsFile::defaultPath(), UserDefaults::defaultPath(), RecoveryFile::defaultPath()}) {
        removeUnfinishedFiles(path);
    }
}

} // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // a line at a time, into a pipe too
    const CommandLine commandLine = readCommandLine(argc, argv);
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
    if (const QString reason = whyNotToStart(); !reason.isNull()) {
        printError(qUtf8Printable(QString("Faderhall cannot start: %1.").arg(reason)));
        return EXIT_FAILURE;
    }
    openMissingStreams();
    outliveFailedWrites();
    const BackgroundPrinter printer;
    const ToolkitMessages messages;
    SessionBus bus;
    ProcessSignals::ignoreFrontRequests();
    bus.giveUpIfSilent();
    std::optional<QApplication> application;
    {
        const DisplayCheck check;
        application.emplace(argc, argv);
    }
    std::setlocale(LC_NUMERIC, "C"); // the application object sets the user's, and stored numbers have none
    QApplication::setQuitOnLastWindowClosed(false);
    const ConsoleLock lock(ConsoleLock::pathBeside(SettingsFile::defaultPath()));
    if (lock.isHeldElsewhere()) {
        printLine(qUtf8Printable(lock.raiseHolder()));
        return EXIT_SUCCESS;
    }
    if (lock.isHeld()) {
        cleanUpAfterKilledRuns();
    }
    identifyToDesktop();
    AppDelegate delegate(commandLine.resources);
    delegate.applicationDidFinishLaunching();
    const int status = QApplication::exec();
    delegate.applicationWillTerminate();
    return status;
}
