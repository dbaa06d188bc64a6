#pragma once

#include "commands/ImportCommand.h"

#include <QString>

#include <optional>

/// What the program was started with.
struct CommandLine {
    /// What there is to do: open the console, or something that needs only a terminal.
    enum Task { Console, Check, List, Import };
    Task task = Console;
    QString resources;             ///< the folder of the tables; null when none is given
    QString programFolder;         ///< in which the program stands
    ImportRequest toImport;        ///< what the task Import is about
    std::optional<int> exitStatus; ///< stands when all is said and the program has to end
};

/// Reads the arguments. --help and --version are answered on standard output, and anything that is not
/// understood is named on standard error; none of it needs a display.
CommandLine readCommandLine(int argc, char** argv);
