#include "library/ControlNames.h"

#include <QRegularExpression>

namespace {

const QRegularExpression& digits() {
    static const QRegularExpression expression("[0-9]+");
    return expression;
}

} // namespace

QString readableText(const QString& text) {
    static const QRegularExpression controlCharacter(R"([\p{Cc}\x{FFFE}\x{FFFF}])");
    return QString::fromUtf8(text.toUtf8()).replace(controlCharacter, " ").simplified();
}

QString readableName(const QString& name) {
    static const QRegularExpression numberSign("#(?=[0-9])");
    const QString readable = readableText(name).remove(numberSign).replace('#', "No ").simplified();
    return readable.isEmpty() ? "Channel" : readable;
}

QStringList numbersIn(const QString& name) {
    QStringList numbers;
    for (const QRegularExpressionMatch& match : digits().globalMatch(name)) {
        numbers.append(match.captured());
    }
    return numbers;
}

QString nameWithoutNumber(const QString& name, const QString& number) {
    static const QRegularExpression emptyBrackets(R"([(\[][\s,;:/-]*[)\]])");
    static const QRegularExpression blankInBrackets(R"((?<=[(\[])\s+|\s+(?=[)\]]))");
    static const QRegularExpression ends(R"(^[\s,;:/_.-]+|[\s,;:/_.-]+$)");
    QString rest;
    qsizetype copied = 0;
    for (const QRegularExpressionMatch& match : digits().globalMatch(name)) {
        if (match.captured() == number) {
            rest += name.mid(copied, match.capturedStart() - copied) + ' ';
            copied = match.capturedEnd();
        }
    }
    rest += name.mid(copied);
    return rest.remove(emptyBrackets).remove(blankInBrackets).remove(ends).simplified();
}

QString UniqueNames::take(const QString& wanted) {
    QString name = wanted;
    while (taken_.contains(name)) {
        name = QString("%1 %2").arg(wanted).arg(++taken_[wanted]);
    }
    taken_.insert(name, 1);
    return name;
}
