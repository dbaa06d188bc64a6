#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// A text without control characters, runs of blanks and what no file can hold.
QString readableText(const QString& text);

/// A name as a control can bear it: a readable text without "#", which would become the layer number. Never
/// empty: what is left of nothing is "Channel".
QString readableName(const QString& name);

/// A name without this run of digits, and without the brackets and dashes that are left around nothing. May
/// come out empty.
QString nameWithoutNumber(const QString& name, const QString& number);

/// The runs of digits in a name.
QStringList numbersIn(const QString& name);

/// Gives each of the names that are asked for once as it is, and then with a number behind it.
class UniqueNames {
public:
    QString take(const QString& wanted);

private:
    QHash<QString, int> taken_; ///< to how often it was asked for
};
