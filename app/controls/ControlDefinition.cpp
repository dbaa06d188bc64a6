#include "controls/ControlDefinition.h"

#include "plist/Reading.h"

ControlDefinition ControlDefinition::fromEntry(const QVariantMap& entry) {
    ControlDefinition definition;
    definition.name = stringValue(entry.value("name"));
    definition.defaultValue = unsignedValue(entry.value("default"));
    definition.header = booleanValue(entry.value("header"));
    definition.newlayer = booleanValue(entry.value("newlayer"));
    if (integerValue(entry.value("channels")) == 2) {
        definition.channels = 2;
        definition.max = 65535;
    }
    if (entry.contains("blank")) {
        definition.channels = unsignedValue(entry.value("blank"));
        definition.hide = true;
        definition.dummy = true;
    }
    if (entry.contains("label")) {
        definition.channels = 0;
        definition.dummy = true;
        definition.name = stringValue(entry.value("label"));
    }
    return definition;
}
