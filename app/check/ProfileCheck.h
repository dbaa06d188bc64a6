#pragma once

#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

class Report;

/// All profiles that a rig can name; nothing when they are not known.
using KnownProfiles = std::optional<QVariantMap>;

/// Adds the problems of a profile's, or a fixture's, entries: what is no dictionary or of a wrong type, and
/// profiles that do not exist. `place` is where the entries stand.
void checkEntries(const QVariantList& entries, const KnownProfiles& known, const QString& place,
                  Report& report);

/// Adds the problems of profiles under their names, those that contain themselves among them. `known` holds
/// them and those that they may name; a loop of those alone is not told. `place` is put before each place.
void checkProfiles(const QVariantMap& profiles, const KnownProfiles& known, const QString& place,
                   Report& report);
