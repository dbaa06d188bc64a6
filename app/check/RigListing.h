#pragma once

#include <QStringList>
#include <QVariantMap>

class Profiles;
struct RigPaths;

/// The rig for readers of a terminal: its fixtures as a table in the order of their windows, then its cues in
/// their order. Lines.
QStringList rigListing(const QVariantMap& rig, const Profiles& profiles);

/// What of the listing there is, and the files that could not be read, with the reason.
struct ListResult {
    QStringList lines;
    QStringList notLookedAt;
};

/// The listing of the rig that a console comes up with: the settings or, where they are missing or damaged,
/// the default configuration. Changes nothing.
ListResult listFiles(const RigPaths& paths);
