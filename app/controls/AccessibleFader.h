#pragma once

#include <QAccessibleWidget>

#include <cstdint>

class ControlParent;
class DMXControl;

/// A control as assistive technology sees it: a slider named by its fixture and its own name, which tells its
/// slots and is set like a fader by hand, at once. What drives no slot is plain text.
class AccessibleFader : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    /// From now on every control is seen like this.
    static void install();

    explicit AccessibleFader(DMXControl& control);

    QString text(QAccessible::Text kind) const override;
    void* interface_cast(QAccessible::InterfaceType type) override;
    QStringList actionNames() const override;
    void doAction(const QString& action) override;

    QVariant currentValue() const override;
    /// Whole levels within the range; what lies outside it becomes its end.
    void setCurrentValue(const QVariant& value) override;
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override;
    QVariant minimumStepSize() const override { return 1; }

private:
    const ControlParent* view() const;
    QString name() const;
    QString description() const;
    void takeKeys();
    void step(int levels);

    DMXControl& control_;
};

/// Tells assistive technology of a new level, if it listens at all and the control has the keys: a cue moves
/// thousands of the others.
void announceLevel(QWidget& control, std::uint32_t level);
