#include "StartedConsole.h"

#include "plist/WholeFile.h"
#include "print/Print.h"
#include "process/StandardStreams.h"
#include "process/StartConditions.h"
#include "settings/RecoveryFile.h"
#include "settings/SettingsFile.h"
#include "settings/UserDefaults.h"

#include <cstdlib>
#include <system_error>

namespace {

// What runs that were killed while they wrote left behind; only for a console that is alone on its files.
void cleanUpAfterKilledRuns() {
    for (const QString& path :
         {SettingsFile::defaultPath(), UserDefaults::defaultPath(), RecoveryFile::defaultPath()}) {
        removeUnfinishedFiles(path);
    }
}

} // namespace

StartedConsole::StartedConsole(const QString& resources, const QString& address)
    : lock_(ConsoleLock::pathBeside(SettingsFile::defaultPath())) {
    if (lock_.isHeldElsewhere()) {
        printLine(lock_.raiseHolder().toStdString());
        exitStatus_ = EXIT_SUCCESS;
        return;
    }
    if (lock_.isHeld()) {
        cleanUpAfterKilledRuns();
    }
    console_.emplace(resources);
    console_->load();
    if (!address.isNull()) {
        console_->setIPAddress(address);
    }
    try {
        console_->startOutput();
    } catch (const std::system_error&) {
        printError("Faderhall cannot start: the system gives it no thread to send on.");
        exitStatus_ = EXIT_FAILURE;
    }
}

bool prepareProcess() {
    if (const QString reason = whyNotToStart(); !reason.isNull()) {
        printError(QString("Faderhall cannot start: %1.").arg(reason).toStdString());
        return false;
    }
    openMissingStreams();
    outliveFailedWrites();
    ProcessSignals::ignoreFrontRequests();
    return true;
}
