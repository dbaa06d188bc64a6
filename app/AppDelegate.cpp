#include "AppDelegate.h"

#include "console/Console.h"
#include "panels/AccessibleView.h"
#include "process/ProcessActivity.h"
#include "process/ProcessSignals.h"
#include "window/AddressField.h"
#include "window/Sheets.h"

#include <QApplication>
#include <QEvent>

#include <utility>

namespace {

// QApplication::quit() would ask every window to close first, and fixture windows refuse.
void quit() {
    QCoreApplication::exit();
}

} // namespace

AppDelegate::AppDelegate(Console& console, ProcessSignals& processSignals)
    : console_(console), fixtureTable_(console.patching()), _window(console.places()),
      fixtureWindows_(console.fixtures(), console.places()),
      windows_(_window, fixtureWindows_, console.engine(), console.fixtures()),
      fixtureCommands_(_window, console.rig().profiles(), console.rig().settings(), console.patching()),
      cueCommands_(console.cues(), console.stepper(), _window.cueMenu()),
      menuWatch_([&engine = console.engine()](bool isOpen) { engine.setPaused(isOpen); }) {
    AccessibleView::install();
    connectWindow();
    connectConsole();
    connect(&processSignals, &ProcessSignals::quitRequested, this, quit);
    connect(&processSignals, &ProcessSignals::frontRequested, &windows_, &ConsoleWindows::bringMainToFront);
    connect(qApp, &QGuiApplication::commitDataRequest, this, &AppDelegate::sessionEnds);
    qApp->installEventFilter(this);
}

// An open cell goes first and unread: the window would hand its text to what is no longer there.
AppDelegate::~AppDelegate() {
    fixtureTable_.detach();
    fixtureWindows_.disconnect(this);
}

void AppDelegate::connectWindow() {
    ShowKeeper* const showKeeper = &console_.showKeeper();
    connect(&_window, &MainWindow::quitChosen, this, quit);
    connect(&_window, &MainWindow::configurationChosen, this, &AppDelegate::askForConfiguration);
    connect(&_window.addressField(), &AddressField::txChange, this, &AppDelegate::setIPAddress);
    connect(&_window.cueMenu(), &CueMenu::newCueChosen, this, &AppDelegate::askForNewCue);
    connect(&_window, &MainWindow::savedRigChosen, this, [this] {
        console_.goBackToSavedRig();
        cueCommands_.setupCueMenu();
    });
    connect(&_window.cueMenu(), &QMenu::triggered, showKeeper, &ShowKeeper::showChanged);
    connect(&fixtureTable_, &FixtureTable::edited, showKeeper, &ShowKeeper::showChanged);
    // For as long as the windows: the table's own end may yet take in a number that was being typed.
    connect(&fixtureTable_, &FixtureTable::edited, &windows_, [this] { windows_.scanWindows(); });
}

void AppDelegate::connectConsole() {
    connect(&fixtureWindows_, &FixtureWindows::changed, this, &AppDelegate::takeUpWindows);
    connect(&console_, &Console::aboutToReload, this, [this] {
        _window.checkConfiguration(console_.rig().configName());
        fixtureTable_.detach();
    });
    connect(&console_, &Console::fixturesReplaced, this, [this] { mainTitle_ = console_.mainWindowTitle(); });
    connect(&console_, &Console::reloaded, this, [this] { fixtureTable_.attach(); });
}

void AppDelegate::applicationDidFinishLaunching() {
    for (const QString& name : console_.rig().configurationNames()) {
        _window.addConfiguration(name);
    }
    _window.checkConfiguration(console_.rig().configName());
    _window.open();
    mainTitle_ = console_.mainWindowTitle();
    fixtureWindows_.open();
    _window.addressField().setText(console_.destination().text());
    fixtureTable_.attach();
    _window.showFixtures(fixtureTable_);
    _window.showHistory(console_.patching().history());
    _window.showOutput(console_.engine(), console_.destination());
    console_.follow();
    beginActivity();
    cueCommands_.setupCueMenu();
    _window.cueMenu().showCurrCue(console_.stepper().currCue());
    console_.restoreControlSelections();
    if (console_.isRecovered()) {
        _window.showRecoveryNotice();
    }
}

// Brings the menus in line with the windows that are there, and once all are, the one that was in front to
// the front.
void AppDelegate::takeUpWindows() {
    if (!fixtureWindows_.areAllShown()) {
        windows_.scanWindows();
        return;
    }
    const QString title = std::exchange(mainTitle_, {});
    windows_.scanWindows(fixtureWindows_.wereTakenOver() ? QString() : title);
}

void AppDelegate::setIPAddress(const QString& dotted) {
    console_.setIPAddress(dotted);
    _window.addressField().setText(console_.destination().text());
}

void AppDelegate::askForNewCue() {
    openTextSheet(_window,
                  {.message = "Enter new cue number", .informativeText = {}, .fieldLabel = "Cue number"},
                  [this](const QString& number) {
                      if (console_.createCue(number)) {
                          cueCommands_.setupCueMenu();
                      }
                  });
}

void AppDelegate::askForConfiguration(const QString& name) {
    openNumberSheet(
        _window, {.message = "Load Configuration", .informativeText = name, .fieldLabel = "Universe offset"},
        [this, name](int universeOffset) { console_.loadConfiguration(name, universeOffset); });
}

// A desktop that asks the program to quit gets what the Quit command does, see quit().
bool AppDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Quit) {
        return QObject::eventFilter(watched, event);
    }
    quit();
    return true;
}

// What comes after is not waited for: the session may end us before the event loop has.
void AppDelegate::sessionEnds() {
    applicationWillTerminate();
    quit();
}

void AppDelegate::applicationWillTerminate() {
    console_.terminate(mainTitle_.isNull() ? windows_.frontTitle() : mainTitle_);
}
