#pragma once

#include <QString>

/// Renames a file to "<name>.<mark>-YYYYMMDD-HHMMSS", local time, with a counter behind it if that name is
/// taken. False when it stays where it is.
bool moveAside(const QString& file, const QString& mark);
