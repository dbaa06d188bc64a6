#include "AppDelegate.h"
#include "CommandLine.h"
#include "ConsoleLock.h"
#include "HomeFolder.h"
#include "ProcessSignals.h"

#include <QApplication>

#include <clocale>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // a line at a time, into a pipe too
    const CommandLine commandLine = readCommandLine(argc, argv);
    if (commandLine.exitStatus) {
        return *commandLine.exitStatus;
    }
    ensureHome();
    ProcessSignals::ignoreFrontRequests();
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // the application object sets the user's, and stored numbers have none
    QApplication::setQuitOnLastWindowClosed(false);
    const ConsoleLock lock(ConsoleLock::defaultPath());
    if (lock.isHeldElsewhere()) {
        std::printf("%s\n", qUtf8Printable(lock.raiseHolder()));
        return EXIT_SUCCESS;
    }
    AppDelegate delegate(commandLine.resources);
    delegate.applicationDidFinishLaunching();
    const int status = QApplication::exec();
    delegate.applicationWillTerminate();
    return status;
}
