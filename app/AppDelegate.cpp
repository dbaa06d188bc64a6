#include "AppDelegate.h"

#include "artnet/DMX_Universe.h"
#include "artnet/Transport.h"
#include "commands/Resources.h"
#include "controls/AccessibleFader.h"
#include "controls/DMXControl.h"
#include "controls/EditView.h"
#include "fixtures/ControlView.h"
#include "fixtures/UndrivenSlots.h"
#include "plist/Reading.h"
#include "process/ProcessActivity.h"
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

// Belongs to the settings file as it is now.
RecoveryFile presentRecoveryFile() {
    return {RecoveryFile::defaultPath(), SettingsFile::defaultPath()};
}

} // namespace

AppDelegate::AppDelegate(const QString& resources)
    : defaults_(UserDefaults::defaultPath()), recoveryFile_(presentRecoveryFile()),
      rig_(resourceFolder(resources), defaults_), places_(defaults_), savedState_(defaults_),
      destination_(defaults_), patching_(rig_.settings(), rig_.profiles(), places_), fixtureTable_(patching_),
      _window(places_), windows_(_window),
      fixtureCommands_(_window, rig_.profiles(), rig_.settings(), patching_),
      cueCommands_(rig_.settings(), _window.cueMenu()),
      showKeeper_(recoveryFile_, [this] { return presentShow(); }) {
    AccessibleFader::install();
    connectWindow();
    connect(&processSignals_, &ProcessSignals::quitRequested, this, quit);
    connect(&processSignals_, &ProcessSignals::frontRequested, &windows_, &ConsoleWindows::bringMainToFront);
    connect(qApp, &QGuiApplication::commitDataRequest, this, &AppDelegate::sessionEnds);
    qApp->installEventFilter(this);
}

// Widgets and universes go while the application object still stands. An open cell goes first and unread: the
// window would hand its text to what is no longer there.
AppDelegate::~AppDelegate() {
    fixtureTable_.detach();
    ControlView::reset();
    DMXControl::reset();
    EditView::release();
    DMX_Universe::releaseUniverses();
}

void AppDelegate::connectWindow() {
    connect(&_window, &MainWindow::quitChosen, this, quit);
    connect(&_window, &MainWindow::configurationChosen, this, &AppDelegate::askForConfiguration);
    connect(&_window.addressField(), &AddressField::txChange, this, &AppDelegate::setIPAddress);
    connect(&_window.cueMenu(), &CueMenu::newCueChosen, this, &AppDelegate::askForNewCue);
    connect(&_window, &MainWindow::savedRigChosen, this, &AppDelegate::goBackToSavedRig);
    connect(&_window.cueMenu(), &QMenu::triggered, &showKeeper_, &ShowKeeper::showChanged);
    connect(&fixtureTable_, &FixtureTable::edited, &showKeeper_, &ShowKeeper::showChanged);
    connect(&fixtureTable_, &FixtureTable::edited, this, clearUndrivenSlots);
    // For as long as the windows: the table's own end may yet take in a number that was being typed.
    connect(&fixtureTable_, &FixtureTable::edited, &windows_, [this] { windows_.scanWindows(); });
}

void AppDelegate::applicationDidFinishLaunching() {
    const std::optional<ShowSnapshot> recovered = recoveryFile_.takeUp();
    rig_.load(recovered);
    cueCommands_.compactCues();
    for (const QString& name : rig_.configurationNames()) {
        _window.addConfiguration(name);
    }
    _window.checkConfiguration(rig_.configName());
    skt = createSocket(0);
    _window.open();
    createControlViews();
    windows_.scanWindows(stringValue(defaults_.objectForKey(mainWindowTitleKey)));
    if (recovered) {
        restoreLevels(recovered->levels);
    } else {
        savedState_.restoreState(rig_.stateKey());
    }
    setIPAddress(destination_.text());
    fixtureTable_.attach();
    _window.showFixtures(fixtureTable_);
    _window.showHistory(patching_.history());
    _window.showOutput(destination_);
    ticker_.start([this] { timerProc(); });
    beginActivity();
    cueCommands_.setupCueMenu();
    savedState_.restoreControlSelections();
    if (recovered) {
        cueCommands_.setCurrCue(recovered->currCue);
        _window.showRecoveryNotice();
    }
    showKeeper_.start();
}

void AppDelegate::createControlViews() {
    ControlView::controlViewsWithSettings(rig_.settings().views(), rig_.profiles(), places_);
}

void AppDelegate::timerProc() {
    if (const auto* views = ControlView::controlViews()) {
        for (const auto& view : *views) {
            if (view->update()) {
                showKeeper_.showChanged();
            }
        }
    }
    if (const auto* universes = DMX_Universe::universes()) {
        for (const auto& [key, universe] : *universes) {
            universe->sendWithSocket(skt, destination_.tx_address());
        }
    }
}

void AppDelegate::setIPAddress(const QString& dotted) {
    destination_.setIPAddress(dotted);
    _window.addressField().setText(destination_.text());
}

void AppDelegate::askForNewCue() {
    openTextSheet(_window,
                  {.message = "Enter new cue number", .informativeText = {}, .fieldLabel = "Cue number"},
                  [this](const QString& number) {
                      cueCommands_.createCue(number);
                      showKeeper_.showChanged();
                  });
}

void AppDelegate::askForConfiguration(const QString& name) {
    openNumberSheet(
        _window, {.message = "Load Configuration", .informativeText = name, .fieldLabel = "Universe offset"},
        [this, name](int universeOffset) { loadConfiguration(name, universeOffset); });
}

void AppDelegate::loadConfiguration(const QString& name, int universeOffset) {
    if (rig_.loadConfiguration(name, universeOffset)) {
        reloadSettings();
    }
}

void AppDelegate::reloadSettings() {
    cueCommands_.compactCues();
    _window.checkConfiguration(rig_.configName());
    fixtureTable_.detach();
    patching_.forget();
    ControlView::reset();
    DMXControl::reset();
    createControlViews();
    clearUndrivenSlots();
    windows_.scanWindows(stringValue(defaults_.objectForKey(mainWindowTitleKey)));
    savedState_.restoreState(rig_.stateKey());
    fixtureTable_.attach();
    showKeeper_.showChanged();
}

ShowSnapshot AppDelegate::presentShow() const {
    return {.settings = rig_.settings().dictionary(),
            .configName = rig_.configName(),
            .currCue = cueCommands_.currCue(),
            .levels = presentLevels()};
}

void AppDelegate::goBackToSavedRig() {
    recoveryFile_.moveAside();
    rig_.load({});
    reloadSettings();
    cueCommands_.setCurrCue({});
    cueCommands_.setupCueMenu();
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
    if (std::exchange(terminated_, true)) {
        return;
    }
    showKeeper_.stop();
    savedState_.saveState(rig_.stateKey());
    // Before the settings: the recovery file is no longer taken up once they are others.
    defaults_.synchronize();
    const bool settingsSaved = rig_.save();
    rig_.rememberConfigName();
    if (const QString title = windows_.frontTitle(); !title.isNull()) {
        defaults_.setObject(title, mainWindowTitleKey);
    }
    savedState_.saveControlSelections();
    if (defaults_.synchronize() && settingsSaved) {
        recoveryFile_.remove();
        return;
    }
    if (settingsSaved) {
        recoveryFile_ = presentRecoveryFile();
    }
    recoveryFile_.write(presentShow());
}
