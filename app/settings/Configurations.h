#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

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
