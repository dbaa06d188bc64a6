#pragma once

#include <QString>
#include <QStringList>

/// The files from which a console comes up.
struct RigPaths {
    QString tables; ///< the folder of profiles.plist and configurations.plist
    QString settings;
    QString defaults;
};

/// What a check comes to.
struct CheckResult {
    QStringList problems;    ///< a line each
    QStringList notLookedAt; ///< files that could not be read, and why
};

/// Checks all of them, the configurations of the table included. Without settings the default configuration
/// is what a console comes up with. Changes nothing.
CheckResult checkFiles(const RigPaths& paths);
