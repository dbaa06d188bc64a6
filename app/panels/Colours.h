#pragma once

#include <QColor>

// What faders and the views around them are drawn in.
inline const QColor gLabelColour = QColor::fromRgbF(0.0F, 0.0F, 0.0F);
inline const QColor gBackgroundColour = QColor::fromRgbF(0.15F, 0.15F, 0.15F);
inline const QColor gDarkGrey = QColor::fromRgbF(0.3F, 0.3F, 0.3F);
inline const QColor gDarkRed = QColor::fromRgbF(0.25F, 0.15F, 0.15F);
inline const QColor gMidGrey = QColor::fromRgbF(0.5F, 0.5F, 0.5F);
inline const QColor gMidRed = QColor::fromRgbF(0.35F, 0.25F, 0.25F);
inline const QColor gHighlight = QColor::fromRgbF(1.0F, 0.5F, 0.0F);
inline const QColor gTextColor = QColor::fromRgbF(1.0F, 1.0F, 1.0F);
