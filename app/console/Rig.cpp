#include "console/Rig.h"

#include "console/Resources.h"
#include "plist/Reading.h"
#include "settings/UserDefaults.h"

Rig::Rig(QString resources, UserDefaults& defaults)
    : resources_(std::move(resources)), defaults_(defaults), settingsFile_(SettingsFile::defaultPath()) {}

void Rig::load(const std::optional<ShowSnapshot>& recovered) {
    profiles_.setTable(readResource(resources_, "profiles"));
    configs_ = Configurations(readResource(resources_, "configurations"));
    if (recovered) {
        settings_ = Settings(recovered->settings);
        setConfigName(recovered->configName);
    } else {
        loadSaved();
    }
    profiles_.addUserProfiles(settings_.userProfiles());
}

void Rig::loadSaved() {
    settings_ = Settings(settingsFile_.read());
    QString name = stringValue(defaults_.objectForKey(configNameKey));
    if (!settings_.dictionary()) {
        name = configs_.defaultName();
        settings_ = Settings(configs_.configuration(name));
    }
    setConfigName(name.isNull() ? QString(unknownConfig) : name);
}

bool Rig::loadConfiguration(const QString& name, int universeOffset) {
    const auto configuration = configs_.shiftedConfiguration(name, universeOffset);
    if (!configuration) {
        return false;
    }
    settings_ = Settings(configuration);
    setConfigName(name);
    return true;
}

void Rig::setConfigName(const QString& name) {
    configName_ = name;
    stateKey_ = stateKeyPrefix + name;
}

bool Rig::save() const {
    return !settings_.dictionary() || settingsFile_.write(*settings_.dictionary());
}

void Rig::rememberConfigName() {
    defaults_.setObject(configName_, configNameKey);
}
