#pragma once

#include <QColor>
#include <QIcon>

class QPalette;

/// A triangle with an exclamation mark, drawn for small icons at any screen's resolution; it tells by its
/// shape, also where its colour is not seen.
QIcon warningMark();

/// The colour of text that warns, easy to read on the palette's base.
QColor warningColour(const QPalette& palette);
