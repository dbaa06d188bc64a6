#include "console/Resources.h"

#include "plist/DictionaryFile.h"

#include <QDir>

QString resourceFolder(const QString& askedFor, const QString& programFolder) {
    if (!askedFor.isNull()) {
        return askedFor;
    }
    const QDir program(programFolder);
    const QString beside = program.filePath("resources");
    return QDir(beside).exists() ? beside : program.filePath(FADERHALL_INSTALLED_TABLES);
}

std::optional<QVariantMap> readResource(const QString& folder, const QString& name) {
    return DictionaryFile(QDir(folder).filePath(name + ".plist")).read();
}
