#include "controls/DMXControl.h"

#include "clock/MonotonicClock.h"
#include "controls/ControlDefinition.h"
#include "controls/ControlKeys.h"
#include "controls/ControlParent.h"
#include "controls/ControlPasteboard.h"
#include "controls/EditView.h"
#include "controls/LevelMovement.h"
#include "plist/Reading.h"

#include <QFocusEvent>
#include <QPainter>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

constexpr QSize initialSize(100, 10);

DMXControl::Registry gDmxControlList;

ControlDefinition definitionFor(const QVariantMap& entry, ControlParent& parent) {
    ControlDefinition definition = ControlDefinition::fromEntry(entry);
    if (definition.newlayer) {
        parent.setLayerNum(parent.layerNum() + 1);
    }
    return definition;
}

// Another window, a popup or a menu borrows the keys; the selection stays where it is.
bool onlyBorrowsFocus(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

} // namespace

std::shared_ptr<DMXControl> DMXControl::controlWithDictionary(const QVariantMap& entry,
                                                              ControlParent& parent) {
    auto control = std::make_shared<DMXControl>(entry, parent);
    if (control->dummy()) {
        return control;
    }
    const QString key = parent.key() + "." + control->name();
    if (gDmxControlList.contains(key)) {
        std::printf("DMXControl '%s' already exists!\n", qUtf8Printable(key));
    }
    gDmxControlList[key] = control;
    return control;
}

const DMXControl::Registry& DMXControl::controlsByName() {
    return gDmxControlList;
}

void DMXControl::setControl(const QString& key, const QVariant& toValue, const QVariant& time) {
    const auto found = gDmxControlList.find(key);
    if (found != gDmxControlList.end()) {
        found->second->setDMXValue(static_cast<std::uint32_t>(integerValue(toValue)), floatValue(time));
    }
}

void DMXControl::reset() {
    gDmxControlList.clear();
}

DMXControl::DMXControl(const QVariantMap& entry, ControlParent& view)
    : DMXControl(definitionFor(entry, view), view) {}

DMXControl::DMXControl(const ControlDefinition& definition, ControlParent& view)
    : levels(view.levels()), levelIndex(levels->size()), parent(&view),
      _name(view.resolvedName(definition.name)), defaultValue(definition.defaultValue),
      _hide(definition.hide), _header(definition.header) {
    LevelState& level = levels->emplace_back();
    level.value = definition.defaultValue;
    level.max = definition.max;
    level.channels = definition.channels;
    level.dummy = definition.dummy;
    resize(initialSize);
    setFocusPolicy(definition.dummy ? Qt::NoFocus : Qt::ClickFocus);
}

DMXControl::~DMXControl() {
    EditView::hide(this);
}

void DMXControl::removeFromSuperview() {
    endEntry();
    firstResponder = false;
    tracking = false;
    parent = nullptr;
    setParent(nullptr);
}

bool DMXControl::updateDMX(Slots universe) {
    const bool changed = state().updateDMX(universe, monotonicNanoseconds());
    redrawIfFaded();
    return changed;
}

void DMXControl::redrawIfFaded() {
    if (std::exchange(state().needsRedraw, false)) {
        update();
    }
}

void DMXControl::setDMXValue(std::uint32_t value, float time) {
    if (state().goTo(value, time, monotonicNanoseconds())) {
        update();
    }
}

void DMXControl::setDefault() {
    setDMXValue(defaultValue, 0);
}

void DMXControl::setAddress(std::uint32_t address) {
    state().address = address;
    setToolTip(QString("Univ: %1, Addr: %2")
                   .arg(static_cast<int>(parent->universe()))
                   .arg(static_cast<int>(address + 1)));
}

// --- Selection -----------------------------------------------------------------------------------------

void DMXControl::makeFirstResponder() {
    if (!parent) {
        return;
    }
    setFocus(Qt::OtherFocusReason);
    // A window that is not in front sends no focus events; the selection is made all the same.
    if (!firstResponder) {
        becomeFirstResponder();
    }
}

void DMXControl::becomeFirstResponder() {
    DMXControl* const previous = parent->selectedControl();
    parent->setSelectedControl(this);
    if (previous && previous != this && previous->firstResponder) {
        previous->resignFirstResponder();
    }
    if (previous && previous != this) {
        previous->update();
    }
    endEntry();
    firstResponder = true;
    update();
}

void DMXControl::resignFirstResponder() {
    endEntry();
    firstResponder = false;
    update();
}

void DMXControl::selectNextControl(bool backwards) {
    if (endEdit()) {
        update();
    }
    endEntry();
    const auto& controls = parent->controls();
    const auto count = controls.size();
    const auto isThis = [this](const auto& control) { return control.get() == this; };
    const auto here = static_cast<std::size_t>(std::ranges::find_if(controls, isThis) - controls.begin());
    // Comes back to this control at the latest, which is no dummy.
    for (std::size_t distance = 1; distance <= count; ++distance) {
        DMXControl& candidate = *controls[(here + (backwards ? count - distance : distance)) % count];
        if (!candidate.dummy()) {
            return candidate.makeFirstResponder();
        }
    }
}

void DMXControl::focusInEvent(QFocusEvent*) {
    if (firstResponder) {
        changedEditState(); // the shared field may have been shown elsewhere in the meantime
    } else {
        becomeFirstResponder();
    }
}

void DMXControl::focusOutEvent(QFocusEvent* event) {
    if (firstResponder && !onlyBorrowsFocus(event->reason())) {
        resignFirstResponder();
    }
}

// Tab is a key like the others here.
bool DMXControl::focusNextPrevChild(bool) {
    return false;
}

// --- Keys ----------------------------------------------------------------------------------------------

void DMXControl::keyPressEvent(QKeyEvent* event) {
    if (meaningOf(*event).action == KeyAction::None) {
        event->ignore();
    } else {
        keyDown(*event);
    }
}

void DMXControl::keyDown(const QKeyEvent& event) {
    const KeyMeaning meaning = meaningOf(event);
    switch (meaning.action) {
    case KeyAction::None:
        break;
    case KeyAction::FadeToDefault:
        setDMXValue(defaultValue, time());
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
        numericEntry.removeLast();
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
        numericEntry.append(meaning.character);
        changedEditState();
        break;
    case KeyAction::ApplyEntryAsTime:
        numericEntry.setTimeMode();
        [[fallthrough]];
    case KeyAction::ApplyEntry:
        endEdit();
        endEntry();
        break;
    }
}

bool DMXControl::endEdit() {
    const NumericEntry::Outcome outcome = numericEntry.finish(max());
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

void DMXControl::endEntry() {
    numericEntry.clear();
    changedEditState();
}

void DMXControl::changedEditState() {
    constexpr int fromRight = 50;
    constexpr int above = 13;
    constexpr QSize size(45, 18);
    if (dummy()) {
        return;
    }
    if (numericEntry.empty()) {
        EditView::hide(this);
    } else {
        EditView::show(this, parentWidget(), QRect(QPoint(x() + width() - fromRight, y() - above), size),
                       QString::fromLatin1(numericEntry.text().data(),
                                           static_cast<qsizetype>(numericEntry.text().size())));
    }
}

// At once, without a fade.
void DMXControl::moveTo(std::uint32_t level) {
    if (level != value()) {
        setValue(level);
        update();
    }
}

// --- Mouse and wheel -----------------------------------------------------------------------------------

void DMXControl::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        mouseDown(event->scenePosition());
    }
}

void DMXControl::mouseMoveEvent(QMouseEvent* event) {
    mouseDragged(event->scenePosition());
}

void DMXControl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        mouseUp();
    }
}

void DMXControl::mouseDown(QPointF place) {
    tracking = true;
    dragging = false;
    startPt = place;
    startValue = value();
}

void DMXControl::mouseDragged(QPointF place) {
    if (!tracking || dummy()) {
        return;
    }
    setValue(draggedLevel(startValue, place.x() - startPt.x(), width(), max()));
    dragging = true;
    update();
}

void DMXControl::mouseUp() {
    tracking = false;
}

void DMXControl::wheelEvent(QWheelEvent* event) {
    constexpr double unitsPerNotch = 120.0;
    if (dummy()) {
        event->ignore();
    } else {
        scrollWheel(event->angleDelta().y() / unitsPerNotch, event->modifiers() & Qt::ControlModifier);
    }
}

void DMXControl::scrollWheel(double delta, bool command) {
    makeFirstResponder();
    moveTo(steppedLevel(value(), wheelStep(delta, command), max()));
}

// --- Pasteboard ----------------------------------------------------------------------------------------

void DMXControl::copy() const {
    copyLevel(static_cast<int>(value()));
}

void DMXControl::paste() {
    const std::optional<int> level = pastedLevel();
    if (!level) {
        return;
    }
    endEntry();
    moveTo(static_cast<std::uint32_t>(*level));
}

// --- Drawing -------------------------------------------------------------------------------------------

void DMXControl::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawControl(painter, size(), look());
}

ControlLook DMXControl::look() const {
    return {.name = _name,
            .value = value(),
            .max = max(),
            .channels = channels(),
            .timed = time() != 0,
            .dummy = dummy(),
            .outlined = firstResponder && isActiveWindow()};
}

bool DMXControl::event(QEvent* event) {
    const bool windowCameOrWent =
        event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate;
    if (windowCameOrWent && firstResponder) {
        update();
    }
    return QWidget::event(event);
}
