#include "settings/SettingsFile.h"

#include <QDir>

QString SettingsFile::defaultPath() {
    return QDir::home().filePath(
        QStringLiteral("Library/Application Support/com.KTQ.OrvaneApplications/Faderhall.plist"));
}
