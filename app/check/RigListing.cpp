#include "check/RigListing.h"

#include "check/FileCheck.h"
#include "check/Report.h"
#include "check/RigFile.h"
#include "cues/CueNumber.h"
#include "cues/CueRecords.h"
#include "cues/CueStore.h"
#include "patch/Patch.h"
#include "plist/Reading.h"
#include "rig/ControlDefinition.h"
#include "rig/Placement.h"
#include "rig/Profiles.h"
#include "rig/ShownText.h"
#include "settings/Configurations.h"
#include "settings/Settings.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>
#include <vector>

namespace {

using Row = QStringList;

QString slotsOf(const PatchedFixture& fixture) {
    const std::uint64_t count = fixture.slotCount();
    if (count == 0) {
        return "-";
    }
    const auto address = std::max<std::int64_t>(static_cast<std::int32_t>(fixture.address), 1);
    return count == 1 ? QString::number(address)
                      : QString("%1-%2").arg(address).arg(address + static_cast<std::int64_t>(count) - 1);
}

QString profilesOf(const Placement& placement) {
    QStringList names;
    for (const QVariant& entry : placement.profiles()) {
        const QString profile = stringValue(mapValue(entry).value(entryKeys::profile));
        names.append(profile.isNull() ? QString("(own faders)") : profile);
    }
    names.removeDuplicates();
    return shownName(names.join(", "));
}

Row fixtureRow(const PatchedFixture& fixture, const Placement& placement) {
    const auto faders =
        std::ranges::count_if(fixture.controls, [](const PatchedControl& control) { return !control.dummy; });
    return {shownName(fixture.name),
            QString::number(fixture.universe),
            QString::number(static_cast<std::int32_t>(fixture.address)),
            slotsOf(fixture),
            QString::number(faders),
            profilesOf(placement)};
}

std::vector<Row> fixtureRows(const QVariantList& placements, const Profiles& profiles) {
    std::vector<Row> rows{{"Fixture", "Universe", "Address", "Slots", "Faders", "Profile"}};
    ExpansionSize left = largestRig;
    const std::vector<PatchedFixture> patch = patchedFixtures(placements, profiles, left);
    for (std::size_t i = 0; i < patch.size(); ++i) {
        rows.push_back(fixtureRow(patch[i], Placement::fromEntry(placements.at(static_cast<qsizetype>(i)))));
    }
    return rows;
}

Row cueRow(const QString& number, const QVariant& entry) {
    const std::optional<CueRecords> records = recordsByKey(entry);
    if (!records) {
        return {shownName(number), "-", "never stored"};
    }
    float longest = 0;
    int faders = 0;
    for (const CueRecord& record : *records) {
        longest = std::max(longest, record.time);
        faders += record.key.isEmpty() ? 0 : 1;
    }
    return {shownName(number), QString::number(faders), QString("%1 s").arg(static_cast<double>(longest))};
}

std::vector<Row> cueRows(const QVariantMap& rig) {
    std::vector<Row> rows{{"Cue", "Faders", "Longest fade"}};
    const QVariantMap cues = Settings(rig).cues();
    for (const QString& number : sortedCueNumbers(cues.keys())) {
        rows.push_back(cueRow(number, cues.value(number)));
    }
    return rows;
}

// Columns as wide as their widest cell, two blanks apart.
QStringList asTable(const std::vector<Row>& rows) {
    static const QRegularExpression trailingBlanks(" +$");
    std::vector<qsizetype> widths(static_cast<std::size_t>(rows.front().size()));
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < widths.size(); ++column) {
            widths[column] = std::max(widths[column], row[static_cast<qsizetype>(column)].size());
        }
    }
    QStringList lines;
    for (const Row& row : rows) {
        QString line;
        for (std::size_t column = 0; column < widths.size(); ++column) {
            line += row[static_cast<qsizetype>(column)].leftJustified(widths[column] + 2);
        }
        lines.append(onOneLine(line.remove(trailingBlanks)));
    }
    return lines;
}

std::optional<QVariantMap> readFile(const QString& path, ListResult& result) {
    const RigFile file = readRigFile(path);
    if (file.state == RigFile::NotLookedAt) {
        result.notLookedAt.append(path + ": " + file.reason);
    }
    return file.dictionary;
}

std::optional<QVariantMap> readTable(const RigPaths& paths, const char* name, ListResult& result) {
    return readFile(QDir(paths.tables).filePath(name), result);
}

} // namespace

QStringList rigListing(const QVariantMap& rig, const Profiles& profiles) {
    return asTable(fixtureRows(Settings(rig).views(), profiles)) + QStringList{""} + asTable(cueRows(rig));
}

ListResult listFiles(const RigPaths& paths) {
    ListResult result;
    if (!QDir(paths.tables).exists()) {
        result.notLookedAt.append(paths.tables + ": No such folder");
    }
    std::optional<QVariantMap> table = readTable(paths, "profiles.plist", result);
    const Configurations configurations(readTable(paths, "configurations.plist", result));
    std::optional<QVariantMap> rig = readFile(paths.settings, result);
    if (!rig) {
        rig = configurations.configuration(configurations.defaultName());
    }
    if (table && rig) {
        table->insert(Settings(rig).userProfiles());
    }
    Profiles profiles;
    profiles.setTable(table);
    result.lines = rigListing(rig.value_or(QVariantMap()), profiles);
    return result;
}
