#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QVariant>

#include <cstddef>
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

/// Property lists as values. A dictionary is a QVariantMap, an array a QVariantList, a string a QString, a
/// boolean a bool, an integer a qlonglong, a real a double, data a QByteArray, a date a PropertyListDate, a
/// reference a PropertyListUid. What was read and is written again comes back as the type it was; only XML
/// knows neither fractions of a second nor the sign of a zero.

/// Reads an XML or a binary list, told apart by the first bytes. Nothing when it is larger than `maxBytes`,
/// when the gatekeeper refuses it or when it is damaged.
std::optional<QVariant> readPropertyList(const QByteArray& bytes, std::size_t maxBytes);

/// Writes a list. The other integer types, float and QStringList are taken too. Empty when any value within
/// has no property-list type (an integer above 2^63 - 1 has none) or the nesting is deeper than what is read.
/// What no list can carry is replaced in texts: U+0000 by U+FFFD, half of a surrogate pair by a question
/// mark.
QByteArray writeXmlPropertyList(const QVariant& value);
QByteArray writeBinaryPropertyList(const QVariant& value);
