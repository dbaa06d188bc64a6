#pragma once

#include <QString>

/// The GDTF attribute (DIN SPEC 15800) that a fader's name implies: "Red" is ColorAdd_R, "Dimmer" and "Level"
/// are Dimmer. Empty when it implies none. Case, and more than one blank, make no difference. A number or a
/// "#" at the end, which tells heads or cells apart, is left out: "Red 3", "Red #" and "red3" are what "Red"
/// is. Only behind "Gobo" and "Prism" it tells wheels apart, 1 to 9: "Gobo 2" is Gobo2. Any other word beside
/// the name, and the name implies nothing: "Red fine" moves no more than the last step of a red, "Pan Speed"
/// is no pan.
QString attributeOfName(const QString& name);
