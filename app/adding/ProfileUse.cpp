#include "adding/ProfileUse.h"

#include "plist/Reading.h"
#include "rig/ControlDefinition.h"
#include "rig/Placement.h"
#include "rig/Profiles.h"
#include "settings/Settings.h"

#include <QStringList>

namespace {

void appendNested(const QVariantList& entries, QStringList& names) {
    for (const QVariant& entry : entries) {
        if (const QString name = stringValue(mapValue(entry).value(entryKeys::profile)); !name.isNull()) {
            names.append(name);
        }
    }
}

QVariantList entriesOfAll(const QVariantList& placements) {
    QVariantList entries;
    for (const QVariant& placement : placements) {
        entries += Placement::fromEntry(placement).profiles();
    }
    return entries;
}

} // namespace

QSet<QString> profilesIn(const QVariantList& entries, const Profiles& profiles) {
    QSet<QString> found;
    QStringList open;
    appendNested(entries, open);
    while (!open.isEmpty()) {
        const QString name = open.takeLast();
        if (!found.contains(name)) {
            found.insert(name);
            appendNested(profiles.profileWithName(name), open);
        }
    }
    return found;
}

QVariantMap profilesToTakeAlong(const QString& profile, const Profiles& profiles, const Settings& settings) {
    const QVariantMap inRig = settings.userProfiles();
    QVariantMap along;
    for (const QString& name : profilesIn({QVariantMap{{entryKeys::profile, profile}}}, profiles)) {
        const QVariant entries = profiles.profile(name);
        if (entries.isValid() && !inRig.contains(name) && !profiles.ships(name)) {
            along.insert(name, entries);
        }
    }
    return along;
}

QString contestedProfile(const QVariantMap& coming, const Profiles& profiles, const Settings& settings) {
    const QSet<QString> used = profilesIn(entriesOfAll(settings.views()), profiles);
    for (auto profile = coming.begin(); profile != coming.end(); ++profile) {
        const QVariant present = profiles.profile(profile.key());
        if (used.contains(profile.key()) && present.isValid() && present != profile.value()) {
            return profile.key();
        }
    }
    return {};
}
