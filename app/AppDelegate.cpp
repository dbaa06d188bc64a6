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

const char* const configNameKey = "configName";
const char* const mainWindowTitleKey = "mainWindowTitle";
const char* const unknownConfig = "unknown_config";
const char* const stateKeyPrefix = "saved_state: ";

// QApplication::quit() would ask every window to close first, and fixture windows refuse.
void quit() {
    QCoreApplication::exit();
}

} // namespace

AppDelegate::AppDelegate(const QString& resources)
    : resources_(resourceFolder(resources)), defaults(UserDefaults::defaultPath()),
      settingsFile(SettingsFile::defaultPath()), places(defaults), savedState(defaults),
      destination(defaults), fixtureTable(settings), window(places), windows(window),
      cueCommands(settings, window.cueMenu()), quitSignals(quit) {
    connectWindow();
    connect(qApp, &QGuiApplication::commitDataRequest, this, &AppDelegate::sessionEnds);
    qApp->installEventFilter(this);
}

// Widgets and universes go while the application object still stands. An open cell goes first and unread: the
// window would hand its text to what is no longer there.
AppDelegate::~AppDelegate() {
    fixtureTable.detach();
    ControlView::reset();
    DMXControl::reset();
    EditView::release();
    DMX_Universe::releaseUniverses();
}

void AppDelegate::connectWindow() {
    connect(&window, &MainWindow::quitChosen, this, quit);
    connect(&window, &MainWindow::configurationChosen, this, &AppDelegate::askForConfiguration);
    connect(&window.addressField(), &AddressField::txChange, this, &AppDelegate::setIPAddress);
    connect(&window.cueMenu(), &CueMenu::newCueChosen, this, &AppDelegate::askForNewCue);
    // For as long as the windows: the table's own end may yet take in a number that was being typed.
    connect(&fixtureTable, &FixtureTable::edited, &windows, [this] { windows.scanWindows(); });
}

void AppDelegate::applicationDidFinishLaunching() {
    loadTables();
    loadSettings();
    profiles.addUserProfiles(settings.userProfiles());
    skt = createSocket(0);
    window.open();
    createControlViews();
    windows.scanWindows(stringValue(defaults.objectForKey(mainWindowTitleKey)));
    savedState.restoreState(stateKey);
    setIPAddress(destination.text());
    window.tableview().setModel(&fixtureTable);
    ticker.start([this] { timerProc(); });
    beginActivity();
    cueCommands.setupCueMenu();
    savedState.restoreControlSelections();
}

void AppDelegate::loadTables() {
    profiles.setTable(readResource(resources_, "profiles"));
    configs = Configurations(readResource(resources_, "configurations"));
    for (const QString& name : configs.names()) {
        window.addConfiguration(name);
    }
}

// Without a settings file the default configuration is taken, whatever name the user defaults hold.
void AppDelegate::loadSettings() {
    settings = Settings(settingsFile.read());
    QString name = stringValue(defaults.objectForKey(configNameKey));
    if (!settings.dictionary()) {
        name = configs.defaultName();
        settings = Settings(configs.configuration(name));
    }
    setConfigName(name.isNull() ? unknownConfig : name);
}

void AppDelegate::setConfigName(const QString& name) {
    configName = name;
    stateKey = stateKeyPrefix + name;
    window.checkConfiguration(name);
}

void AppDelegate::createControlViews() {
    for (const QVariant& placement : settings.views()) {
        ControlView::controlViewWithSettings(mapValue(placement), profiles, places);
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
            universe->sendWithSocket(skt, destination.tx_address());
        }
    }
}

void AppDelegate::setIPAddress(const QString& dotted) {
    destination.setIPAddress(dotted);
    window.addressField().setText(destination.text());
}

void AppDelegate::askForNewCue() {
    openTextSheet(window,
                  {.message = "Enter new cue number", .informativeText = {}, .fieldLabel = "Cue number"},
                  [this](const QString& number) { cueCommands.createCue(number); });
}

void AppDelegate::askForConfiguration(const QString& name) {
    openNumberSheet(
        window, {.message = "Load Configuration", .informativeText = name, .fieldLabel = "Universe offset"},
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
    fixtureTable.detach();
    ControlView::reset();
    DMXControl::reset();
    createControlViews();
    windows.scanWindows(stringValue(defaults.objectForKey(mainWindowTitleKey)));
    savedState.restoreState(stateKey);
    fixtureTable.attach();
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
    if (std::exchange(terminated, true)) {
        return;
    }
    savedState.saveState(stateKey);
    if (settings.dictionary()) {
        settingsFile.write(*settings.dictionary());
    }
    defaults.setObject(configName, configNameKey);
    if (const QString title = windows.frontTitle(); !title.isNull()) {
        defaults.setObject(title, mainWindowTitleKey);
    }
    savedState.saveControlSelections();
    defaults.synchronize();
}
