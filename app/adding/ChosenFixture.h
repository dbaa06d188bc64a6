#pragma once

#include "rig/Profiles.h"

#include <QStringList>
#include <QVariantMap>

class Settings;
struct FixtureChoice;
struct PatchedFixture;

/// A choice of the list as it can be placed.
struct ChosenFixture {
    QString profile;
    QVariantMap comingProfiles; ///< that the rig does not have yet
    QStringList remarks;        ///< what the import could not express
    QString refusal;            ///< why it cannot be added; null when it can
    Profiles profiles;          ///< the table with those that come
};

/// Reads the file of a library's mode.
ChosenFixture chosenFixture(const FixtureChoice& choice, const Profiles& profiles, const Settings& settings);

/// The fixture as it would be patched under that name.
PatchedFixture patched(const ChosenFixture& fixture, const QString& name, int universe, int address,
                       int layer);
