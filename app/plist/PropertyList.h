#pragma once

#include "plist/PropertyListTypes.h"

#include <QByteArray>
#include <QVariant>

#include <cstddef>
#include <optional>

/// Property lists as values. A dictionary is a QVariantMap, an array a QVariantList, a string a QString, a
/// boolean a bool, an integer a qlonglong, a real a double, data a QByteArray, a date a PropertyListDate, a
/// reference a PropertyListUid. What was read and is written again comes back as the type it was; only XML
/// knows neither fractions of a second nor the sign of a zero.

/// Reads an XML or a binary list, told apart by the first bytes. Nothing when it is larger than `maxBytes`,
/// when the gatekeeper refuses it or when it is damaged.
std::optional<QVariant> readPropertyList(const QByteArray& bytes, std::size_t maxBytes);

/// Writes a list. The other integer types, float and QStringList are taken too, and whatever has registered a
/// conversion to QVariantList. Empty when any value within
/// has no property-list type (an integer above 2^63 - 1 has none) or the nesting is deeper than what is read.
/// What no list can carry is replaced in texts: U+0000 by U+FFFD, half of a surrogate pair by a question
/// mark.
QByteArray writeXmlPropertyList(const QVariant& value);
QByteArray writeBinaryPropertyList(const QVariant& value);
