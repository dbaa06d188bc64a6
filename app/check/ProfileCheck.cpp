#include "check/ProfileCheck.h"

#include "check/ProfileLoops.h"
#include "check/Report.h"
#include "check/StoredTypes.h"
#include "plist/Reading.h"
#include "rig/ControlDefinition.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

constexpr std::array nestedFields = {StoredField{entryKeys::profile, StoredType::Text},
                                     StoredField{entryKeys::name, StoredType::Text}};

constexpr std::array controlFields = {StoredField{entryKeys::name, StoredType::Text},
                                      StoredField{entryKeys::channels, StoredType::Integer, 1, 2},
                                      StoredField{entryKeys::header, StoredType::Flag},
                                      StoredField{entryKeys::newlayer, StoredType::Flag},
                                      StoredField{entryKeys::label, StoredType::Text},
                                      StoredField{entryKeys::attribute, StoredType::Text},
                                      StoredField{entryKeys::blank, StoredType::Integer, 0}};

void checkNested(const QVariantMap& entry, const KnownProfiles& known, const QString& place, Report& report) {
    checkFields(entry, nestedFields, place, report);
    const QString profile = stringValue(entry.value(entryKeys::profile));
    if (known && !profile.isNull() && !known->contains(profile)) {
        report.add(place, QString("there is no profile %1").arg(quoted(profile)),
                   "add that profile or correct the name");
    }
}

void checkControl(const QVariantMap& entry, const QString& place, Report& report) {
    checkFields(entry, controlFields, place, report);
    const std::int64_t max = integerValue(entry.value(entryKeys::channels)) == 2 ? 65535 : 255;
    const StoredField rest{entryKeys::defaultValue, StoredType::Integer, 0, max};
    checkFields(entry, {&rest, 1}, place, report);
}

void checkEntry(const QVariant& value, const KnownProfiles& known, const QString& place, Report& report) {
    if (value.typeId() != QMetaType::QVariantMap) {
        report.add(place, QString("is %1, which adds nothing").arg(described(value)), "make it a dictionary");
        return;
    }
    const QVariantMap entry = value.toMap();
    if (entry.contains(entryKeys::profile)) {
        checkNested(entry, known, place, report);
    } else {
        checkControl(entry, place, report);
    }
}

// From the profile that is to be changed once around.
QString around(const std::vector<LoopMember>& loop, std::size_t start) {
    constexpr std::size_t longest = 8;
    QStringList names;
    for (std::size_t i = 0; i < std::min(loop.size(), longest); ++i) {
        names.append(quoted(loop[(start + i) % loop.size()].profile));
    }
    if (loop.size() > longest) {
        names.append("...");
    }
    names.append(quoted(loop[start].profile));
    return names.join(" > ");
}

// An entry that leads into several loops is told once: without it they all end.
void checkLoops(const QVariantMap& profiles, const QVariantMap& known, const QString& place, Report& report) {
    QSet<QString> told;
    for (const std::vector<LoopMember>& loop : profileLoops(known)) {
        const auto own = std::ranges::find_if(
            loop, [&](const LoopMember& member) { return profiles.contains(member.profile); });
        if (own == loop.end()) {
            continue;
        }
        const QString where =
            place + QString("profile %1, entry %2").arg(quoted(own->profile)).arg(own->entry + 1);
        if (told.contains(where)) {
            continue;
        }
        told.insert(where);
        const auto start = static_cast<std::size_t>(own - loop.begin());
        report.add(where, "contains itself, which adds nothing: " + around(loop, start),
                   "take this entry out");
    }
}

} // namespace

void checkEntries(const QVariantList& entries, const KnownProfiles& known, const QString& place,
                  Report& report) {
    for (qsizetype i = 0; i < entries.size(); ++i) {
        checkEntry(entries[i], known, place + QString(", entry %1").arg(i + 1), report);
    }
}

void checkProfiles(const QVariantMap& profiles, const KnownProfiles& known, const QString& place,
                   Report& report) {
    for (auto profile = profiles.begin(); profile != profiles.end(); ++profile) {
        const QString where = place + "profile " + quoted(profile.key());
        if (profile->typeId() == QMetaType::QVariantList) {
            checkEntries(profile->toList(), known, where, report);
        } else {
            report.add(where, QString("is %1, which adds nothing").arg(described(*profile)),
                       "make it an array of entries");
        }
    }
    if (known) {
        checkLoops(profiles, *known, place, report);
    }
}
