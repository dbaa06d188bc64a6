#include "plist/Reading.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr qint64 lowest = std::numeric_limits<int>::min();
constexpr qint64 highest = std::numeric_limits<int>::max();

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool isSign(QChar c) {
    return c == u'+' || c == u'-';
}

QStringView withoutLeadingSpace(QStringView text) {
    const auto* const first = std::ranges::find_if_not(text, [](QChar c) { return c.isSpace(); });
    return text.sliced(first - text.begin());
}

qsizetype countDigits(QStringView text) {
    return std::ranges::find_if_not(text, isDigit) - text.begin();
}

// How many characters an exponent takes up, such as "e-3"; 0 when it is incomplete.
qsizetype exponentLength(QStringView text) {
    if (!text.startsWith(u'e', Qt::CaseInsensitive)) {
        return 0;
    }
    const qsizetype sign = text.size() > 1 && isSign(text[1]) ? 1 : 0;
    const qsizetype digits = countDigits(text.sliced(1 + sign));
    return digits > 0 ? 1 + sign + digits : 0;
}

// How many characters the decimal number at the beginning takes up; 0 when there is none.
qsizetype numberLength(QStringView text) {
    const qsizetype sign = !text.isEmpty() && isSign(text[0]) ? 1 : 0;
    const qsizetype whole = countDigits(text.sliced(sign));
    const bool hasPoint = text.size() > sign + whole && text[sign + whole] == u'.';
    const qsizetype fraction = hasPoint ? countDigits(text.sliced(sign + whole + 1)) : 0;
    if (whole + fraction == 0) {
        return 0;
    }
    const qsizetype mantissa = sign + whole + (hasPoint ? 1 : 0) + fraction;
    return mantissa + exponentLength(text.sliced(mantissa));
}

bool isInteger(const QVariant& value) {
    const int type = value.typeId();
    return type == QMetaType::Bool || type == QMetaType::Int || type == QMetaType::UInt ||
           type == QMetaType::LongLong;
}

bool isReal(const QVariant& value) {
    const int type = value.typeId();
    return type == QMetaType::Double || type == QMetaType::Float || type == QMetaType::ULongLong;
}

int truncated(double number) {
    if (std::isnan(number)) {
        return 0;
    }
    return static_cast<int>(std::clamp(number, static_cast<double>(lowest), static_cast<double>(highest)));
}

} // namespace

int leadingInteger(QStringView text) {
    const QStringView trimmed = withoutLeadingSpace(text);
    const bool hasSign = !trimmed.isEmpty() && isSign(trimmed[0]);
    const qint64 direction = hasSign && trimmed[0] == u'-' ? -1 : 1;
    const QStringView digits = trimmed.sliced(hasSign ? 1 : 0);
    qint64 number = 0;
    for (const QChar digit : digits.first(countDigits(digits))) {
        number = std::clamp(number * 10 + direction * (digit.unicode() - u'0'), lowest, highest);
    }
    return static_cast<int>(number);
}

std::optional<double> leadingNumber(QStringView text) {
    const QStringView trimmed = withoutLeadingSpace(text);
    const qsizetype length = numberLength(trimmed);
    return length > 0 ? std::optional(trimmed.first(length).toDouble()) : std::nullopt;
}

int integerValue(const QVariant& value) {
    if (isInteger(value)) {
        return static_cast<int>(std::clamp(value.toLongLong(), lowest, highest));
    }
    if (isReal(value)) {
        return truncated(value.toDouble());
    }
    return value.typeId() == QMetaType::QString ? leadingInteger(value.toString()) : 0;
}

float floatValue(const QVariant& value) {
    double number = 0;
    if (isInteger(value) || isReal(value)) {
        number = value.toDouble();
    } else if (value.typeId() == QMetaType::QString) {
        number = leadingNumber(value.toString()).value_or(0);
    }
    return std::isnan(number) ? 0 : static_cast<float>(number);
}

bool booleanValue(const QVariant& value) {
    if (isInteger(value)) {
        return value.toLongLong() != 0;
    }
    if (isReal(value)) {
        return value.toDouble() != 0;
    }
    if (value.typeId() != QMetaType::QString) {
        return false;
    }
    const QString text = value.toString();
    const QStringView trimmed = withoutLeadingSpace(text);
    const bool saysYes = !trimmed.isEmpty() && QStringView(u"YyTt").contains(trimmed[0]);
    return saysYes || leadingInteger(trimmed) != 0;
}

QString stringValue(const QVariant& value) {
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

QVariantList listValue(const QVariant& value) {
    return value.typeId() == QMetaType::QVariantList ? value.toList() : QVariantList();
}

QVariantMap mapValue(const QVariant& value) {
    return value.typeId() == QMetaType::QVariantMap ? value.toMap() : QVariantMap();
}
