#include "window/ConsoleWindows.h"

#include "panels/FixtureWindows.h"
#include "panels/ScreenPlace.h"
#include "rig/Fixtures.h"
#include "window/MainWindow.h"
#include "window/OrderFront.h"
#include "window/OutputWindow.h"
#include "window/WindowMenu.h"

#include <QApplication>
#include <QMenuBar>
#include <QScreen>
#include <QWindow>

namespace {

QStringList titles(const QList<QWidget*>& windows) {
    QStringList titles;
    for (const QWidget* window : windows) {
        titles.append(window->windowTitle());
    }
    return titles;
}

} // namespace

ConsoleWindows::ConsoleWindows(MainWindow& mainWindow, FixtureWindows& fixtureWindows, const Engine& engine,
                               const Fixtures& fixtures)
    : mainWindow_(mainWindow), fixtureWindows_(fixtureWindows), engine_(engine), fixtures_(fixtures) {
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &ConsoleWindows::rememberFront);
    connect(&mainWindow, &MainWindow::fixtureChosen, this, &ConsoleWindows::bringFixtureToFront);
    addCommands();
}

void ConsoleWindows::addCommands() {
    WindowMenu& menu = mainWindow_.windowMenu();
    const QAction& next = menu.addCommand("&Next Window", {QKeySequence("F6"), QKeySequence("Ctrl+Tab")});
    connect(&next, &QAction::triggered, this, [this] { bringNeighbourToFront(+1); });
    const QAction& previous =
        menu.addCommand("&Previous Window", {QKeySequence("Shift+F6"), QKeySequence("Ctrl+Shift+Tab")});
    connect(&previous, &QAction::triggered, this, [this] { bringNeighbourToFront(-1); });
    connect(&menu.addCommand("&Bring All Windows Here", {}), &QAction::triggered, this,
            [this] { bringAllHere(); });
    connect(&menu.addCommand("&Output", {}), &QAction::triggered, this, [this] { showOutput(); });
}

QList<QWidget*> ConsoleWindows::allWindows() const {
    return QList<QWidget*>{&mainWindow_} + fixtureWindows();
}

QList<QWidget*> ConsoleWindows::fixtureWindows() const {
    const QList<FixtureWindow*> windows = fixtureWindows_.windows();
    return {windows.begin(), windows.end()};
}

void ConsoleWindows::scanWindows(const QString& mainTitle) {
    const QList<QWidget*> fixtures = fixtureWindows();
    WindowMenu& menu = mainWindow_.windowMenu();
    menu.setWindows(allWindows());
    menu.setKeyEquivalents(mainWindow_.windowTitle(), titles(fixtures));
    for (QWidget* const fixture : fixtures) {
        // So that the keys of the menus work there while a sheet keeps the main window waiting.
        fixture->addActions(mainWindow_.menuBar()->actions());
    }
    if (!mainTitle.isNull()) {
        bringToFront(mainTitle);
    }
}

void ConsoleWindows::bringToFront(const QString& title) {
    const QList<QWidget*> windows = allWindows();
    for (QWidget* const window : windows) {
        if (window->windowTitle() == title) {
            orderFront(*window, *windows.last());
        }
    }
}

void ConsoleWindows::bringMainToFront() {
    bringBack(mainWindow_);
}

void ConsoleWindows::bringFixtureToFront(int row) {
    if (const Fixture* const fixture = fixtures_.at(static_cast<std::size_t>(row))) {
        bringBack(fixtureWindows_.windowOf(*fixture));
    }
}

// To the screen of the main window, which comes last and stays where it is.
void ConsoleWindows::bringAllHere() {
    const QRect screen = mainWindow_.screen()->availableGeometry();
    for (QWidget* const fixture : fixtureWindows()) {
        fixture->move(movedInto(screen, fixture->frameGeometry()));
        bringBack(*fixture);
    }
    bringBack(mainWindow_);
}

// Made when it is first asked for; then it is only put away.
void ConsoleWindows::showOutput() {
    if (!output_) {
        output_ = new OutputWindow(mainWindow_, engine_, fixtures_); // which the main window owns
        connect(output_, &OutputWindow::controlChosen, this, [this](Fixture& fixture, DMXControl& control) {
            FixtureWindow& window = fixtureWindows_.windowOf(fixture);
            bringBack(window);
            window.view().select(control);
        });
    }
    bringBack(*output_);
}

// Round the windows in the menu's order; from anywhere else to the main window.
void ConsoleWindows::bringNeighbourToFront(int step) {
    const QList<QWidget*> windows = allWindows();
    const qsizetype here = windows.indexOf(front_.data());
    const qsizetype next = here < 0 ? 0 : (here + step + windows.size()) % windows.size();
    bringBack(*windows.at(next));
}

void ConsoleWindows::rememberFront() {
    QWidget* window = QApplication::activeWindow();
    while (window && window->parentWidget()) {
        window = window->parentWidget()->window();
    }
    if (window) {
        front_ = window;
    }
}

QString ConsoleWindows::frontTitle() const {
    return front_ ? front_->windowTitle() : QString();
}
