#pragma once

#include "controls/ControlLevel.h"

#include <QWidget>

#include <cstdint>

class ControlParent;

/// A level with a widget: whatever changes the level has it drawn again. The view around draws all its
/// controls in one go and is asked for that.
class ControlWidget : public QWidget, public ControlLevel {
    Q_OBJECT

public:
    /// Asks the view to draw this control again, if it can be seen.
    void update();
    /// The same, if a fade moved the level since this was last asked.
    void redrawIfFaded();

    /// Writes the level into the universe's slots and advances a running fade; true when a slot changed.
    bool updateDMX(Slots universe);
    /// Goes to `value` over `time` seconds, which becomes the control's fade time.
    void setDMXValue(std::uint32_t value, float time);
    /// Goes to the profile's default at once; the fade time becomes 0.
    void setDefault();

protected:
    ControlWidget(ControlParent& view, const ControlDefinition& definition);

    /// Null once the view is gone.
    ControlParent* view() const { return parent; }
    /// Takes the widget out of its view.
    void leaveView();
    /// Goes to the level at once, without a fade.
    void moveTo(std::uint32_t level);

private:
    ControlParent* parent;
};
