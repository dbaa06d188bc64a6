#pragma once

#include <QString>

#include <optional>

/// What the program without windows was started with.
struct HeadlessCommandLine {
    QString resources;             ///< the folder of the tables; null when none is given
    QString programFolder;         ///< in which the program stands
    QString address;               ///< where to send; null when it is not said
    std::optional<int> exitStatus; ///< stands when all is said and the program has to end
};

/// Reads the arguments. --help and --version are answered on standard output, and anything that is not
/// understood, an address that is none among it, is named on standard error.
HeadlessCommandLine readHeadlessCommandLine(int argc, char** argv);
