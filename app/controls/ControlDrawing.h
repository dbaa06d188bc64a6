#pragma once

#include <QColor>
#include <QRectF>
#include <QSize>
#include <QString>

#include <cstdint>

class QPainter;

inline const QColor gLabelColour = QColor::fromRgbF(0.0F, 0.0F, 0.0F);
inline const QColor gBackgroundColour = QColor::fromRgbF(0.15F, 0.15F, 0.15F);
inline const QColor gDarkGrey = QColor::fromRgbF(0.3F, 0.3F, 0.3F);
inline const QColor gDarkRed = QColor::fromRgbF(0.25F, 0.15F, 0.15F);
inline const QColor gMidGrey = QColor::fromRgbF(0.5F, 0.5F, 0.5F);
inline const QColor gMidRed = QColor::fromRgbF(0.35F, 0.25F, 0.25F);
inline const QColor gHighlight = QColor::fromRgbF(1.0F, 0.5F, 0.0F);
inline const QColor gTextColor = QColor::fromRgbF(1.0F, 1.0F, 1.0F);

/// All that the picture of a control depends on.
struct ControlLook {
    QString name;
    std::uint32_t value = 0;
    std::uint32_t max = 255;
    std::uint32_t channels = 1;
    bool timed = false;    ///< a fade time is set: red tint
    bool dummy = false;    ///< a black strip with the name, nothing else
    bool outlined = false; ///< selected, in the window in front
};

/// Where the two parts of the bar stand in a control of the given size.
struct BarGeometry {
    QRectF level; ///< the part up to the level
    QRectF rest;
};
BarGeometry barGeometry(QSize frame, std::uint32_t value, std::uint32_t max);

/// The name as it is drawn: as many of its UTF-8 bytes as it has characters, read as Mac OS Roman. Names
/// in plain ASCII come out as they are; longer ones than a column can show are cut.
QString drawnName(const QString& name);

/// The level as it is drawn, always five characters: five digits for a 16-bit control, else two blanks
/// and three digits.
QString drawnValue(std::uint32_t value, std::uint32_t channels);

void drawControl(QPainter& painter, QSize frame, const ControlLook& look);
