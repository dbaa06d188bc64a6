#pragma once

#include "panels/ControlKeys.h"

#include <QPointF>

#include <cstdint>

class DMXControl;

/// Does to a fader what a key asks for. Moving the selection is left to whoever shows the fader.
void keyDown(DMXControl& control, const KeyMeaning& meaning);

/// Puts the fader's level on the pasteboard, as a keyed archive under text/plain; other programs read nothing
/// in it.
void copy(const DMXControl& control);
/// Takes the level from the pasteboard at once; anything that is no such archive changes nothing.
void paste(DMXControl& control);

/// A fader that is dragged sideways: its width is its whole range.
class ControlDrag {
public:
    /// No fader yet.
    ControlDrag() = default;
    /// `place` is in coordinates that stay where they are meanwhile.
    ControlDrag(DMXControl& control, int width, QPointF place);

    bool isUnderWay() const { return control_; }
    void moveTo(QPointF place);

private:
    DMXControl* control_ = nullptr;
    int width_ = 0;
    QPointF startPt_;
    std::uint32_t startValue_ = 0;
};
