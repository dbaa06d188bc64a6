#include "controls/ControlWidget.h"

#include "controls/AccessibleFader.h"
#include "controls/ControlParent.h"

ControlWidget::ControlWidget(ControlParent& view, const ControlDefinition& definition)
    : QWidget(&view.superview()), ControlLevel(view.levels(), definition), parent(&view) {
    setUpdatesEnabled(false); // the toolkit leaves it out: the view draws it
}

void ControlWidget::leaveView() {
    parent = nullptr;
    setParent(nullptr);
}

// The view is asked first: a cue goes through all controls, and most of them stand in views that are not
// shown.
void ControlWidget::update() {
    if (parent && parent->superview().isVisible() && isVisible()) {
        parent->superview().update(geometry());
        announceLevel(*this, value());
    }
}

void ControlWidget::redrawIfFaded() {
    if (takeRedraw()) {
        update();
    }
}

bool ControlWidget::updateDMX(Slots universe) {
    const bool changed = ControlLevel::updateDMX(universe);
    redrawIfFaded();
    return changed;
}

void ControlWidget::setDMXValue(std::uint32_t value, float time) {
    if (goTo(value, time)) {
        update();
    }
}

void ControlWidget::setDefault() {
    setDMXValue(restLevel(), 0);
}

void ControlWidget::moveTo(std::uint32_t level) {
    if (level != value()) {
        setValue(level);
        update();
    }
}
