#pragma once

#include <QImage>
#include <QPointF>
#include <QString>

#include <cstdint>

/// A text in the faders' font and colour on a transparent ground, cut to its ink. Setting a text costs many
/// times what laying its picture on a bar does.
struct TextPicture {
    QImage image;   ///< null for a text without ink; in device pixels
    QPointF corner; ///< its upper left corner, from where the text begins on its baseline
};

/// The name as it is drawn: as many of its UTF-8 bytes as it has characters, read as Mac OS Roman. Names
/// in plain ASCII come out as they are; longer ones than a column can show are cut.
QString drawnName(const QString& name);

/// The level as it is drawn, always five characters: five digits for a 16-bit control, else two blanks
/// and three digits.
QString drawnValue(std::uint32_t value, std::uint32_t channels);

/// The pictures of the two, for a surface of that device pixel ratio. Those of late are kept; each is good
/// until the next one is asked for.
const TextPicture& namePicture(const QString& name, qreal devicePixelRatio);
const TextPicture& valuePicture(std::uint32_t value, std::uint32_t channels, qreal devicePixelRatio);
