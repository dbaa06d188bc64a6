#pragma once

struct CommandLine;

/// Checks or lists the rig that a console would come up with, on standard output and without a display; what
/// could not be looked at is named on standard error. Returns the exit status: 0 with nothing wrong, 1 with
/// problems, 2 where it could not look. `argc` and `argv` are those of main().
int checkCommand(const CommandLine& commandLine, int argc, char** argv);
