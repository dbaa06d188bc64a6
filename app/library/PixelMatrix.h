#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>

#include <vector>

/// The pixels of a fixture in the Open Fixture Library's format, and the groups of them.
class PixelMatrix {
public:
    /// Reads the fixture's "matrix"; `json` is the text that it stands in, for the order of the groups.
    PixelMatrix(const QJsonObject& matrix, const QByteArray& json);

    /// Why the fixture is refused for its matrix; null when it is not.
    const QString& refusal() const { return refusal_; }

    /// All names that a channel can be made for.
    QStringList allKeys() const;

    /// The pixels in the order that a "repeatFor" names, or the groups; empty when it names none.
    QStringList keysFor(const QString& repeatFor) const;

private:
    struct Pixel {
        QString key;
        std::vector<int> position; // x, y, z
    };

    void count(const QJsonArray& sizes);
    void name(const QJsonArray& layers);
    void add(const QString& key, std::vector<int> position);
    QStringList keysByPosition(const QString& axes) const;
    QStringList keysByAlphabet() const;

    std::vector<Pixel> pixels_;
    QStringList groups_;
    QString refusal_;
};
