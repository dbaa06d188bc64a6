#include "window/LevelPictures.h"

#include "panels/Colours.h"

#include <QFontDatabase>
#include <QPainter>

#include <limits>

namespace {

QFont numberFont() {
    constexpr int pixels = 11;
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(pixels);
    return font;
}

QPixmap drawn(std::uint8_t level, qreal devicePixelRatio) {
    constexpr int gap = 1; // to the next slot
    QPixmap picture((QSizeF(LevelPictures::size) * devicePixelRatio).toSize());
    picture.setDevicePixelRatio(devicePixelRatio);
    picture.fill(gBackgroundColour);
    QPainter painter(&picture);
    const QRectF slot(0, 0, LevelPictures::size.width() - gap, LevelPictures::size.height() - gap);
    painter.fillRect(slot, gDarkGrey);
    const double lit = slot.height() * level / std::numeric_limits<std::uint8_t>::max();
    painter.fillRect(slot.adjusted(0, slot.height() - lit, 0, 0), gMidGrey);
    painter.setFont(numberFont());
    painter.setPen(level == 0 ? gMidGrey : gTextColor);
    painter.drawText(slot, Qt::AlignCenter, QString::number(level));
    return picture;
}

} // namespace

const QPixmap& LevelPictures::picture(std::uint8_t level, qreal devicePixelRatio) {
    if (devicePixelRatio != devicePixelRatio_) {
        pictures_.fill({});
        devicePixelRatio_ = devicePixelRatio;
    }
    QPixmap& picture = pictures_.at(level);
    if (picture.isNull()) {
        picture = drawn(level, devicePixelRatio);
    }
    return picture;
}
