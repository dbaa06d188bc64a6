#pragma once

#include "fixtures/ControlView.h"
#include "fixtures/Profiles.h"
#include "support/TestPlaces.h"

#include <QVariantMap>

/// A control entry of a profile, 8-bit, at rest at `restLevel`.
QVariantMap controlEntry(const QString& name, int restLevel = 0);

/// A fixture placement of one layer with its controls in place of a named profile.
QVariantMap placement(const QString& name, int universe, int address, const QVariantList& controls);

/// Fixture views as the program has them, as long as the rig lives. One at a time.
class TestRig {
public:
    TestRig() = default;
    ~TestRig();
    TestRig(const TestRig&) = delete;
    TestRig& operator=(const TestRig&) = delete;
    TestRig(TestRig&&) = delete;
    TestRig& operator=(TestRig&&) = delete;

    ControlView& add(const QVariantMap& placement);
    /// A fixture of 8-bit controls with these names, all at rest at 0.
    ControlView& add(const QString& name, const QStringList& controlNames, int universe = 0, int address = 1);

private:
    Profiles profiles_;
    TestPlaces places_;
};

/// The control registered under `key`; the test fails hard when there is none.
DMXControl& controlNamed(const QString& key);
