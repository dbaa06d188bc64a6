#pragma once

#include "library/FixtureDefinition.h"

/// Reads a file of at most 4 MiB by the reader of its format, which its first character tells.
FixtureReading readFixtureFile(const QString& path);
