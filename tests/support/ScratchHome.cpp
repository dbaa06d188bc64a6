#include "support/ScratchHome.h"

#include "plist/DictionaryFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

void writeTable(const QString& path, const QVariantMap& table) {
    QDir().mkpath(QFileInfo(path).path());
    if (!DictionaryFile(path).write(table)) {
        qFatal("cannot write '%s'", qUtf8Printable(path));
    }
}

} // namespace

ScratchHome::ScratchHome() : home_(qgetenv("HOME")), configurationHome_(qgetenv("XDG_CONFIG_HOME")) {
    qputenv("HOME", folder_.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", folder_.filePath(".config").toUtf8());
}

ScratchHome::~ScratchHome() {
    qputenv("HOME", home_);
    qputenv("XDG_CONFIG_HOME", configurationHome_);
}

void ScratchHome::writeProfiles(const QVariantMap& table) const {
    writeTable(resources() + "/profiles.plist", table);
}

void ScratchHome::writeConfigurations(const QVariantMap& table) const {
    writeTable(resources() + "/configurations.plist", table);
}

void ScratchHome::writeSettings(const QVariantMap& settings) const {
    writeTable(settingsPath(), settings);
}

void ScratchHome::writeSettings(const QByteArray& bytes) const {
    QDir().mkpath(QFileInfo(settingsPath()).path());
    QFile file(settingsPath());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write '%s'", qUtf8Printable(settingsPath()));
    }
}

std::optional<QVariantMap> ScratchHome::settings() const {
    return DictionaryFile(settingsPath()).read();
}

void ScratchHome::writeUserDefaults(const QVariantMap& defaults) const {
    writeTable(userDefaultsPath(), defaults);
}

QVariantMap ScratchHome::userDefaults() const {
    return DictionaryFile(userDefaultsPath()).read().value_or(QVariantMap());
}

QString ScratchHome::settingsPath() const {
    return folder_.filePath("Library/Application Support/com.KTQ.OrvaneApplications/Faderhall.plist");
}

QString ScratchHome::userDefaultsPath() const {
    return folder_.filePath(".config/com.KTQ.OrvaneApplications/Faderhall.plist");
}
