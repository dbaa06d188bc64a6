#pragma once

#include <QPoint>
#include <QVariant>

#include <cstdint>
#include <optional>
#include <vector>

class ControlView;

/// All that brings a fixture back as it was: its placement, what its faders stood at, and where its window
/// was. Without levels and place it is a new one.
struct KeptFixture {
    struct Level {
        std::uint32_t value = 0;
        float time = 0; ///< the fade time in seconds
    };

    QVariant placement;        ///< as the settings hold it
    std::vector<Level> levels; ///< of all controls in profile order
    std::optional<QPoint> windowPlace;
};

/// The fixture of that view; a fade that is under way is kept where it has come to.
KeptFixture keptFixture(const ControlView& view, const QVariant& placement);

/// Puts the levels and fade times back into a view of the same placement.
void restoreLevels(const KeptFixture& fixture, const ControlView& view);
