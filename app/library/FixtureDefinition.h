#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

/// One slot of a mode.
struct FixtureSlot {
    QString name; ///< as the file has it
    std::uint8_t defaultValue = 0;
    bool unused = false;         ///< the fixture does nothing with it
    bool fineOfPrevious = false; ///< the low byte of what the slot right before it controls
};

/// One way in which a fixture can be set up.
struct FixtureMode {
    QString name;
    std::vector<FixtureSlot> channels;   ///< in the order of the slots
    std::vector<std::vector<int>> heads; ///< the indices of the slots of each head, pixel or cell
    QStringList remarks;                 ///< what the fixture has and a fader cannot express, a line each
};

/// A kind of fixture as a file of a fixture library describes it, whatever the format.
struct FixtureDefinition {
    QString maker; ///< may be empty
    QString model;
    std::vector<FixtureMode> modes;
};

/// What a reader makes of a file.
struct FixtureReading {
    FixtureDefinition definition;
    QString refusal; ///< why the file is refused, all of it; null when it was read
};

/// What goes beyond these is no fixture, and its file is refused.
namespace FixtureBounds {
inline constexpr std::size_t slotsOfMode = 4096; ///< there are some with more than the 512 of a universe
inline constexpr std::size_t slotsOfAllModes = 65536;
inline constexpr std::size_t modes = 256;
inline constexpr std::size_t aliases = 256;
inline constexpr std::size_t switches = 4096; ///< of channels by others, over all pixels
inline constexpr qsizetype nameLength = 200;
} // namespace FixtureBounds

/// Adds the mode. Returns why not, when it has no name or no slot or goes beyond the bounds; else a null
/// text.
QString addMode(FixtureDefinition& definition, FixtureMode mode);
