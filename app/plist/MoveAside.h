#pragma once

#include <QString>

/// A name to keep a file under: "<name>.<mark>-YYYYMMDD-HHMMSS", local time, with a counter behind it if that
/// name is taken.
QString nameAside(const QString& file, const QString& mark);

/// Renames a file to such a name. False when it stays where it is.
bool moveAside(const QString& file, const QString& mark);
