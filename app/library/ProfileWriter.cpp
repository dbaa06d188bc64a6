#include "library/ProfileWriter.h"

#include "library/ProfileEntries.h"
#include "library/RepeatedHeads.h"

#include <map>

namespace {

constexpr std::size_t slotsOfUniverse = 512;

// A head's rows are a caption and its faders; that of a single fader goes without a caption.
bool hasCaption(const RepeatedHead& head) {
    return head.controlCount > 1;
}

// The number in the head's names is the layer number, which the last entry counts up for the next head.
EntryBlock headProfile(std::span<const ModeControl> controls, bool withCaption) {
    QList<EntryBlock> blocks;
    if (withCaption) {
        blocks.append({.entries = {QVariantMap{{"label", "Head #"}}}, .rows = 1});
    }
    for (const ModeControl& control : namedWithinHead(controls)) {
        blocks.append(entryFor(control, withCaption ? control.name : control.name + " #"));
    }
    blocks.append({.entries = {QVariantMap{{"blank", qlonglong{0}}, {"newlayer", true}}}, .rows = 0});
    EntryBlock profile{.entries = inColumns(blocks), .rows = 0};
    for (const EntryBlock& block : blocks) {
        profile.rows += block.rows;
    }
    return profile;
}

// A name with a point must not look like the key of a control within a head.
QString nameBesideHeads(const QString& name) {
    return name.startsWith("Head ") ? QString(name).replace('.', ',') : name;
}

class ModeWriter {
public:
    ModeWriter(const FixtureMode& mode, QString profileName, UniqueNames& profileNames)
        : controls_(controlsOf(mode)), heads_(repeatedHeads(mode.heads, controls_)),
          profileName_(std::move(profileName)), profileNames_(profileNames) {}

    QVariantMap write() {
        QList<EntryBlock> blocks;
        auto head = heads_.begin();
        for (std::size_t i = 0; i < controls_.size();) {
            if (head != heads_.end() && head->firstControl == i) {
                blocks.append(enter(*head));
                i += head->controlCount;
                ++head;
            } else {
                blocks.append(entryFor(controls_[i], takeName(controls_[i])));
                ++i;
            }
        }
        profiles_.insert(profileName_, inColumns(blocks));
        return profiles_;
    }

private:
    struct NestedProfile {
        QString name;
        int rows = 0;
    };

    QString takeName(const ModeControl& control) {
        return control.isBlank ? QString() : names_.take(nameBesideHeads(control.name));
    }

    EntryBlock enter(const RepeatedHead& head) {
        if (!nested_.contains(head.kind)) {
            const std::span controls = std::span(controls_).subspan(head.firstControl, head.controlCount);
            const EntryBlock profile = headProfile(controls, hasCaption(head));
            const QString name = profileNames_.take(profileName_ + ", Head");
            profiles_.insert(name, profile.entries);
            nested_[head.kind] = {.name = name, .rows = profile.rows};
        }
        const NestedProfile& profile = nested_[head.kind];
        return {.entries = {QVariantMap{{"profile", profile.name}, {"name", "Head #"}}},
                .rows = profile.rows};
    }

    std::vector<ModeControl> controls_;
    std::vector<RepeatedHead> heads_;
    QString profileName_;
    UniqueNames& profileNames_;
    UniqueNames names_;
    QVariantMap profiles_;
    std::map<std::size_t, NestedProfile> nested_; // by the kind of head
};

} // namespace

ImportedMode ProfileWriter::write(const FixtureMode& mode) {
    const QString name = readableText(mode.name);
    ImportedMode imported{.profileName = profileNames_.take(QString("%1 - %2").arg(fixture_, name)),
                          .mode = name,
                          .channels = static_cast<int>(mode.channels.size()),
                          .profiles = {},
                          .remarks = mode.remarks};
    imported.profiles = ModeWriter(mode, imported.profileName, profileNames_).write();
    if (mode.channels.size() > slotsOfUniverse) {
        imported.remarks.append(
            QString("it has %1 slots and a universe has %2: what lies beyond sends nothing")
                .arg(mode.channels.size())
                .arg(slotsOfUniverse));
    }
    return imported;
}
