#pragma once

#include "output/Engine.h"
#include "rig/Faders.h"
#include "rig/Fixtures.h"
#include "rig/Profiles.h"
#include "support/TestPlaces.h"

#include <QVariantMap>

/// A control entry of a profile, 8-bit, at rest at `restLevel`.
QVariantMap controlEntry(const QString& name, int restLevel = 0);

/// A fixture placement of one layer with its controls in place of a named profile.
QVariantMap placement(const QString& name, int universe, int address, const QVariantList& controls);

/// Fixtures with all that they need, ticked by hand.
class TestRig {
public:
    TestRig() : fixtures_(engine_, faders_, profiles_) {}

    Fixture& add(const QVariantMap& placement) { return fixtures_.add(placement); }
    /// A fixture of 8-bit controls with these names, all at rest at 0.
    Fixture& add(const QString& name, const QStringList& controlNames, int universe = 0, int address = 1);
    /// The control registered under `key`; the test fails hard when there is none.
    DMXControl& control(const QString& key) const;

    /// One tick of the output, and what moved is told.
    void tick();

    Engine& engine() { return engine_; }
    Profiles& profiles() { return profiles_; }
    Faders& faders() { return faders_; }
    Fixtures& fixtures() { return fixtures_; }
    TestPlaces& places() { return places_; }

private:
    Engine engine_;
    Profiles profiles_;
    Faders faders_;
    Fixtures fixtures_;
    TestPlaces places_;
};
