#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

/// The folder of the tables that ship with the program, which stands in `programFolder`: the one asked for,
/// else resources/ beside the program, else where an installed tree has it (../share/faderhall/; in the
/// bundle of a Mac ../Resources/).
QString resourceFolder(const QString& askedFor, const QString& programFolder);

/// The table `name`.plist in the folder; nothing when it is missing, unreadable or no dictionary.
std::optional<QVariantMap> readResource(const QString& folder, const QString& name);
