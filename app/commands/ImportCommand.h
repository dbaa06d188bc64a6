#pragma once

#include <QStringList>

/// What --import is to do.
struct ImportRequest {
    QStringList files;
    QString mode; ///< only modes of this name; null for all
    QString into; ///< the settings file that takes the profiles; null for standard output
};

/// Imports fixtures as user profiles: prints them as one property list, or adds them to the "profiles" of a
/// settings file and says which. What could not be expressed or is refused goes to standard error. Returns
/// the exit status: 0 when everything was imported. Needs neither a display nor an application object.
int importFixtures(const ImportRequest& request);
