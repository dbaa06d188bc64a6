#include "rig/ControlDefinition.h"

#include "plist/Reading.h"
#include "rig/Attributes.h"

ControlDefinition ControlDefinition::fromEntry(const QVariantMap& entry) {
    ControlDefinition definition;
    definition.name = stringValue(entry.value(entryKeys::name));
    definition.defaultValue = unsignedValue(entry.value(entryKeys::defaultValue));
    definition.header = booleanValue(entry.value(entryKeys::header));
    definition.newlayer = booleanValue(entry.value(entryKeys::newlayer));
    if (integerValue(entry.value(entryKeys::channels)) == 2) {
        definition.channels = 2;
        definition.max = 65535;
    }
    if (entry.contains(entryKeys::blank)) {
        definition.channels = unsignedValue(entry.value(entryKeys::blank));
        definition.hide = true;
        definition.dummy = true;
    }
    if (entry.contains(entryKeys::label)) {
        definition.channels = 0;
        definition.dummy = true;
        definition.name = stringValue(entry.value(entryKeys::label));
    }
    if (!definition.dummy) {
        const QString attribute = stringValue(entry.value(entryKeys::attribute));
        definition.attribute = attribute.isNull() ? attributeOfName(definition.name) : attribute;
    }
    return definition;
}
