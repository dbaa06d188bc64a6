#pragma once

#include <QPixmap>

#include <array>
#include <cstdint>

/// The picture of each of the 256 levels of a slot: a bar from below and the number on it. Laying one down
/// costs a fraction of setting the number.
class LevelPictures {
public:
    /// Of every picture, in logical pixels; whole device pixels at the scales 1.25 and 1.5 too.
    static constexpr QSize size{28, 20};

    /// Good until a picture of another ratio is asked for.
    const QPixmap& picture(std::uint8_t level, qreal devicePixelRatio);

private:
    std::array<QPixmap, 256> pictures_;
    qreal devicePixelRatio_ = 0;
};
