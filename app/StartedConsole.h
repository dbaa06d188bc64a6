#pragma once

#include "console/Console.h"
#include "print/BackgroundPrinter.h"
#include "process/ConsoleLock.h"
#include "process/ProcessSignals.h"
#include "process/ToolkitMessages.h"

#include <QString>

#include <optional>

/// Readies the process for a console that nothing ends by accident; false, and said why, when a console
/// cannot run here. To be called before there is a StartedConsole.
bool prepareProcess();

/// A console that sends, as far as both programs bring it alike: alone on its files, with an output that
/// nothing holds up, before there is any application object. What falls last stands first.
class StartedConsole {
public:
    /// Reads the rig and starts the output, unless something stands against it. `resources` is the folder of
    /// the tables, `address` where to send instead of where it was sent before; null for none.
    explicit StartedConsole(const QString& resources, const QString& address = {});

    /// The status to end with when there is no console, all being said.
    std::optional<int> exitStatus() const { return exitStatus_; }
    Console& console() { return *console_; }
    /// Kept from before the output starts; to be listened to once there is an application object.
    ProcessSignals& processSignals() { return processSignals_; }

private:
    BackgroundPrinter printer_;
    ToolkitMessages messages_;
    ConsoleLock lock_;
    ProcessSignals processSignals_;
    std::optional<int> exitStatus_;
    std::optional<Console> console_;
};
