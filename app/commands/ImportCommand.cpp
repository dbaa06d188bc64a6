#include "commands/ImportCommand.h"

#include "library/FixtureImport.h"
#include "plist/DictionaryFile.h"
#include "plist/PropertyList.h"
#include "plist/WholeFile.h"
#include "process/ConsoleLock.h"
#include "settings/RecoveryFile.h"
#include "settings/Settings.h"
#include "settings/SettingsFile.h"

#include <QFileInfo>

#include <clocale>
#include <cstdio>
#include <cstdlib>

namespace {

void say(const QString& line) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(line));
}

QString modesOf(const FixtureImport& fixture) {
    QStringList names;
    for (const ImportedMode& mode : fixture.modes) {
        names.append(QString("'%1'").arg(mode.mode));
    }
    return names.join(", ");
}

// All that is to be imported, and whether everything could be.
class Collection {
public:
    explicit Collection(QString mode) : mode_(std::move(mode)) {}

    void add(const QString& file) {
        const FixtureImport fixture = importFixture(file);
        if (!fixture.refusal.isNull()) {
            refuse(fixture.refusal);
            return;
        }
        bool found = false;
        for (const ImportedMode& mode : fixture.modes) {
            if (mode_.isNull() || mode.mode == mode_) {
                found = true;
                add(mode, file);
            }
        }
        if (!found) {
            refuse(QString("%1: there is no mode '%2', but %3").arg(file, mode_, modesOf(fixture)));
        }
    }

    void refuse(const QString& reason) {
        say("faderhall: " + reason);
        isWhole_ = false;
    }

    const QVariantMap& profiles() const { return profiles_; }
    const QStringList& modes() const { return modes_; }
    bool isWhole() const { return isWhole_; }

private:
    void add(const ImportedMode& mode, const QString& file) {
        if (profiles_.contains(mode.profileName)) {
            refuse(QString("%1: '%2' is taken from another file already").arg(file, mode.profileName));
            return;
        }
        for (const QString& remark : mode.remarks) {
            say(QString("%1: %2").arg(mode.profileName, remark));
        }
        profiles_.insert(mode.profiles);
        modes_.append(mode.profileName);
    }

    QString mode_;
    QVariantMap profiles_;
    QStringList modes_; // the names of the profiles that are modes
    bool isWhole_ = true;
};

bool print(const QVariantMap& profiles) {
    const QByteArray list = writeXmlPropertyList(QVariantMap{{rigKeys::profiles, profiles}});
    return std::fwrite(list.constData(), 1, static_cast<std::size_t>(list.size()), stdout) ==
               static_cast<std::size_t>(list.size()) &&
           std::fflush(stdout) == 0;
}

QString placeOf(const QString& path) {
    const QFileInfo target(followLinks(path));
    const QString folder = QFileInfo(target.absolutePath()).canonicalFilePath();
    return (folder.isEmpty() ? target.absolutePath() : folder) + '/' + target.fileName();
}

bool isOfThisHome(const QString& path) {
    return placeOf(path) == placeOf(SettingsFile::defaultPath());
}

// Nothing, and why, when the file is there and cannot take profiles.
std::optional<QVariantMap> settingsIn(const DictionaryFile& file, QString& reason) {
    if (!QFileInfo::exists(file.path())) {
        return QVariantMap();
    }
    std::optional<QVariantMap> settings = file.read();
    if (!settings) {
        reason = "it is no property list of settings, and is left as it is";
    } else if (settings->value(rigKeys::profiles, QVariantMap()).typeId() != QMetaType::QVariantMap) {
        reason = "its profiles are no dictionary, and it is left as it is";
        return std::nullopt;
    }
    return settings;
}

// Why the profiles could not be added to the file; null when they were.
QString addTo(const QString& path, const QVariantMap& profiles) {
    std::optional<ConsoleLock> lock;
    if (isOfThisHome(path)) {
        lock.emplace(ConsoleLock::pathBeside(SettingsFile::defaultPath()));
        if (lock->isHeldElsewhere()) {
            return "a console is running and would write over it when it quits; quit it first";
        }
        // Which is taken up only while the settings are those that it started from.
        if (QFileInfo::exists(RecoveryFile::defaultPath())) {
            return "the show of a run that ended badly waits to be taken up; start the console and quit it "
                   "first";
        }
    }
    const DictionaryFile file(path);
    QString reason;
    std::optional<QVariantMap> settings = settingsIn(file, reason);
    if (!settings) {
        return reason;
    }
    QVariantMap all = settings->value(rigKeys::profiles).toMap();
    for (auto profile = profiles.begin(); profile != profiles.end(); ++profile) {
        if (all.contains(profile.key()) && all.value(profile.key()) != profile.value()) {
            say(QString("The profile '%1' replaces another one of that name").arg(profile.key()));
        }
        all.insert(profile.key(), profile.value());
    }
    settings->insert(rigKeys::profiles, all);
    return file.write(*settings) ? QString() : QString("it cannot be written");
}

} // namespace

int importFixtures(const ImportRequest& request) {
    std::setlocale(LC_NUMERIC, "C"); // stored numbers have no language
    Collection collection(request.mode);
    for (const QString& file : request.files) {
        collection.add(file);
    }
    if (collection.profiles().isEmpty()) {
        return EXIT_FAILURE;
    }
    if (request.into.isNull()) {
        return print(collection.profiles()) && collection.isWhole() ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    if (const QString reason = addTo(request.into, collection.profiles()); !reason.isNull()) {
        collection.refuse(QString("%1: %2").arg(request.into, reason));
        return EXIT_FAILURE;
    }
    for (const QString& mode : collection.modes()) {
        std::printf("Added the profile '%s'\n", qUtf8Printable(mode));
    }
    return collection.isWhole() ? EXIT_SUCCESS : EXIT_FAILURE;
}
