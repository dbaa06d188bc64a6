#pragma once

#include "library/ControlNames.h"
#include "library/FixtureDefinition.h"
#include "library/FixtureImport.h"

/// Makes user profiles of the modes of one fixture, one after the other.
class ProfileWriter {
public:
    /// `fixture` is what the names of the profiles begin with.
    explicit ProfileWriter(QString fixture) : fixture_(std::move(fixture)) {}

    /// The mode's profile, and one for each kind of head that it has more than once. Heads are numbered by
    /// the layer number that the fixture is placed with. Columns begin where a window would become too high.
    ImportedMode write(const FixtureMode& mode);

private:
    QString fixture_;
    UniqueNames profileNames_;
};
