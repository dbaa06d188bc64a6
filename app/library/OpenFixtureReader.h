#pragma once

#include "library/FixtureDefinition.h"

#include <QByteArray>

/// Reads a fixture of the Open Fixture Library, JSON as its pages publish it. The format keeps the makers in
/// folders: `folder` is where the file stands, and beside it `manufacturers.json`, if there is one, has the
/// maker's name.
FixtureReading readOpenFixture(const QByteArray& json, const QString& folder);
