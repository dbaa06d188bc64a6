#pragma once

#include <QStringList>
#include <QVariantList>

#include <cstdint>

/// Copies of one fixture, placed one after the other, as the operator asks for them.
struct FixtureOrder {
    QString profile;
    QString name; ///< of the first copy; see copyNames()
    int universe = 0;
    int address = 1; ///< of the first copy, 1-based
    int layer = 1;
    int copies = 1;
    std::uint64_t slotsEach = 0;
};

/// The names of so many copies. A number behind a blank at the end counts on, "Par 4", "Par 5" and "Par 09",
/// "Par 10"; without one they are numbered from 1. A single copy has the name as it is.
QStringList copyNames(const QString& name, int copies);

/// The name of the first of so many copies that nobody bears yet, nor the copies after it: `base` itself for
/// a single one where it is the first of its kind, otherwise with a number.
QString freeName(const QString& base, int copies, const QStringList& taken);

/// Why the order cannot be carried out, for the operator to read; null when it can.
QString obstacleTo(const FixtureOrder& order, const QStringList& takenNames);

/// The placements, as the settings hold them.
QVariantList placementsOf(const FixtureOrder& order);
