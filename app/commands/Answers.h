#pragma once

#include <QString>

/// Says on standard error why a command line is refused, and how to learn more; returns the status to end
/// with.
int refuse(const QString& program, const QString& reason);

/// Gives an answer on standard output; returns the status to end with.
int answer(const QString& text);
