#pragma once

/// Opens the null device as whichever of standard input, output and error was closed when the program
/// started: a file or a socket would come to lie there, and what is printed would go into it.
void openMissingStreams();

/// A reader that is gone, a limit on the size of files and a terminal that takes nothing from the background
/// fail a write from now on, in place of ending or stopping the program.
void outliveFailedWrites();
