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

namespace {

// A rig larger than its file may be, and the levels of all its controls.
constexpr GatekeeperLimits limits{.maxBytes = 2 * largestPropertyListFile};

constexpr QLatin1StringView settingsKey("settings"); // a property list of its own, as the settings file holds
constexpr QLatin1StringView settingsFingerprintKey("settingsFingerprint");
constexpr QLatin1StringView configNameKey("configName");
constexpr QLatin1StringView currCueKey("currCue");
constexpr QLatin1StringView levelsKey("levels"); // a text: "level key" for each, with a NUL behind it

// Of a missing file, the fingerprint of nothing.
QByteArray fingerprint(const QString& path) {
    const QByteArray bytes = readWholeFile(path, largestPropertyListFile).value_or(QByteArray());
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

// In one piece: a property list of so many levels would take a tenth of a processor while a fade runs.
QByteArray textOf(const std::vector<KeptLevel>& levels) {
    QByteArray text;
    for (const KeptLevel& level : levels) {
        text += QByteArray::number(level.value) + ' ' + level.key.toUtf8() + '\0';
    }
    return text;
}

std::vector<KeptLevel> levelsFrom(const QByteArray& text) {
    std::vector<KeptLevel> levels;
    for (const QByteArray& entry : text.split('\0')) {
        const qsizetype space = entry.indexOf(' ');
        if (space > 0) {
            levels.push_back(
                {.key = QString::fromUtf8(entry.mid(space + 1)), .value = entry.left(space).toUInt()});
        }
    }
    return levels;
}

// Nothing when the settings cannot be read: an empty rig in their place would be saved over them at quit.
std::optional<ShowSnapshot> asShow(const QVariantMap& list) {
    ShowSnapshot show{.settings = {},
                      .configName = stringValue(list.value(configNameKey)),
                      .currCue = {},
                      .levels = levelsFrom(list.value(levelsKey).toByteArray())};
    if (list.contains(settingsKey)) {
        const auto settings = readPropertyList(list.value(settingsKey).toByteArray(), limits.maxBytes);
        if (!settings || settings->typeId() != QMetaType::QVariantMap) {
            return std::nullopt;
        }
        show.settings = settings->toMap();
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
    const bool isOfTheseSettings = list.value(settingsFingerprintKey).toByteArray() == settingsFingerprint_;
    std::optional<ShowSnapshot> show = isOfTheseSettings ? asShow(list) : std::nullopt;
    if (!show) {
        moveAside();
    }
    return show;
}

bool RecoveryFile::write(const ShowSnapshot& show) {
    QVariantMap list{{settingsFingerprintKey, settingsFingerprint_},
                     {configNameKey, show.configName},
                     {levelsKey, textOf(show.levels)}};
    if (show.settings) {
        const QByteArray& settings = settingsBytes(*show.settings);
        if (settings.isEmpty()) {
            return false;
        }
        list.insert(settingsKey, settings);
    }
    if (show.currCue) {
        list.insert(currCueKey, *show.currCue);
    }
    const QByteArray bytes = writeBinaryPropertyList(list);
    return passesGatekeeper(bytes, limits) && writeWholeFile(path_, bytes);
}

// Most of the time only levels have changed.
const QByteArray& RecoveryFile::settingsBytes(const QVariantMap& settings) {
    if (settingsBytes_.isEmpty() || settings != writtenSettings_) {
        settingsBytes_ = writeXmlPropertyList(settings);
        writtenSettings_ = settings;
    }
    return settingsBytes_;
}

void RecoveryFile::remove() const {
    QFile::remove(path_);
}

void RecoveryFile::moveAside() const {
    ::moveAside(path_, "kept");
}
