#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

/// The folder of the tables that ship with the program: the one asked for, else resources/ beside the
/// program, else ../share/faderhall/ as it stands in an installed tree.
QString resourceFolder(const QString& askedFor);

/// The table `name`.plist in the folder; nothing when it is missing, unreadable or no dictionary.
std::optional<QVariantMap> readResource(const QString& folder, const QString& name);
