#pragma once

#include <QPoint>
#include <QVariant>

#include <cstdint>
#include <optional>
#include <vector>

class Fixture;

/// All that brings a fixture back as it was: its placement, what its faders stood at, which of them was
/// selected, and where its window was. With a placement alone it is a new one.
struct KeptFixture {
    struct Level {
        std::uint32_t value = 0;
        float time = 0; ///< the fade time in seconds
    };

    QVariant placement;                  ///< as the settings hold it
    std::vector<Level> levels;           ///< of all controls in profile order
    std::optional<std::size_t> selected; ///< index among all controls
    std::optional<QPoint> windowPlace;
};

/// The fixture as it is; a fade that is under way is kept where it has come to.
KeptFixture keptFixture(const Fixture& fixture, const QVariant& placement);

/// Puts levels, fade times and selection back into a fixture of the same placement.
void restoreControls(const KeptFixture& kept, const Fixture& fixture);
