#include "AppDelegate.h"

#include "ProcessActivity.h"
#include "Resources.h"
#include "artnet/DMX_Universe.h"
#include "artnet/Transport.h"
#include "controls/DMXControl.h"
#include "controls/EditView.h"
#include "fixtures/ControlView.h"
#include "plist/Reading.h"
#include "window/AddressField.h"
#include "window/Sheets.h"

#include <QApplication>
#include <QEvent>
#include <QTableView>

#include <utility>

namespace {

constexpr QLatin1StringView configNameKey("configName");
constexpr QLatin1StringView mainWindowTitleKey("mainWindowTitle");
constexpr QLatin1StringView unknownConfig("unknown_config");
constexpr QLatin1StringView stateKeyPrefix("saved_state: ");

// QApplication::quit() would ask every window to close first, and fixture windows refuse.
void quit() {
    QCoreApplication::exit();
}

} // namespace

AppDelegate::AppDelegate(const QString& resources)
    : resources_(resourceFolder(resources)), defaults_(UserDefaults::defaultPath()),
      settingsFile_(SettingsFile::defaultPath()), places_(defaults_), savedState_(defaults_),
      destination_(defaults_), fixtureTable_(settings), _window(places_), windows_(_window),
      cueCommands_(settings, _window.cueMenu()) {
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
    // For as long as the windows: the table's own end may yet take in a number that was being typed.
    connect(&fixtureTable_, &FixtureTable::edited, &windows_, [this] { windows_.scanWindows(); });
}

void AppDelegate::applicationDidFinishLaunching() {
    loadTables();
    loadSettings();
    profiles.addUserProfiles(settings.userProfiles());
    skt = createSocket(0);
    _window.open();
    createControlViews();
    windows_.scanWindows(stringValue(defaults_.objectForKey(mainWindowTitleKey)));
    savedState_.restoreState(stateKey);
    setIPAddress(destination_.text());
    _window.tableview().setModel(&fixtureTable_);
    ticker_.start([this] { timerProc(); });
    beginActivity();
    cueCommands_.setupCueMenu();
    savedState_.restoreControlSelections();
}

void AppDelegate::loadTables() {
    profiles.setTable(readResource(resources_, "profiles"));
    configs = Configurations(readResource(resources_, "configurations"));
    for (const QString& name : configs.names()) {
        _window.addConfiguration(name);
    }
}

// Without a settings file the default configuration is taken, whatever name the user defaults hold.
void AppDelegate::loadSettings() {
    settings = Settings(settingsFile_.read());
    QString name = stringValue(defaults_.objectForKey(configNameKey));
    if (!settings.dictionary()) {
        name = configs.defaultName();
        settings = Settings(configs.configuration(name));
    }
    setConfigName(name.isNull() ? QString(unknownConfig) : name);
}

void AppDelegate::setConfigName(const QString& name) {
    configName = name;
    stateKey = stateKeyPrefix + name;
    _window.checkConfiguration(name);
}

void AppDelegate::createControlViews() {
    for (const QVariant& placement : settings.views()) {
        ControlView::controlViewWithSettings(mapValue(placement), profiles, places_);
    }
}

void AppDelegate::timerProc() {
    if (const auto* views = ControlView::controlViews()) {
        for (const auto& view : *views) {
            view->update();
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
                  [this](const QString& number) { cueCommands_.createCue(number); });
}

void AppDelegate::askForConfiguration(const QString& name) {
    openNumberSheet(
        _window, {.message = "Load Configuration", .informativeText = name, .fieldLabel = "Universe offset"},
        [this, name](int universeOffset) { loadConfiguration(name, universeOffset); });
}

void AppDelegate::loadConfiguration(const QString& name, int universeOffset) {
    const auto configuration = configs.shiftedConfiguration(name, universeOffset);
    if (!configuration) {
        return;
    }
    settings = Settings(configuration);
    setConfigName(name);
    reloadSettings();
}

void AppDelegate::reloadSettings() {
    fixtureTable_.detach();
    ControlView::reset();
    DMXControl::reset();
    createControlViews();
    windows_.scanWindows(stringValue(defaults_.objectForKey(mainWindowTitleKey)));
    savedState_.restoreState(stateKey);
    fixtureTable_.attach();
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
    savedState_.saveState(stateKey);
    if (settings.dictionary()) {
        settingsFile_.write(*settings.dictionary());
    }
    defaults_.setObject(configName, configNameKey);
    if (const QString title = windows_.frontTitle(); !title.isNull()) {
        defaults_.setObject(title, mainWindowTitleKey);
    }
    savedState_.saveControlSelections();
    defaults_.synchronize();
}
