#pragma once

#include "rig/Profiles.h"
#include "settings/Configurations.h"
#include "settings/Settings.h"
#include "settings/SettingsFile.h"
#include "settings/ShowSnapshot.h"

#include <QString>
#include <QStringList>

class UserDefaults;

/// The rig that is loaded: its settings under the name of its configuration, and the tables that rigs are
/// made from.
class Rig {
public:
    /// `resources` is the folder of the tables; `defaults` has to outlive the rig.
    Rig(QString resources, UserDefaults& defaults);

    /// Reads the tables of profiles and configurations, then loads what a run that ended badly left or,
    /// without that, what the settings file holds, and adds the rig's own profiles to the table. Without a
    /// settings file the default configuration is taken, whatever name the user defaults hold.
    void load(const std::optional<ShowSnapshot>& recovered);

    QStringList configurationNames() const { return configs_.names(); }

    /// Loads a configuration of the table, its fixtures moved by so many universes; false when there is none
    /// of that name.
    bool loadConfiguration(const QString& name, int universeOffset);

    /// Writes the settings file; false when that failed.
    bool save() const;
    /// Remembers the configuration's name for the next start.
    void rememberConfigName();

    Settings& settings() { return settings_; }
    const Settings& settings() const { return settings_; }
    Profiles& profiles() { return profiles_; }
    const QString& configName() const { return configName_; }
    /// The key under which the levels of this configuration are kept.
    const QString& stateKey() const { return stateKey_; }

private:
    void loadSaved();
    void setConfigName(const QString& name);

    QString resources_;
    UserDefaults& defaults_;
    SettingsFile settingsFile_;
    Profiles profiles_;
    Configurations configs_;
    Settings settings_;
    QString configName_;
    QString stateKey_;
};
