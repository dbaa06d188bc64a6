#pragma once

#include <QRectF>
#include <QSize>
#include <QString>

#include <cstdint>

class QPainter;

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

/// Where the two parts of the bar stand in a control of the given size, from its upper left corner.
struct BarGeometry {
    QRectF level; ///< the part up to the level
    QRectF rest;
};
BarGeometry barGeometry(QSize frame, std::uint32_t value, std::uint32_t max);

/// Draws a control at its place, and nothing beside it.
void drawControl(QPainter& painter, const QRect& frame, const ControlLook& look);
