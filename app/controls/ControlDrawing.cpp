#include "controls/ControlDrawing.h"

#include "controls/MacRoman.h"

#include <QFont>
#include <QFontDatabase>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr int inset = 2;
constexpr int nameX = 10;
constexpr int valueFromRight = 45;
constexpr int baselineFromBottom = 5;
constexpr int fontPixels = 12;
constexpr qsizetype valueCharacters = 5;
constexpr qsizetype longestDrawnName = 256; // far more than a column's width holds

// Pixels, not points: five digits have to fit beside the name at every screen resolution.
const QFont& textFont() {
    static const QFont font = [] {
        QFont made;
        made.setFamilies({"Monaco", QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
        made.setStyleHint(QFont::Monospace);
        made.setPixelSize(fontPixels);
        return made;
    }();
    return font;
}

void drawBar(QPainter& painter, QSize frame, const ControlLook& look) {
    const BarGeometry bar = barGeometry(frame, look.value, look.max);
    painter.fillRect(bar.level, look.timed ? gMidRed : gMidGrey);
    painter.fillRect(bar.rest, look.timed ? gDarkRed : gDarkGrey);
}

void drawOutline(QPainter& painter, QSize frame) {
    const int w = frame.width();
    const int h = frame.height();
    for (const QRect& edge :
         {QRect(0, 0, w, 1), QRect(0, h - 1, w, 1), QRect(0, 1, 1, h - 2), QRect(w - 1, 1, 1, h - 2)}) {
        painter.fillRect(edge, gHighlight);
    }
}

void drawTexts(QPainter& painter, QSize frame, const ControlLook& look) {
    const int baseline = frame.height() - baselineFromBottom;
    painter.setFont(textFont());
    painter.setPen(gTextColor);
    painter.drawText(nameX, baseline, drawnName(look.name));
    if (!look.dummy) {
        painter.drawText(frame.width() - valueFromRight, baseline, drawnValue(look.value, look.channels));
    }
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

QString drawnName(const QString& name) {
    const qsizetype count = std::min(name.size(), longestDrawnName);
    return decodeMacRoman(name.left(count).toUtf8().left(count));
}

QString drawnValue(std::uint32_t value, std::uint32_t channels) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), channels == 2 ? "%05d" : "  %03d", static_cast<int>(value));
    return QString::fromLatin1(text.data(), valueCharacters);
}

void drawControl(QPainter& painter, QSize frame, const ControlLook& look) {
    if (look.dummy) {
        painter.fillRect(QRect(QPoint(0, 0), frame), gLabelColour);
    } else {
        drawBar(painter, frame, look);
    }
    if (look.outlined && !look.dummy) {
        drawOutline(painter, frame);
    }
    drawTexts(painter, frame, look);
}
