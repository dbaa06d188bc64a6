#pragma once

#include <QAccessibleInterface>
#include <QPointer>

class ControlView;
class DMXControl;

/// A fader in a view as assistive technology sees it: a slider named by its fixture and its own name, which
/// tells its slots and is set like a fader by hand, at once. What drives no slot is plain text. There is no
/// widget behind it.
class AccessibleFader : public QAccessibleInterface,
                        public QAccessibleActionInterface,
                        public QAccessibleValueInterface {
public:
    /// A fader of that view's fixture.
    AccessibleFader(ControlView& view, DMXControl& control);

    bool isValid() const override { return !view_.isNull(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& action) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

    QVariant currentValue() const override;
    /// Whole levels within the range; what lies outside it becomes its end.
    void setCurrentValue(const QVariant& value) override;
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override;
    QVariant minimumStepSize() const override { return 1; }

private:
    QString name() const;
    QString description() const;

    QPointer<ControlView> view_;
    DMXControl& control_; ///< stands as long as the view
};
