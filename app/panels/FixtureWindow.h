#pragma once

#include "panels/ControlView.h"

#include <QString>
#include <QWidget>

class WindowPlaces;

/// The window of one fixture: a title bar and the fixture's view, nothing else. It cannot be closed, has the
/// view's size and remembers its place under its autosave name.
class FixtureWindow : public QWidget {
    Q_OBJECT

public:
    /// A window that is not on the screen yet: for the remembered place, else for the middle of the screen.
    /// All have to outlive the window.
    FixtureWindow(Fixture& fixture, EditView& editView, WindowPlaces& places, QString autosavename);

    ControlView& view() { return view_; }
    Fixture& fixture() const { return view_.fixture(); }
    QString autosavename() const { return autosavename_; }
    /// Goes on under another autosave name.
    void rename(const QString& autosavename) { autosavename_ = autosavename; }

    /// Shows the window; the keys stay where they are.
    void orderIn();
    /// The same, before the others.
    void orderFront();
    void makeKey();

protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void showTitle();
    void takePlace(QSize contentSize);

    WindowPlaces& places_;
    QString autosavename_;
    ControlView view_;
};
