#pragma once

#include <QAccessibleWidget>

#include <unordered_map>

class ControlView;
class DMXControl;

/// A fixture's view as assistive technology sees it: its faders are its children, in profile order, and the
/// field that shows a number being typed comes after them.
class AccessibleView : public QAccessibleWidget {
public:
    /// From now on every view is seen like this.
    static void install();

    explicit AccessibleView(ControlView& view);
    ~AccessibleView() override;
    AccessibleView(const AccessibleView&) = delete;
    AccessibleView& operator=(const AccessibleView&) = delete;
    AccessibleView(AccessibleView&&) = delete;
    AccessibleView& operator=(AccessibleView&&) = delete;

    /// The fader's interface, made when it is first asked for.
    QAccessibleInterface* fader(DMXControl& control) const;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessible::State state() const override;

private:
    int faderCount() const;
    ControlView* view() const;

    mutable std::unordered_map<const DMXControl*, QAccessible::Id> faders_;
};

/// Tells assistive technology of a new level of the fader that has the keys, if it listens at all.
void announceLevel(ControlView& view, DMXControl& control);
/// Tells it that the keys go to this fader now.
void announceFocus(ControlView& view, DMXControl& control);
