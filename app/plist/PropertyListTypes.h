#pragma once

#include <QByteArray>
#include <QMetaType>

#include <optional>

/// A moment of a property list, in seconds since 2001-01-01 00:00 UTC; fractions of a second live in binary
/// lists only. The years 1 to 9999 are dates, nothing else is.
struct PropertyListDate {
    double secondsSince2001 = 0;
    bool operator==(const PropertyListDate&) const = default;
};

/// A reference by number, as keyed archives use it between their objects.
struct PropertyListUid {
    quint32 value = 0;
    bool operator==(const PropertyListUid&) const = default;
};

Q_DECLARE_METATYPE(PropertyListDate)
Q_DECLARE_METATYPE(PropertyListUid)

/// A binary property list that holds one date and nothing else, and the date of such a list. Nothing or empty
/// for what is no date. They carry every bit of it, also of fractions and of years far from 2001.
QByteArray binaryListOf(PropertyListDate date);
std::optional<PropertyListDate> dateOfBinaryList(const QByteArray& list);
