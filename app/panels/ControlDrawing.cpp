#include "panels/ControlDrawing.h"

#include "panels/Colours.h"
#include "panels/TextPictures.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int inset = 2;
constexpr int nameX = 10;
constexpr int valueFromRight = 45;
constexpr int baselineFromBottom = 5;

void drawBar(QPainter& painter, const QRect& frame, const ControlLook& look) {
    const BarGeometry bar = barGeometry(frame.size(), look.value, look.max);
    painter.fillRect(bar.level.translated(frame.topLeft()), look.timed ? gMidRed : gMidGrey);
    painter.fillRect(bar.rest.translated(frame.topLeft()), look.timed ? gDarkRed : gDarkGrey);
}

void drawOutline(QPainter& painter, const QRect& frame) {
    const int w = frame.width();
    const int h = frame.height();
    for (const QRect& edge :
         {QRect(0, 0, w, 1), QRect(0, h - 1, w, 1), QRect(0, 1, 1, h - 2), QRect(w - 1, 1, 1, h - 2)}) {
        painter.fillRect(edge.translated(frame.topLeft()), gHighlight);
    }
}

// The text begins `x` from the left edge. Its picture is laid on whole device pixels, where it is sharp.
void drawText(QPainter& painter, const QRect& frame, int x, const TextPicture& text) {
    const qreal scale = text.image.devicePixelRatio();
    const QPointF beginning(frame.left() + x, frame.top() + frame.height() - baselineFromBottom);
    const QPointF corner = QPointF(((beginning + text.corner) * scale).toPoint()) / scale;
    const QRectF whole(corner, QSizeF(text.image.size()) / scale);
    if (QRectF(frame).contains(whole)) {
        painter.drawImage(corner, text.image);
        return;
    }
    const QRectF inside = whole & QRectF(frame);
    painter.drawImage(inside, text.image, QRectF((inside.topLeft() - corner) * scale, inside.size() * scale));
}

} // namespace

BarGeometry barGeometry(QSize frame, std::uint32_t value, std::uint32_t max) {
    const double width = std::max(frame.width() - 2 * inset, 0);
    const double height = std::max(frame.height() - 2 * inset, 0);
    // A level beyond the maximum, which a profile or a cue can bring, fills the bar.
    const double level = std::min(width * value / max, width);
    return {.level = QRectF(inset, inset, level, height),
            .rest = QRectF(inset + level, inset, width - level, height)};
}

void drawControl(QPainter& painter, const QRect& frame, const ControlLook& look) {
    const qreal scale = painter.device()->devicePixelRatio();
    if (look.dummy) {
        painter.fillRect(frame, gLabelColour);
    } else {
        drawBar(painter, frame, look);
    }
    if (look.outlined && !look.dummy) {
        drawOutline(painter, frame);
    }
    drawText(painter, frame, nameX, namePicture(look.name, scale));
    if (!look.dummy) {
        drawText(painter, frame, frame.width() - valueFromRight,
                 valuePicture(look.value, look.channels, scale));
    }
}
