#include "panels/FixtureWindow.h"

#include "panels/ScreenPlace.h"
#include "rig/Fixture.h"
#include "rig/WindowPlaces.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace {

// The window system takes titles in one request of bounded size.
constexpr qsizetype longestTitle = 1024;

} // namespace

FixtureWindow::FixtureWindow(Fixture& fixture, EditView& editView, WindowPlaces& places, QString autosavename)
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint), places_(places),
      autosavename_(std::move(autosavename)), view_(fixture, editView) {
    const QSize size = view_.size();
    view_.setParent(this);
    view_.setFocus();
    setFixedSize(size.expandedTo(QSize(1, 1)));
    takePlace(size);
    showTitle();
    connect(&view_, &ControlView::moved, this, &FixtureWindow::showTitle);
}

void FixtureWindow::takePlace(QSize contentSize) {
    QRect centred(QPoint(0, 0), contentSize);
    centred.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    const QPoint place = places_.place(autosavename_).value_or(centred.topLeft());
    // The middle of the screen puts the title bar of a window larger than that outside.
    move(movedOntoScreen(place, contentSize));
}

void FixtureWindow::showTitle() {
    setWindowTitle(fixture().title().left(longestTitle));
}

void FixtureWindow::orderIn() {
    setAttribute(Qt::WA_ShowWithoutActivating);
    show();
}

void FixtureWindow::orderFront() {
    orderIn();
    raise();
}

void FixtureWindow::makeKey() {
    activateWindow();
}

// A fixture's window goes with its fixture, never by itself.
void FixtureWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
}

void FixtureWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    if (isVisible()) {
        places_.setPlace(autosavename_, pos());
    }
}
