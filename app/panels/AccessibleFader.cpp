#include "panels/AccessibleFader.h"

#include "panels/ControlView.h"
#include "rig/Fixture.h"

#include <algorithm>
#include <cmath>

AccessibleFader::AccessibleFader(ControlView& view, DMXControl& control) : view_(&view), control_(control) {}

QWindow* AccessibleFader::window() const {
    return view_ ? view_->window()->windowHandle() : nullptr;
}

QAccessibleInterface* AccessibleFader::parent() const {
    return view_ ? QAccessible::queryAccessibleInterface(view_.data()) : nullptr;
}

QRect AccessibleFader::rect() const {
    if (!view_) {
        return {};
    }
    const QRect frame = view_->fixture().frameOf(control_);
    return {view_->mapToGlobal(frame.topLeft()), frame.size()};
}

QAccessible::Role AccessibleFader::role() const {
    return view_ && !control_.dummy() ? QAccessible::Slider : QAccessible::StaticText;
}

QAccessible::State AccessibleFader::state() const {
    QAccessible::State state;
    if (!view_) {
        state.invalid = true;
        return state;
    }
    state.invisible = control_.hide() || !view_->isVisible();
    state.disabled = !view_->isEnabled();
    state.focusable = !control_.dummy();
    state.focused = view_->hasFocus() && view_->listener() == &control_;
    return state;
}

void* AccessibleFader::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ActionInterface) {
        return static_cast<QAccessibleActionInterface*>(this);
    }
    if (type == QAccessible::ValueInterface && role() == QAccessible::Slider) {
        return static_cast<QAccessibleValueInterface*>(this);
    }
    return nullptr;
}

QString AccessibleFader::text(QAccessible::Text kind) const {
    if (!view_) {
        return {};
    }
    switch (kind) {
    case QAccessible::Name:
        return name();
    case QAccessible::Description:
        return control_.dummy() ? QString() : description();
    case QAccessible::Value:
        return control_.dummy() ? QString() : QString::number(control_.value());
    default:
        return {};
    }
}

// "Bar Cell 1 Red" for the key "Bar.Cell 1.Red": the points between its parts, not those in a part.
QString AccessibleFader::name() const {
    if (control_.dummy()) {
        return control_.name();
    }
    const QString fixture = control_.fixture().name();
    QStringList parts{fixture, control_.name()};
    const qsizetype between = control_.key().size() - fixture.size() - control_.name().size() - 2;
    if (between > 0) {
        parts.insert(1, control_.key().mid(fixture.size() + 1, between).replace('.', ' '));
    }
    return parts.join(' ');
}

QString AccessibleFader::description() const {
    const auto universe = static_cast<int>(control_.fixture().universe());
    const auto slot = static_cast<int>(control_.address() + 1);
    return control_.channels() == 2
               ? QString("Universe %1, slots %2 and %3").arg(universe).arg(slot).arg(slot + 1)
               : QString("Universe %1, slot %2").arg(universe).arg(slot);
}

QVariant AccessibleFader::currentValue() const {
    return view_ ? control_.value() : QVariant();
}

QVariant AccessibleFader::maximumValue() const {
    return view_ ? control_.max() : QVariant();
}

void AccessibleFader::setCurrentValue(const QVariant& value) {
    const double wanted = std::round(value.toDouble());
    if (view_ && !std::isnan(wanted)) {
        control_.setValue(
            static_cast<std::uint32_t>(std::clamp(wanted, 0.0, static_cast<double>(control_.max()))));
    }
}

QStringList AccessibleFader::actionNames() const {
    if (role() != QAccessible::Slider) {
        return {};
    }
    return {setFocusAction(), increaseAction(), decreaseAction()};
}

void AccessibleFader::doAction(const QString& action) {
    if (role() != QAccessible::Slider) {
        return;
    }
    if (action == increaseAction()) {
        setCurrentValue(control_.value() + 1.0);
    } else if (action == decreaseAction()) {
        setCurrentValue(control_.value() - 1.0);
    } else if (action == setFocusAction()) {
        view_->giveKeys(control_);
    }
}
