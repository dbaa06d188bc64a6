#pragma once

#include "controls/ControlWidget.h"
#include "controls/NumericEntry.h"

#include <QPointF>

#include <cstdint>

/// How the operator moves a level: types, steps, drags, turns, copies and pastes it. Which control is
/// selected is left to the class on top.
class ControlEditing : public ControlWidget {
    Q_OBJECT

public:
    /// Makes this control the one that its window's keys go to.
    virtual void makeFirstResponder() = 0;
    virtual void selectNextControl(bool backwards) = 0;

    void keyDown(const QKeyEvent& event);
    /// Applies the number being typed; true when a new level was asked for.
    bool endEdit();
    /// Shows, updates or takes away the entry field, as the number being typed wants it.
    void changedEditState();
    /// Places are in window coordinates.
    void mouseDown(QPointF place);
    void mouseDragged(QPointF place);
    void mouseUp();
    /// `delta` is in notches of a plain wheel; finer ones count tenfold, and 200 times with Command.
    void scrollWheel(double delta, bool command);

public slots:
    /// The pasteboard takes the level as a keyed archive under text/plain; other programs read nothing in it.
    void copy() const;
    /// Takes the level from the pasteboard at once; anything that is no such archive changes nothing.
    void paste();

protected:
    ControlEditing(ControlParent& view, const ControlDefinition& definition);
    ~ControlEditing() override;

    /// Takes the control out of its view; its entry and its drag end.
    void leaveView();

    /// Drops the number being typed.
    void endEntry();

    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    NumericEntry numericEntry_;
    std::uint32_t startValue = 0; ///< the level when the drag began
    QPointF startPt;
    bool tracking = false;
    bool dragging = false;
};
