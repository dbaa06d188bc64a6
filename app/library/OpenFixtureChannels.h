#pragma once

#include <QHash>
#include <QJsonObject>
#include <QStringList>

#include <cstddef>
#include <cstdint>

class PixelMatrix;

/// One byte of a channel in the Open Fixture Library's format: what one slot of a mode can hold.
struct OpenChannel {
    QString name;
    QString fineOf;   ///< the key of the next higher byte; null for the highest
    QString pixelKey; ///< of the pixel or the group that it belongs to; null for none
    std::uint8_t defaultValue = 0;
    bool unused = false;
};

/// A key of a mode that stands for one channel or another, as the level of a third one has it.
struct OpenSwitch {
    QString trigger; ///< the name of that third channel
    QStringList channels;
};

/// All channels of a fixture by the keys that its modes know them under: the available ones, those made of
/// templates for each pixel and each group, and the fine ones of both.
class OpenFixtureChannels {
public:
    OpenFixtureChannels(const QJsonObject& fixture, const PixelMatrix& matrix);

    /// Why the fixture is refused for its channels; null when it is not.
    const QString& refusal() const { return refusal_; }

    /// Null for a key that there is not.
    const OpenChannel* channel(const QString& key) const;
    const OpenSwitch* switching(const QString& key) const;

private:
    void add(const QString& key, const QJsonObject& channel, const QStringList& pixelKeys);
    void addSwitches(const QString& key, const QJsonObject& channel, const QStringList& pixelKeys);
    void refuse(const QString& channel, const QString& reason);

    QHash<QString, OpenChannel> channels_;
    QHash<QString, OpenSwitch> switches_;
    std::size_t switchCount_ = 0; ///< of channels that stand in them
    QString refusal_;
};
