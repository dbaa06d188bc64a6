#pragma once

#include "panels/ControlEditing.h"
#include "rig/FixtureObserver.h"

#include <QRegion>
#include <QWidget>

class DMXControl;
class EditView;
class Fixture;
struct ControlLook;

/// Shows the faders of one fixture in their columns, draws them in one go and brings keys, mouse and wheel to
/// them. Several views may show the same fixture.
class ControlView : public QWidget, public FixtureObserver {
    Q_OBJECT

public:
    /// Both have to outlive the view.
    ControlView(Fixture& fixture, EditView& editView);
    ~ControlView() override;

    Fixture& fixture() const { return fixture_; }

    /// The fader that the keys go to; null while none is selected.
    DMXControl* listener() const;
    /// Selects a fader, works also while the window is not in front.
    void select(DMXControl& control);
    /// Brings the window to the front and selects a fader of it.
    void giveKeys(DMXControl& control);
    /// What there is to draw of a fader.
    ControlLook look(const DMXControl& control) const;

    void keyDown(const QKeyEvent& event);
    /// `delta` is in notches of a plain wheel; finer ones count tenfold, and 200 times with Command.
    void scrollWheel(DMXControl& control, double delta, bool command);

    // FixtureObserver
    bool seesLevels() const override;
    void levelsMissed() override { hasMissedLevels_ = true; }
    void controlChanged(DMXControl& control) override;
    void entryChanged(DMXControl& control) override;
    void fixtureMoved() override { emit moved(); }

public slots:
    /// The pasteboard takes the level of the selected fader as a keyed archive under text/plain; other
    /// programs read nothing in it.
    void copy() const;
    /// The selected fader takes the level from the pasteboard at once; anything that is no such archive
    /// changes nothing.
    void paste() const;

signals:
    /// The fixture has another universe or address.
    void moved();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    DMXControl* ownSelection() const;
    void announceListenerSoon();
    void announceListener();
    void selectNextControl(DMXControl& control, bool backwards);
    bool selectFirst(const QKeyEvent& event);
    void showToolTip(QPoint place, QPoint globalPlace);
    void drawControl(QPainter& painter, const DMXControl& control) const;

    Fixture& fixture_;
    EditView& editView_;
    QRegion covered_; ///< by faders
    ControlDrag drag_;
    const DMXControl* announcedListener_ = nullptr; ///< to assistive technology, as having the focus
    bool hasMissedLevels_ = false;
};
