#include "panels/TextPictures.h"

#include "panels/Colours.h"
#include "panels/MacRoman.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QHash>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace {

constexpr int fontPixels = 12;
constexpr qsizetype valueCharacters = 5;
constexpr qsizetype longestDrawnName = 256; // far more than a column's width holds
constexpr int overhang = 12;                // room for what letters draw beside their place

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

// Where anything is drawn at all.
QRect inkOf(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}

TextPicture pictureOf(const QString& text, qreal devicePixelRatio) {
    const QFontMetrics metrics(textFont());
    const QSize size(metrics.horizontalAdvance(text) + 2 * overhang, metrics.height() + 2 * overhang);
    QImage image(size * devicePixelRatio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::transparent);
    const QPoint beginning(overhang, overhang + metrics.ascent());
    QPainter painter(&image);
    painter.setFont(textFont());
    painter.setPen(gTextColor);
    painter.drawText(beginning, text);
    const QRect ink = inkOf(image);
    return {.image = image.copy(ink), .corner = QPointF(ink.topLeft()) / devicePixelRatio - beginning};
}

// The pictures of late, by what they show and for which device pixel ratio. Starts anew when it is full.
template <typename Key>
class Pictures {
public:
    template <typename MakeText>
    const TextPicture& picture(const Key& key, qreal devicePixelRatio, MakeText makeText) {
        const auto found = pictures_.constFind({key, devicePixelRatio});
        if (found != pictures_.constEnd()) {
            return *found;
        }
        const TextPicture made = pictureOf(makeText(), devicePixelRatio);
        bytes_ += made.image.sizeInBytes();
        if (bytes_ > mostBytes) {
            pictures_.clear();
            bytes_ = made.image.sizeInBytes();
        }
        return *pictures_.insert({key, devicePixelRatio}, made);
    }

private:
    static constexpr qsizetype mostBytes = qsizetype{8} * 1024 * 1024; // of some thousand texts

    QHash<std::pair<Key, qreal>, TextPicture> pictures_;
    qsizetype bytes_ = 0;
};

} // namespace

QString drawnName(const QString& name) {
    const qsizetype count = std::min(name.size(), longestDrawnName);
    return decodeMacRoman(name.left(count).toUtf8().left(count));
}

QString drawnValue(std::uint32_t value, std::uint32_t channels) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), channels == 2 ? "%05d" : "  %03d", static_cast<int>(value));
    return QString::fromLatin1(text.data(), valueCharacters);
}

const TextPicture& namePicture(const QString& name, qreal devicePixelRatio) {
    static Pictures<QString> pictures;
    return pictures.picture(name.size() > longestDrawnName ? name.left(longestDrawnName) : name,
                            devicePixelRatio, [&] { return drawnName(name); });
}

const TextPicture& valuePicture(std::uint32_t value, std::uint32_t channels, qreal devicePixelRatio) {
    static Pictures<std::uint64_t> pictures;
    const std::uint64_t sixteenBits = channels == 2 ? 1 : 0;
    return pictures.picture(sixteenBits << 32 | value, devicePixelRatio,
                            [=] { return drawnValue(value, channels); });
}
