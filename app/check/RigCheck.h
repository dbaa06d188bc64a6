#pragma once

#include "check/ProfileCheck.h"
#include "rig/ProfileExpansion.h"

#include <QSet>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

class Report;

/// The keys under which a rig's faders are found; nothing when they are not known.
using FaderKeys = std::optional<QSet<QString>>;

/// Checks one rig after the other, the settings and the configurations of the table, all against the same
/// table of profiles.
class RigCheck {
public:
    /// Without a table nothing is said of profiles, slots and keys: all of it would only follow from that.
    explicit RigCheck(KnownProfiles table);

    /// Adds the rig's problems; `place` is put before each place. Returns the keys of its faders.
    FaderKeys check(const QVariantMap& rig, const QString& place, Report& report);

    /// False once all rigs together were more than can be gone through; those that came then were looked at
    /// only in part.
    bool lookedAtAll() const { return lookedAtAll_; }

private:
    FaderKeys checkFixtures(const QVariantList& placements, const KnownProfiles& known, const QString& place,
                            Report& report);

    void checkOwnProfiles(const QVariantMap& own, const KnownProfiles& known, const QString& place,
                          Report& report);
    bool hasRoomFor(ExpansionSize size);

    KnownProfiles table_;
    qsizetype tableEntries_ = 0;
    ExpansionSize left_{.entries = 8 * largestRig.entries, .characters = 8 * largestRig.characters};
    bool lookedAtAll_ = true;
};

/// Adds the problems of records of levels: of a wrong type, or of a fader that is none of the keys.
void checkRecords(const QVariantList& records, const FaderKeys& keys, const QString& place, Report& report);
