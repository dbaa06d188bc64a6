#pragma once

#include <QString>
#include <QStringView>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

#include <cstdint>
#include <optional>

/// What stored values mean. As a number, numbers, booleans and strings are taken alike, a string by the
/// number that it begins with; everything else, and a string that begins with none, reads as 0 or false. The
/// decimal sign is a point in every locale. As a text, list or dictionary only what is one is taken.

/// A 32-bit integer: beyond its range the nearest end of it, a real truncated toward zero, NaN as 0.
int integerValue(const QVariant& value);

/// The same bits as a number without a sign: -1 is the highest.
inline std::uint32_t unsignedValue(const QVariant& value) {
    return static_cast<std::uint32_t>(integerValue(value));
}

/// A single-precision number. Infinite where the value is too large for it; NaN reads as 0.
float floatValue(const QVariant& value);

/// True for a number that is not 0, and for a string that begins with Y, y, T, t or an integer that is not 0.
bool booleanValue(const QVariant& value);

/// The integer at the beginning of a text, after white space and a sign; 0 when there is none, beyond 32 bits
/// the nearest end of the range. "12abc" is 12.
int leadingInteger(QStringView text);

/// The decimal number at the beginning of a text, after white space; nothing when there is none. A digit on
/// one side of the point is enough, an exponent counts when it is complete: "1.2.3" is 1.2, ".5" is 0.5,
/// "5." is 5, "2e" is 2.
std::optional<double> leadingNumber(QStringView text);

/// The text; null when the value is none.
QString stringValue(const QVariant& value);

/// The elements; none when the value is no array. A text is no array of characters.
QVariantList listValue(const QVariant& value);

/// The entries; none when the value is no dictionary.
QVariantMap mapValue(const QVariant& value);
