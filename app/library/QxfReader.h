#pragma once

#include "library/FixtureDefinition.h"

#include <QByteArray>

/// Reads a .qxf fixture definition, the XML format of the fixtures that Debian's qlcplus-data installs. A
/// fine channel belongs to the one right before it when both control the same, see isFineOf(). Slots that a
/// mode leaves out are unused.
FixtureReading readQxf(const QByteArray& bytes);
