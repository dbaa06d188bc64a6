#include "panels/ControlEditing.h"

#include "levels/LevelMovement.h"
#include "panels/ControlPasteboard.h"
#include "rig/DMXControl.h"

#include <optional>

void keyDown(DMXControl& control, const KeyMeaning& meaning) {
    switch (meaning.action) {
    case KeyAction::None:
    case KeyAction::SelectNext:
    case KeyAction::SelectPrevious:
        break;
    case KeyAction::FadeToDefault:
        control.setDMXValue(control.defaultValue(), control.time());
        control.endEntry();
        break;
    case KeyAction::ClearTime:
        control.setTime(0);
        control.endEntry();
        break;
    case KeyAction::RemoveLast:
        control.removeLast();
        break;
    case KeyAction::CancelEntry:
        control.endEntry();
        break;
    case KeyAction::StepUp:
        control.step(+1);
        break;
    case KeyAction::StepDown:
        control.step(-1);
        break;
    case KeyAction::Type:
        control.type(meaning.character);
        break;
    case KeyAction::ApplyEntryAsTime:
        control.setTimeMode();
        [[fallthrough]];
    case KeyAction::ApplyEntry:
        control.endEdit();
        control.endEntry();
        break;
    }
}

void copy(const DMXControl& control) {
    copyLevel(static_cast<int>(control.value()));
}

void paste(DMXControl& control) {
    if (const std::optional<int> level = pastedLevel()) {
        control.endEntry();
        control.setValue(static_cast<std::uint32_t>(*level));
    }
}

ControlDrag::ControlDrag(DMXControl& control, int width, QPointF place)
    : control_(&control), width_(width), startPt_(place), startValue_(control.value()) {}

void ControlDrag::moveTo(QPointF place) {
    if (control_) {
        control_->setValue(draggedLevel(startValue_, place.x() - startPt_.x(), width_, control_->max()));
    }
}
