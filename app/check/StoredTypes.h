#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <limits>
#include <span>

class Report;

/// What a value of a rig has to be, so that it is read as it was meant.
enum class StoredType { Text, Integer, Number, Flag, List, Dictionary };

/// One key of a dictionary: what has to stand under it, if anything does.
struct StoredField {
    QLatin1StringView key;
    StoredType type;
    std::int64_t lowest = std::numeric_limits<std::int32_t>::min(); ///< of an integer
    std::int64_t highest = std::numeric_limits<std::int32_t>::max();
};

/// The value as a problem names it: "the text 'two'", "an array", "2.5".
QString described(const QVariant& value);

/// Whether the value is read as what it says. Numbers may be texts of digits.
bool isOf(StoredType type, const QVariant& value);

/// Adds a problem for each of the fields that stands in the dictionary as something else.
void checkFields(const QVariantMap& dictionary, std::span<const StoredField> fields, const QString& place,
                 Report& report);
/// The same for one value that has to be there; `name` is its key, empty when the place tells which it is.
void checkType(StoredType type, const QVariant& value, const QString& name, const QString& place,
               Report& report);
