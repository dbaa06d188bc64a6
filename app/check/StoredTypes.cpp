#include "check/StoredTypes.h"

#include "check/Report.h"
#include "plist/PropertyListTypes.h"
#include "plist/Reading.h"

#include <QLocale>
#include <QRegularExpression>

#include <array>
#include <cmath>

namespace {

bool isNumberType(const QVariant& value) {
    return value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Double;
}

bool isInteger(const QVariant& value) {
    if (value.typeId() == QMetaType::QString) {
        bool isOne = false;
        value.toString().trimmed().toInt(&isOne);
        return isOne;
    }
    // Beyond 32 bits, and where it has a fraction, another number would be read.
    return isNumberType(value) && value.toDouble() == integerValue(value);
}

bool isNumber(const QVariant& value) {
    if (value.typeId() == QMetaType::QString) {
        static const QRegularExpression number(R"(\A\s*[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?\s*\z)");
        return number.match(value.toString()).hasMatch();
    }
    return isNumberType(value) && std::isfinite(value.toDouble());
}

bool isFlag(const QVariant& value) {
    if (value.typeId() == QMetaType::QString) {
        static const QRegularExpression flag(R"(\A\s*([+-]?\d+|yes|no|true|false|y|n|t|f)\s*\z)",
                                             QRegularExpression::CaseInsensitiveOption);
        return flag.match(value.toString()).hasMatch();
    }
    return value.typeId() == QMetaType::Bool || isNumberType(value);
}

QString readAs(StoredType type, const QVariant& value) {
    switch (type) {
    case StoredType::Integer:
        return QString::number(integerValue(value));
    case StoredType::Number:
        return QString::number(static_cast<double>(floatValue(value)));
    case StoredType::Flag:
        return booleanValue(value) ? "true" : "false";
    case StoredType::Text:
    case StoredType::List:
    case StoredType::Dictionary:
        break;
    }
    return "nothing";
}

QString remedyFor(StoredType type) {
    constexpr std::array wanted = {"a text",        "an integer", "a number",
                                   "true or false", "an array",   "a dictionary"};
    return QString("make it %1").arg(wanted.at(static_cast<std::size_t>(type)));
}

void checkRange(const StoredField& field, const QVariant& value, const QString& place, Report& report) {
    const int number = integerValue(value);
    if (field.type == StoredType::Integer && (number < field.lowest || number > field.highest)) {
        report.add(place, QString("'%1' is %2").arg(field.key).arg(number),
                   QString("make it %1 to %2").arg(field.lowest).arg(field.highest));
    }
}

} // namespace

QString described(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::QString:
        return "the text " + quoted(value.toString());
    case QMetaType::LongLong:
    case QMetaType::Double:
        return QLocale::c().toString(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case QMetaType::Bool:
        return "a boolean";
    case QMetaType::QVariantList:
        return "an array";
    case QMetaType::QVariantMap:
        return "a dictionary";
    case QMetaType::QByteArray:
        return "data";
    default:
        return value.typeId() == qMetaTypeId<PropertyListDate>() ? "a date" : "a reference";
    }
}

bool isOf(StoredType type, const QVariant& value) {
    switch (type) {
    case StoredType::Text:
        return value.typeId() == QMetaType::QString;
    case StoredType::Integer:
        return isInteger(value);
    case StoredType::Number:
        return isNumber(value);
    case StoredType::Flag:
        return isFlag(value);
    case StoredType::List:
        return value.typeId() == QMetaType::QVariantList;
    case StoredType::Dictionary:
        return value.typeId() == QMetaType::QVariantMap;
    }
    return false;
}

void checkFields(const QVariantMap& dictionary, std::span<const StoredField> fields, const QString& place,
                 Report& report) {
    for (const StoredField& field : fields) {
        const auto found = dictionary.find(field.key);
        if (found == dictionary.end()) {
            continue;
        }
        if (isOf(field.type, *found)) {
            checkRange(field, *found, place, report);
        } else {
            checkType(field.type, *found, field.key, place, report);
        }
    }
}

void checkType(StoredType type, const QVariant& value, const QString& name, const QString& place,
               Report& report) {
    if (!isOf(type, value)) {
        const QString fault = QString("is %1, which reads as %2").arg(described(value), readAs(type, value));
        report.add(place, name.isEmpty() ? fault : quoted(name) + " " + fault, remedyFor(type));
    }
}
