#include "console/Console.h"

#include "artnet/Transport.h"
#include "clock/MonotonicClock.h"
#include "plist/Reading.h"
#include "settings/SettingsFile.h"

#include <chrono>
#include <system_error>
#include <utility>

namespace {

// Belongs to the settings file as it is now.
RecoveryFile presentRecoveryFile() {
    return {RecoveryFile::defaultPath(), SettingsFile::defaultPath()};
}

} // namespace

Console::Console(const QString& resources)
    : defaults_(UserDefaults::defaultPath()), recoveryFile_(presentRecoveryFile()),
      rig_(resources, defaults_), fixtures_(engine_, faders_, rig_.profiles()), places_(defaults_),
      savedState_(defaults_, faders_, fixtures_), destination_(defaults_),
      patching_(rig_.settings(), rig_.profiles(), fixtures_, places_), cues_(rig_.settings(), faders_),
      stepper_(cues_, faders_), showKeeper_(recoveryFile_, [this] { return presentShow(); }) {
    engine_.setNewsListener([this] { bell_.ring(); });
    connect(&bell_, &Bell::rang, this, &Console::heardNews);
    takeUpLater_.setSingleShot(true);
    takeUpLater_.setTimerType(Qt::PreciseTimer);
    connect(&takeUpLater_, &QTimer::timeout, this, &Console::heardNews);
}

Console::~Console() = default;

// --- Start ---------------------------------------------------------------------------------------------

void Console::load() {
    recoveredShow_ = recoveryFile_.takeUp();
    recovered_ = recoveredShow_.has_value();
    rig_.load(recoveredShow_);
    cues_.compact();
    engine_.setSocket(createSocket(0));
    createFixtures();
    if (recovered_) {
        stepper_.setCurrCue(recoveredShow_->currCue);
    }
    recoveredShow_.reset();
    setIPAddress(destination_.text());
}

void Console::startOutput() {
    outputThread_.emplace(engine_);
}

void Console::follow() {
    bell_.listen();
    defaults_.startWriting();
    showKeeper_.start();
}

// The levels are set before the first of them goes out.
void Console::createFixtures() {
    fixtures_.replaceAll(rig_.settings().views(), [this] {
        if (recoveredShow_) {
            restoreLevels(recoveredShow_->levels, faders_);
        } else {
            savedState_.restoreState(rig_.stateKey());
        }
        emit fixturesReplaced();
    });
}

// --- What the output has done --------------------------------------------------------------------------

// Drawing what moved is put off while it takes more than its share; keeping it safe is not.
void Console::heardNews() {
    showKeeper_.showChanged();
    const std::uint64_t now = monotonicNanoseconds();
    const std::uint64_t used = threadProcessorNanoseconds();
    if (const std::uint64_t pause = pace_.pause(now, used); pause > 0) {
        takeUpLater_.start(std::chrono::ceil<std::chrono::milliseconds>(std::chrono::nanoseconds(pause)));
        return;
    }
    pace_.asked(now, used);
    takeUpOutput();
}

void Console::takeUpOutput() {
    if (engine_.takeNews()) {
        showKeeper_.showChanged();
        fixtures_.tellMoved();
    }
}

// --- What the operator does ----------------------------------------------------------------------------

void Console::setIPAddress(const QString& dotted) {
    destination_.setIPAddress(dotted);
    engine_.setAddress(destination_.tx_address());
}

bool Console::createCue(const QString& number) {
    if (number.isEmpty()) {
        return false;
    }
    cues_.create(number);
    stepper_.setCurrCue(number);
    showKeeper_.showChanged();
    return true;
}

void Console::loadConfiguration(const QString& name, int universeOffset) {
    if (rig_.loadConfiguration(name, universeOffset)) {
        reloadSettings();
    }
}

void Console::goBackToSavedRig() {
    recoveryFile_.moveAside();
    rig_.load({});
    reloadSettings();
    stepper_.setCurrCue({});
}

void Console::reloadSettings() {
    cues_.compact();
    emit aboutToReload();
    patching_.forget();
    createFixtures();
    showKeeper_.showChanged();
    emit reloaded();
}

ShowSnapshot Console::presentShow() const {
    return {.settings = rig_.settings().dictionary(),
            .configName = rig_.configName(),
            .currCue = stepper_.currCue(),
            .levels = presentLevels(faders_)};
}

// --- Quit ----------------------------------------------------------------------------------------------

QString Console::mainWindowTitle() const {
    return stringValue(defaults_.objectForKey(mainWindowTitleKey));
}

void Console::terminate(const QString& frontTitle) {
    if (std::exchange(terminated_, true)) {
        return;
    }
    outputThread_.reset(); // what goes out last is what is saved
    showKeeper_.stop();
    savedState_.saveState(rig_.stateKey());
    // Before the settings: the recovery file is no longer taken up once they are others.
    defaults_.synchronize();
    const bool settingsSaved = rig_.save();
    rig_.rememberConfigName();
    if (!frontTitle.isNull()) {
        defaults_.setObject(frontTitle, mainWindowTitleKey);
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
