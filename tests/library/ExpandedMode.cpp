#include "library/ExpandedMode.h"

#include "library/FixtureImport.h"
#include "rig/ControlDefinition.h"
#include "rig/NameStack.h"
#include "rig/ProfileExpansion.h"
#include "rig/Profiles.h"

namespace {

QString slotsFrom(std::uint32_t slot, std::uint32_t count) {
    return count == 1 ? QString::number(slot) : QString("%1-%2").arg(slot).arg(slot + count - 1);
}

// What is said of a control; null for one that only counts the layer number up.
QString lineOf(const ControlDefinition& definition, const QString& key, std::uint32_t slot) {
    if (definition.dummy && definition.hide) {
        const QString blank = "blank " + slotsFrom(slot, definition.channels);
        return definition.channels > 0 ? blank : definition.header ? "column" : QString();
    }
    if (definition.dummy) {
        return "label " + key.section('.', -1);
    }
    return QString("%1 %2 = %3")
        .arg(key.section('.', 1), slotsFrom(slot, definition.channels))
        .arg(definition.defaultValue);
}

} // namespace

ExpandedMode expanded(const ImportedMode& mode) {
    Profiles profiles;
    profiles.setTable(mode.profiles);
    NameStack names;
    names.startWith("F");
    names.setLayerNum(1);
    ExpandedMode result;
    const auto add = [&](const QVariantMap& entry) {
        const ControlDefinition definition = ControlDefinition::fromEntry(entry);
        names.setLayerNum(names.layerNum() + (definition.newlayer ? 1 : 0));
        const QString key = names.key() + '.' + names.resolvedName(definition.name);
        if (!definition.dummy) {
            result.keys.append(key);
        }
        result.lines.append(lineOf(definition, key, static_cast<std::uint32_t>(result.slotCount) + 1));
        result.slotCount += static_cast<int>(definition.channels);
    };
    expandProfile({QVariantMap{{"profile", mode.profileName}}}, profiles, names, add);
    result.lines.removeAll(QString());
    return result;
}
