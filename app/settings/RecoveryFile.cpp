#include "settings/RecoveryFile.h"

#include "plist/Gatekeeper.h"
#include "plist/MoveAside.h"
#include "plist/PropertyList.h"
#include "plist/Reading.h"
#include "plist/WholeFile.h"
#include "settings/SettingsFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

// A rig as large as its file may be, and the levels of all its controls.
constexpr GatekeeperLimits limits{.maxBytes = 2 * largestPropertyListFile};

constexpr QLatin1StringView settingsKey("settings");
constexpr QLatin1StringView settingsFingerprintKey("settingsFingerprint");
constexpr QLatin1StringView configNameKey("configName");
constexpr QLatin1StringView currCueKey("currCue");
// Two lists side by side: a dictionary of so many keys would take a parser too long.
constexpr QLatin1StringView controlsKey("controls");
constexpr QLatin1StringView levelsKey("levels");

// Of a missing file, the fingerprint of nothing.
QByteArray fingerprint(const QString& path) {
    const QByteArray bytes = readWholeFile(path, largestPropertyListFile).value_or(QByteArray());
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

QVariantMap asPropertyList(const ShowSnapshot& show) {
    QVariantList controls;
    QVariantList levels;
    for (const KeptLevel& level : show.levels) {
        controls.append(level.key);
        levels.append(qlonglong{level.value});
    }
    QVariantMap list{{configNameKey, show.configName}, {controlsKey, controls}, {levelsKey, levels}};
    if (show.settings) {
        list.insert(settingsKey, *show.settings);
    }
    if (show.currCue) {
        list.insert(currCueKey, *show.currCue);
    }
    return list;
}

std::vector<KeptLevel> levelsFrom(const QVariantMap& list) {
    const QVariantList controls = listValue(list.value(controlsKey));
    const QVariantList values = listValue(list.value(levelsKey));
    std::vector<KeptLevel> levels;
    for (qsizetype i = 0; i < std::min(controls.size(), values.size()); ++i) {
        levels.push_back({.key = stringValue(controls.at(i)), .value = values.at(i).toUInt()});
    }
    return levels;
}

ShowSnapshot asShow(const QVariantMap& list) {
    ShowSnapshot show{.settings = {},
                      .configName = stringValue(list.value(configNameKey)),
                      .currCue = {},
                      .levels = levelsFrom(list)};
    if (list.contains(settingsKey)) {
        show.settings = mapValue(list.value(settingsKey));
    }
    if (list.contains(currCueKey)) {
        show.currCue = stringValue(list.value(currCueKey));
    }
    return show;
}

} // namespace

RecoveryFile::RecoveryFile(QString path, const QString& settingsPath)
    : path_(std::move(path)), settingsFingerprint_(fingerprint(settingsPath)) {}

QString RecoveryFile::defaultPath() {
    return QFileInfo(SettingsFile::defaultPath()).dir().filePath("Faderhall.recovery.plist");
}

std::optional<ShowSnapshot> RecoveryFile::takeUp() const {
    if (!QFileInfo(path_).isFile()) {
        return std::nullopt;
    }
    const QByteArray bytes = readWholeFile(path_, limits.maxBytes).value_or(QByteArray());
    const QVariantMap list = mapValue(readPropertyList(bytes, limits.maxBytes).value_or(QVariant()));
    if (list.value(settingsFingerprintKey).toByteArray() != settingsFingerprint_) {
        moveAside();
        return std::nullopt;
    }
    return asShow(list);
}

bool RecoveryFile::write(const ShowSnapshot& show) const {
    QVariantMap list = asPropertyList(show);
    list.insert(settingsFingerprintKey, settingsFingerprint_);
    const QByteArray bytes = writeXmlPropertyList(list);
    return passesGatekeeper(bytes, limits) && writeWholeFile(path_, bytes);
}

void RecoveryFile::remove() const {
    QFile::remove(path_);
}

void RecoveryFile::moveAside() const {
    ::moveAside(path_, "kept");
}
