#include "check/RigCheck.h"

#include "check/PatchCheck.h"
#include "check/Report.h"
#include "check/StoredTypes.h"
#include "cues/CueNumber.h"
#include "cues/CueStore.h"
#include "patch/Patch.h"
#include "plist/Reading.h"
#include "rig/Placement.h"
#include "rig/Profiles.h"
#include "settings/LevelRecord.h"
#include "settings/Settings.h"

#include <array>

namespace {

constexpr std::array rigFields = {StoredField{rigKeys::views, StoredType::List},
                                  StoredField{rigKeys::profiles, StoredType::Dictionary},
                                  StoredField{rigKeys::cues, StoredType::Dictionary}};

constexpr std::array placementFields = {StoredField{placementKeys::name, StoredType::Text},
                                        StoredField{placementKeys::universe, StoredType::Integer},
                                        StoredField{placementKeys::address, StoredType::Integer},
                                        StoredField{placementKeys::layer, StoredType::Integer},
                                        StoredField{placementKeys::profiles, StoredType::List}};

constexpr std::array recordFields = {StoredField{recordKeys::key, StoredType::Text},
                                     StoredField{recordKeys::value, StoredType::Integer},
                                     StoredField{recordKeys::time, StoredType::Number}};

KnownProfiles knownProfiles(const KnownProfiles& table, const QVariantMap& own) {
    KnownProfiles known = table;
    for (auto profile = own.begin(); known && profile != own.end(); ++profile) {
        known->insert(profile.key(), profile.value());
    }
    return known;
}

void checkPlacement(const QVariant& value, const KnownProfiles& known, const QString& place, Report& report) {
    if (value.typeId() != QMetaType::QVariantMap) {
        report.add(place, QString("is %1, which adds a fixture without faders").arg(described(value)),
                   "make it a dictionary");
        return;
    }
    const QVariantMap placement = value.toMap();
    checkFields(placement, placementFields, place, report);
    checkEntries(Placement::fromEntry(placement).profiles(), known, place, report);
}

bool isCueWithoutData(const QVariant& entry) {
    return stringValue(entry) == cuePlaceholder;
}

void checkCue(const QVariant& entry, const FaderKeys& keys, const QString& place, Report& report) {
    if (entry.typeId() == QMetaType::QVariantList) {
        checkRecords(entry.toList(), keys, place, report);
    } else if (!isCueWithoutData(entry)) {
        report.add(place, QString("is %1, which moves nothing").arg(described(entry)),
                   "make it an array of records");
    }
}

void checkCues(const QVariantMap& rig, const FaderKeys& keys, const QString& place, Report& report) {
    const QVariantMap cues = Settings(rig).cues();
    for (const QString& number : sortedCueNumbers(cues.keys())) {
        checkCue(cues.value(number), keys, place + "cue " + quoted(number), report);
    }
}

QSet<QString> keysOf(const std::vector<PatchedFixture>& patch) {
    QSet<QString> keys;
    for (const PatchedFixture& fixture : patch) {
        for (const PatchedControl& control : fixture.controls) {
            if (!control.dummy) {
                keys.insert(control.key);
            }
        }
    }
    return keys;
}

} // namespace

RigCheck::RigCheck(KnownProfiles table) : table_(std::move(table)) {
    for (const QVariant& profile : table_.value_or(QVariantMap())) {
        tableEntries_ += 1 + listValue(profile).size();
    }
}

bool RigCheck::hasRoomFor(ExpansionSize size) {
    lookedAtAll_ = lookedAtAll_ && left_.entries >= size.entries && left_.characters >= size.characters;
    return lookedAtAll_;
}

FaderKeys RigCheck::check(const QVariantMap& rig, const QString& place, Report& report) {
    checkFields(rig, rigFields, place.isEmpty() ? QString() : place.chopped(2), report);
    const Settings settings(rig);
    const QVariantMap own = settings.userProfiles();
    const KnownProfiles known =
        hasRoomFor({.entries = tableEntries_}) ? knownProfiles(table_, own) : KnownProfiles();
    checkOwnProfiles(own, known, place, report);
    FaderKeys keys = checkFixtures(settings.views(), known, place, report);
    checkCues(rig, keys, place, report);
    return keys;
}

// Those of the table are gone through with them each time, in search of loops.
void RigCheck::checkOwnProfiles(const QVariantMap& own, const KnownProfiles& known, const QString& place,
                                Report& report) {
    if (!own.isEmpty() && lookedAtAll_) {
        left_.entries -= tableEntries_;
        checkProfiles(own, known, place, report);
    }
}

FaderKeys RigCheck::checkFixtures(const QVariantList& placements, const KnownProfiles& known,
                                  const QString& place, Report& report) {
    for (qsizetype i = 0; i < placements.size(); ++i) {
        const QString name = Placement::fromEntry(placements[i]).name();
        checkPlacement(placements[i], known, place + fixtureAt(static_cast<std::size_t>(i), name), report);
    }
    if (!known || !hasRoomFor(largestRig)) {
        return {};
    }
    Profiles profiles;
    profiles.setTable(known);
    ExpansionSize left = largestRig;
    const std::vector<PatchedFixture> patch = patchedFixtures(placements, profiles, left);
    left_.entries -= largestRig.entries - left.entries;
    left_.characters -= largestRig.characters - left.characters;
    checkPatch(patch, place, report);
    return keysOf(patch);
}

void checkRecords(const QVariantList& records, const FaderKeys& keys, const QString& place, Report& report) {
    for (qsizetype i = 0; i < records.size(); ++i) {
        const QString where = place + QString(", record %1").arg(i + 1);
        if (records[i].typeId() != QMetaType::QVariantMap) {
            report.add(where, QString("is %1, which moves nothing").arg(described(records[i])),
                       "make it a dictionary");
            continue;
        }
        const QVariantMap record = records[i].toMap();
        checkFields(record, recordFields, where, report);
        const QVariant key = record.value(recordKeys::key);
        if (!key.isValid()) {
            report.add(where, "has no 'key' and moves nothing", "add the key of a fader");
        } else if (keys && key.typeId() == QMetaType::QString && !keys->contains(key.toString())) {
            report.add(where, QString("there is no fader %1").arg(quoted(key.toString())),
                       "correct the key or take the record out");
        }
    }
}
