#include "panels/AccessibleView.h"

#include "panels/AccessibleFader.h"
#include "panels/ControlView.h"
#include "rig/Fixture.h"

namespace {

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* const view = qobject_cast<ControlView*>(object);
    return view ? new AccessibleView(*view) : nullptr; // the toolkit owns it
}

QAccessibleInterface* faderIn(ControlView& view, DMXControl& control) {
    auto* const accessible = dynamic_cast<AccessibleView*>(QAccessible::queryAccessibleInterface(&view));
    return accessible ? accessible->fader(control) : nullptr;
}

} // namespace

void AccessibleView::install() {
    QAccessible::installFactory(makeAccessible);
}

AccessibleView::AccessibleView(ControlView& view) : QAccessibleWidget(&view) {}

AccessibleView::~AccessibleView() {
    for (const auto& [control, id] : faders_) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

// Null once the view is on its way out.
ControlView* AccessibleView::view() const {
    return qobject_cast<ControlView*>(object());
}

int AccessibleView::faderCount() const {
    return view() ? static_cast<int>(view()->fixture().controls().size()) : 0;
}

QAccessibleInterface* AccessibleView::fader(DMXControl& control) const {
    const auto found = faders_.find(&control);
    if (found != faders_.end()) {
        return QAccessible::accessibleInterface(found->second);
    }
    auto* const made =
        new AccessibleFader(*view(), control); // the toolkit owns it until it is told to delete it
    faders_.emplace(&control, QAccessible::registerAccessibleInterface(made));
    return made;
}

int AccessibleView::childCount() const {
    return faderCount() + QAccessibleWidget::childCount();
}

QAccessibleInterface* AccessibleView::child(int index) const {
    if (index < 0 || index >= faderCount()) {
        return QAccessibleWidget::child(index - faderCount());
    }
    return fader(*view()->fixture().controls()[static_cast<std::size_t>(index)]);
}

QAccessibleInterface* AccessibleView::childAt(int x, int y) const {
    if (!view()) {
        return nullptr;
    }
    DMXControl* const control = view()->fixture().controlAt(view()->mapFromGlobal(QPoint(x, y)));
    return control ? fader(*control) : nullptr;
}

QAccessibleInterface* AccessibleView::focusChild() const {
    const bool isNext =
        view() && view()->window()->focusWidget() == view(); // also while the window is not in front
    DMXControl* const listening = isNext ? view()->listener() : nullptr;
    return listening ? fader(*listening) : QAccessibleWidget::focusChild();
}

int AccessibleView::indexOfChild(const QAccessibleInterface* child) const {
    for (const auto& [control, id] : faders_) {
        if (QAccessible::accessibleInterface(id) == child) {
            return static_cast<int>(control->index());
        }
    }
    const int index = QAccessibleWidget::indexOfChild(child);
    return index < 0 ? index : faderCount() + index;
}

QAccessible::State AccessibleView::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    if (view() && view()->listener()) {
        state.focused = false; // the fader has it
    }
    return state;
}

void announceLevel(ControlView& view, DMXControl& control) {
    if (QAccessible::isActive()) {
        if (QAccessibleInterface* const fader = faderIn(view, control)) {
            QAccessibleValueChangeEvent changed(fader, control.value());
            QAccessible::updateAccessibility(&changed);
        }
    }
}

void announceFocus(ControlView& view, DMXControl& control) {
    if (QAccessible::isActive()) {
        if (QAccessibleInterface* const fader = faderIn(view, control)) {
            QAccessibleEvent focused(fader, QAccessible::Focus);
            QAccessible::updateAccessibility(&focused);
        }
    }
}
