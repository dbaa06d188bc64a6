#pragma once

#include <memory>
#include <string_view>

class LineQueue;

/// Prints a line, given without its newline, on standard output or standard error. It is written at once and
/// its reader is waited for, unless a BackgroundPrinter stands: then it is handed over. Any thread may print.
void printLine(std::string_view line);
void printError(std::string_view line);

/// Gives what a BackgroundPrinter still holds a moment to be written; for whoever ends the program without
/// going back to main(). True when it is written.
bool finishPrinting();

/// From now on lines are handed to this queue; with null they are written at once.
void printThrough(std::shared_ptr<LineQueue> queue);
