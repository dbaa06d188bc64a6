#include "controls/DMXControl.h"

#include "controls/Colours.h"
#include "controls/ControlDefinition.h"
#include "controls/ControlDrawing.h"
#include "controls/ControlParent.h"
#include "plist/Reading.h"
#include "print/Print.h"

#include <QFocusEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr QSize initialSize(100, 10);

// Side by side, each kind by itself: a cue goes through all of them.
std::pmr::unsynchronized_pool_resource gPool;
DMXControl::Registry gDmxControlList(&gPool);

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
    const std::pmr::polymorphic_allocator<DMXControl> pool(&gPool);
    auto control = std::allocate_shared<DMXControl>(pool, entry, parent);
    if (control->dummy()) {
        return control;
    }
    control->key_ = parent.key() + "." + control->name();
    if (gDmxControlList.contains(control->key_)) {
        printLine(QString("DMXControl '%1' already exists!").arg(control->key_).toStdString());
    }
    registerControl(control);
    return control;
}

void DMXControl::registerControl(const std::shared_ptr<DMXControl>& control) {
    if (!control->key_.isNull()) {
        gDmxControlList[control->key_] = control;
    }
}

bool DMXControl::unregisterControl(const DMXControl& control) {
    const auto found = gDmxControlList.find(control.key_);
    if (found == gDmxControlList.end() || found->second.get() != &control) {
        return false;
    }
    gDmxControlList.erase(found);
    return true;
}

const DMXControl::Registry& DMXControl::controlsByName() {
    return gDmxControlList;
}

void DMXControl::setControl(const QString& key, const QVariant& toValue, const QVariant& time) {
    const auto found = gDmxControlList.find(key);
    if (found != gDmxControlList.end()) {
        found->second->setDMXValue(unsignedValue(toValue), floatValue(time));
    }
}

void DMXControl::reset() {
    gDmxControlList.clear();
}

DMXControl::DMXControl(const QVariantMap& entry, ControlParent& view)
    : DMXControl(definitionFor(entry, view), view) {}

DMXControl::DMXControl(const ControlDefinition& definition, ControlParent& view)
    : ControlEditing(view, definition), _name(view.resolvedName(definition.name)), _hide(definition.hide),
      _header(definition.header) {
    resize(initialSize);
    setFocusPolicy(definition.dummy ? Qt::NoFocus : Qt::ClickFocus);
}

void DMXControl::removeFromSuperview() {
    leaveView();
    firstResponder = false;
}

QString DMXControl::toolTip() const {
    if (!view()) {
        return {};
    }
    return QString("Univ: %1, Addr: %2")
        .arg(static_cast<int>(view()->universe()))
        .arg(static_cast<int>(address() + 1));
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

// --- Selection -----------------------------------------------------------------------------------------

void DMXControl::makeFirstResponder() {
    if (!view()) {
        return;
    }
    setFocus(Qt::OtherFocusReason);
    // A window that is not in front sends no focus events; the selection is made all the same.
    if (!firstResponder) {
        becomeFirstResponder();
    }
}

void DMXControl::becomeFirstResponder() {
    DMXControl* const previous = view()->selectedControl();
    view()->setSelectedControl(this);
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
    const auto& controls = view()->controls();
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

bool DMXControl::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::ToolTip:
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), toolTip(), this);
        return true;
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        if (firstResponder) {
            update();
        }
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void drawControls(QPainter& painter, const QRegion& region,
                  const std::vector<std::shared_ptr<DMXControl>>& controls) {
    for (const auto& control : controls) {
        if (!control->isHidden() && region.intersects(control->geometry())) {
            painter.fillRect(control->geometry(), gBackgroundColour);
            drawControl(painter, control->geometry(), control->look());
        }
    }
}
