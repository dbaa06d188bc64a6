#pragma once

#include "library/FixtureDefinition.h"

#include <QJsonArray>

#include <map>

class OpenFixtureChannels;
class PixelMatrix;

/// Puts together one mode of the Open Fixture Library's format: its list of channels, null for an unused
/// slot, and of blocks that repeat templates for pixels.
class OpenFixtureMode {
public:
    OpenFixtureMode(const OpenFixtureChannels& channels, const PixelMatrix& matrix)
        : channels_(channels), matrix_(matrix) {}

    /// Why the mode cannot be put together; null when it can. To be called once.
    QString read(const QJsonObject& mode);

    /// The mode once it was read.
    FixtureMode take();

private:
    void refuse(const QString& reason);
    void addEntry(const QJsonValue& entry);
    void addBlock(const QJsonObject& block);
    void addChannel(const QJsonValue& key, const QString& pixelKey);
    void addSlot(const FixtureSlot& slot, const QString& key, const QString& pixelKey);
    void addSwitch(const QString& key, const QString& pixelKey);

    const OpenFixtureChannels& channels_;
    const PixelMatrix& matrix_;
    FixtureMode mode_;
    QString previousKey_;
    int block_ = 0;                                             ///< counted from 1; 0 outside
    std::map<std::pair<int, QString>, std::vector<int>> heads_; ///< by block and pixel
    QString refusal_;
};
