#include "check/FileCheck.h"

#include "check/DefaultsCheck.h"
#include "check/Report.h"
#include "check/RigCheck.h"
#include "check/RigFile.h"
#include "check/StoredTypes.h"
#include "plist/Reading.h"
#include "settings/Configurations.h"

#include <QDir>

namespace {

class FileCheck {
public:
    explicit FileCheck(RigPaths paths) : paths_(std::move(paths)) {}

    CheckResult run() {
        if (!QDir(paths_.tables).exists()) {
            result_.notLookedAt.append(paths_.tables + ": No such folder");
            return result_;
        }
        KnownProfiles table = checkTable();
        RigCheck rigs(std::move(table));
        const RigFile defaults = readRigFile(paths_.defaults);
        const RigFile settings = readRigFile(paths_.settings);
        checkConfigurations(rigs, settings.state == RigFile::Missing);
        checkSettings(rigs, settings, defaults);
        checkUserDefaults(defaults);
        if (!rigs.lookedAtAll()) {
            result_.notLookedAt.append(paths_.tables + ": More rigs than can be gone through");
        }
        return result_;
    }

private:
    // Tells what a file is that is none of ours; true when it can be looked into.
    bool isRead(const RigFile& file, const QString& path, Report& report) {
        if (file.state == RigFile::NotLookedAt) {
            result_.notLookedAt.append(path + ": " + file.reason);
        } else if (file.state == RigFile::Damaged) {
            report.add({}, file.reason, "put a copy that is whole in its place");
        }
        return file.state == RigFile::Read;
    }

    QString tablePath(const char* name) const { return QDir(paths_.tables).filePath(name); }

    KnownProfiles checkTable() {
        const QString path = tablePath("profiles.plist");
        Report report(path);
        const RigFile file = readRigFile(path);
        if (file.state == RigFile::Missing) {
            report.add({}, "is missing, and without it no fixture has faders", "put it there");
        }
        if (isRead(file, path, report)) {
            checkProfiles(*file.dictionary, file.dictionary, {}, report);
        }
        result_.problems += report.lines();
        return file.dictionary;
    }

    void checkConfigurations(RigCheck& rigs, bool areNeeded) {
        const QString path = tablePath("configurations.plist");
        Report report(path);
        const RigFile file = readRigFile(path);
        if (file.state == RigFile::Missing && areNeeded) {
            report.add({}, "is missing, and there are no settings either", "put it there");
        }
        if (isRead(file, path, report)) {
            QVariantMap table = *file.dictionary;
            if (const QVariant name = table.take(defaultConfigurationKey); name.isValid()) {
                checkDefaultName(name, table, report);
            }
            for (auto rig = table.begin(); rig != table.end(); ++rig) {
                checkConfiguration(rig.key(), *rig, rigs, report);
            }
        }
        result_.problems += report.lines();
    }

    static void checkDefaultName(const QVariant& name, const QVariantMap& table, Report& report) {
        checkType(StoredType::Text, name, defaultConfigurationKey, {}, report);
        if (const QString text = stringValue(name); !text.isNull() && !table.contains(text)) {
            report.add({},
                       QString("'%1' is %2, which does not exist").arg(defaultConfigurationKey, quoted(text)),
                       "make it the name of a configuration");
        }
    }

    void checkConfiguration(const QString& name, const QVariant& rig, RigCheck& rigs, Report& report) {
        const QString place = "configuration " + quoted(name);
        if (rig.typeId() == QMetaType::QVariantMap) {
            keys_.insert(name, rigs.check(rig.toMap(), place + ", ", report));
        } else {
            report.add(place, QString("is %1, which loads nothing").arg(described(rig)),
                       "make it a dictionary");
        }
    }

    void checkSettings(RigCheck& rigs, const RigFile& file, const RigFile& defaults) {
        Report report(paths_.settings);
        if (isRead(file, paths_.settings, report)) {
            const QString name =
                stringValue(defaults.dictionary.value_or(QVariantMap()).value(configNameKey));
            keys_.insert(name.isNull() ? QString(unknownConfig) : name,
                         rigs.check(*file.dictionary, {}, report));
        }
        result_.problems += report.lines();
    }

    void checkUserDefaults(const RigFile& file) {
        Report report(paths_.defaults);
        if (isRead(file, paths_.defaults, report)) {
            checkDefaults(*file.dictionary, keys_, report);
        }
        result_.problems += report.lines();
    }

    RigPaths paths_;
    CheckResult result_;
    QMap<QString, FaderKeys> keys_; ///< of each rig, by the name of its configuration
};

} // namespace

CheckResult checkFiles(const RigPaths& paths) {
    return FileCheck(paths).run();
}
