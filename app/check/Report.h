#pragma once

#include <QString>
#include <QStringList>

/// What is wrong in one file, a line for each problem.
class Report {
public:
    explicit Report(QString file) : file_(std::move(file)) {}

    /// Where it is, what is wrong, what to do. A file as a whole has an empty place.
    void add(const QString& place, const QString& fault, const QString& remedy);

    /// "file: place: fault; remedy". What would not stay on its line is replaced.
    const QStringList& lines() const { return lines_; }

private:
    QString file_;
    QStringList lines_;
};

/// The text without line breaks and other characters that a terminal takes for commands: names come from
/// files.
QString onOneLine(QString text);

/// A name between quotes, cut when it is of no length that anybody reads.
QString quoted(const QString& name);
