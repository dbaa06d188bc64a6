#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

/// In the table, the name of the configuration that a first start takes.
inline constexpr QLatin1StringView defaultConfigurationKey("_default_configuration");
/// In the user defaults, the name of the configuration that the settings began as.
inline constexpr QLatin1StringView configNameKey("configName");
/// In the user defaults, what the key of a configuration's levels begins with; its name follows.
inline constexpr QLatin1StringView stateKeyPrefix("saved_state: ");
/// The name of settings that came without one.
inline constexpr QLatin1StringView unknownConfig("unknown_config");

/// The named rigs that ship with the program, and the name of the one that a first start takes.
class Configurations {
public:
    explicit Configurations(const std::optional<QVariantMap>& table = {});

    QStringList names() const { return configurations_.keys(); }
    std::optional<QVariantMap> configuration(const QString& name) const;
    /// Null when the table names none.
    QString defaultName() const { return defaultName_; }

    /// The configuration with every fixture moved up by `universeOffset` universes; the table itself stays
    /// as it is.
    std::optional<QVariantMap> shiftedConfiguration(const QString& name, int universeOffset) const;

private:
    QVariantMap configurations_;
    QString defaultName_;
};
