#include "controls/AccessibleFader.h"

#include "controls/ControlParent.h"
#include "controls/DMXControl.h"

#include <algorithm>
#include <cmath>

namespace {

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* const control = qobject_cast<DMXControl*>(object);
    return control ? new AccessibleFader(*control) : nullptr; // the toolkit owns it
}

// The names of the profiles around a control stand only in the key that it is registered under.
QString keyOf(const DMXControl& control) {
    const auto& controls = DMXControl::controlsByName();
    const auto found =
        std::ranges::find_if(controls, [&](const auto& entry) { return entry.second.get() == &control; });
    return found == controls.end() ? QString() : found->first;
}

} // namespace

void AccessibleFader::install() {
    QAccessible::installFactory(makeAccessible);
}

AccessibleFader::AccessibleFader(DMXControl& control)
    : QAccessibleWidget(&control, control.dummy() ? QAccessible::StaticText : QAccessible::Slider),
      control_(control) {}

void* AccessibleFader::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface && !control_.dummy()) {
        return static_cast<QAccessibleValueInterface*>(this);
    }
    return QAccessibleWidget::interface_cast(type);
}

// The view that holds the control; null once it is gone.
const ControlParent* AccessibleFader::view() const {
    return dynamic_cast<const ControlParent*>(control_.parentWidget());
}

QString AccessibleFader::text(QAccessible::Text kind) const {
    switch (kind) {
    case QAccessible::Name:
        return name();
    case QAccessible::Description:
        return control_.dummy() ? QString() : description();
    case QAccessible::Value:
        return control_.dummy() ? QString() : QString::number(control_.value());
    default:
        return QAccessibleWidget::text(kind);
    }
}

// "Bar Cell 1 Red" for the key "Bar.Cell 1.Red": the points between its parts, not those in a part.
QString AccessibleFader::name() const {
    const ControlParent* const fixture = view();
    if (control_.dummy() || !fixture) {
        return control_.name();
    }
    const QString first = fixture->key() + ".";
    const QString last = "." + control_.name();
    const QString key = keyOf(control_);
    const qsizetype between = key.size() - first.size() - last.size();
    QStringList parts{fixture->key(), control_.name()};
    if (between > 0) {
        parts.insert(1, key.mid(first.size(), between).replace('.', ' '));
    }
    return parts.join(' ');
}

QString AccessibleFader::description() const {
    const ControlParent* const fixture = view();
    if (!fixture) {
        return {};
    }
    const auto universe = static_cast<int>(fixture->universe());
    const auto slot = static_cast<int>(control_.address() + 1);
    return control_.channels() == 2
               ? QString("Universe %1, slots %2 and %3").arg(universe).arg(slot).arg(slot + 1)
               : QString("Universe %1, slot %2").arg(universe).arg(slot);
}

QVariant AccessibleFader::currentValue() const {
    return control_.value();
}

QVariant AccessibleFader::maximumValue() const {
    return control_.max();
}

void AccessibleFader::setCurrentValue(const QVariant& value) {
    const double wanted = std::round(value.toDouble());
    if (std::isnan(wanted)) {
        return;
    }
    const auto level =
        static_cast<std::uint32_t>(std::clamp(wanted, 0.0, static_cast<double>(control_.max())));
    if (level == control_.value()) {
        return;
    }
    control_.setValue(level);
    control_.update();
}

QStringList AccessibleFader::actionNames() const {
    QStringList names = QAccessibleWidget::actionNames();
    if (!control_.dummy()) {
        names << QAccessibleActionInterface::increaseAction() << QAccessibleActionInterface::decreaseAction();
    }
    return names;
}

void AccessibleFader::doAction(const QString& action) {
    if (action == QAccessibleActionInterface::increaseAction()) {
        step(+1);
    } else if (action == QAccessibleActionInterface::decreaseAction()) {
        step(-1);
    } else if (action == QAccessibleActionInterface::setFocusAction()) {
        takeKeys();
    } else {
        QAccessibleWidget::doAction(action);
    }
}

// Every fixture has a window of its own: the keys come only to one that is in front.
void AccessibleFader::takeKeys() {
    if (!control_.dummy()) {
        control_.window()->raise();
        control_.window()->activateWindow();
        control_.makeFirstResponder();
    }
}

void AccessibleFader::step(int levels) {
    if (!control_.dummy()) {
        setCurrentValue(static_cast<double>(control_.value()) + levels);
    }
}

void announceLevel(QWidget& control, std::uint32_t level) {
    if (QAccessible::isActive() && control.hasFocus()) {
        QAccessibleValueChangeEvent changed(&control, level);
        QAccessible::updateAccessibility(&changed);
    }
}
