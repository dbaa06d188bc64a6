#pragma once

#include <QString>

#include <cstdint>

/// A channel as a .qxf file declares it.
struct QxfChannel {
    QString name;
    QString preset;         ///< what it controls, in the format's own words: "PositionPan"; may be empty
    bool isLowByte = false; ///< says the file, where no preset does
    std::uint8_t defaultValue = 0;
};

/// Whether the file declares the channel to be the low byte of something.
bool isFine(const QxfChannel& channel);

/// Whether the file declares that the slot does nothing.
bool isUnused(const QxfChannel& channel);

/// Whether `fine` is the low byte of `coarse`: one is declared fine and the other not, and either their names
/// are the same but for words like "fine", "coarse", "16 bit", or their presets are and no number in the
/// names tells them apart.
bool isFineOf(const QxfChannel& fine, const QxfChannel& coarse);
