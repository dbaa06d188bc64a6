#include "window/WarningMark.h"

#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace {

constexpr QColor sign(0xF5, 0xA6, 0x23);
constexpr QColor edge(0x7A, 0x4B, 0x00);

// In a square of 16 units.
QPainterPath triangle() {
    QPainterPath path(QPointF(8, 1.5));
    path.lineTo(15, 14);
    path.lineTo(1, 14);
    path.closeSubpath();
    return path;
}

QPixmap drawn(int size) {
    constexpr qreal units = 16;
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / units, size / units);
    painter.setBrush(sign);
    painter.setPen(QPen(edge, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(triangle());
    painter.fillRect(QRectF(7.2, 5.2, 1.6, 4.6), Qt::black);
    painter.fillRect(QRectF(7.2, 11, 1.6, 1.6), Qt::black);
    return pixmap;
}

} // namespace

QIcon warningMark() {
    QIcon icon;
    for (const int size : {16, 20, 24, 32, 48}) {
        icon.addPixmap(drawn(size));
    }
    return icon;
}

QColor warningColour(const QPalette& palette) {
    constexpr int halfway = 128;
    return palette.base().color().lightness() < halfway ? QColor(0xFF, 0xB2, 0x5C) : QColor(0xA3, 0x3A, 0x00);
}
