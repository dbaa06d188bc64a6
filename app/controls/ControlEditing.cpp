#include "controls/ControlEditing.h"

#include "controls/ControlKeys.h"
#include "controls/ControlPasteboard.h"
#include "controls/EditView.h"
#include "controls/LevelMovement.h"

#include <QMouseEvent>
#include <QWheelEvent>

#include <optional>

ControlEditing::ControlEditing(ControlParent& view, const ControlDefinition& definition)
    : ControlWidget(view, definition) {}

ControlEditing::~ControlEditing() {
    EditView::hide(this);
}

void ControlEditing::leaveView() {
    endEntry();
    mouseUp();
    ControlWidget::leaveView();
}

// --- Keys ----------------------------------------------------------------------------------------------

void ControlEditing::keyPressEvent(QKeyEvent* event) {
    if (meaningOf(*event).action == KeyAction::None) {
        event->ignore();
    } else {
        keyDown(*event);
    }
}

void ControlEditing::keyDown(const QKeyEvent& event) {
    const KeyMeaning meaning = meaningOf(event);
    switch (meaning.action) {
    case KeyAction::None:
        break;
    case KeyAction::FadeToDefault:
        setDMXValue(restLevel(), time());
        update();
        endEntry();
        break;
    case KeyAction::ClearTime:
        setTime(0);
        update();
        endEntry();
        break;
    case KeyAction::SelectNext:
        selectNextControl(false);
        break;
    case KeyAction::SelectPrevious:
        selectNextControl(true);
        break;
    case KeyAction::RemoveLast:
        numericEntry_.removeLast();
        changedEditState();
        break;
    case KeyAction::CancelEntry:
        endEntry();
        break;
    case KeyAction::StepUp:
        moveTo(steppedLevel(value(), +1, max()));
        break;
    case KeyAction::StepDown:
        moveTo(steppedLevel(value(), -1, max()));
        break;
    case KeyAction::Type:
        numericEntry_.append(meaning.character);
        changedEditState();
        break;
    case KeyAction::ApplyEntryAsTime:
        numericEntry_.setTimeMode();
        [[fallthrough]];
    case KeyAction::ApplyEntry:
        endEdit();
        endEntry();
        break;
    }
}

bool ControlEditing::endEdit() {
    const NumericEntry::Outcome outcome = numericEntry_.finish(max());
    if (outcome.time) {
        setTime(*outcome.time);
        update();
    }
    if (!outcome.value || *outcome.value == value()) {
        return false;
    }
    setDMXValue(*outcome.value, time());
    return true;
}

void ControlEditing::endEntry() {
    numericEntry_.clear();
    changedEditState();
}

void ControlEditing::changedEditState() {
    constexpr int fromRight = 50;
    constexpr int above = 13;
    constexpr QSize size(45, 18);
    if (dummy()) {
        return;
    }
    if (numericEntry_.empty()) {
        EditView::hide(this);
    } else {
        EditView::show(this, parentWidget(), QRect(QPoint(x() + width() - fromRight, y() - above), size),
                       QString::fromLatin1(numericEntry_.text().data(),
                                           static_cast<qsizetype>(numericEntry_.text().size())));
    }
}

// --- Mouse and wheel -----------------------------------------------------------------------------------

void ControlEditing::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        mouseDown(event->scenePosition());
    }
}

void ControlEditing::mouseMoveEvent(QMouseEvent* event) {
    mouseDragged(event->scenePosition());
}

void ControlEditing::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        mouseUp();
    }
}

void ControlEditing::mouseDown(QPointF place) {
    tracking = true;
    dragging = false;
    startPt = place;
    startValue = value();
}

void ControlEditing::mouseDragged(QPointF place) {
    if (!tracking || dummy()) {
        return;
    }
    setValue(draggedLevel(startValue, place.x() - startPt.x(), width(), max()));
    dragging = true;
    update();
}

void ControlEditing::mouseUp() {
    tracking = false;
}

void ControlEditing::wheelEvent(QWheelEvent* event) {
    constexpr double unitsPerNotch = 120.0;
    if (dummy()) {
        event->ignore();
    } else {
        scrollWheel(event->angleDelta().y() / unitsPerNotch, event->modifiers() & Qt::ControlModifier);
    }
}

void ControlEditing::scrollWheel(double delta, bool command) {
    makeFirstResponder();
    moveTo(steppedLevel(value(), wheelStep(delta, command), max()));
}

// --- Pasteboard ----------------------------------------------------------------------------------------

void ControlEditing::copy() const {
    copyLevel(static_cast<int>(value()));
}

void ControlEditing::paste() {
    const std::optional<int> level = pastedLevel();
    if (!level) {
        return;
    }
    endEntry();
    moveTo(static_cast<std::uint32_t>(*level));
}
