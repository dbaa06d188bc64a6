#include "check/DefaultsCheck.h"

#include "artnet/Address.h"
#include "check/Report.h"
#include "check/StoredTypes.h"
#include "plist/Reading.h"
#include "rig/WindowPlaces.h"
#include "settings/Configurations.h"
#include "settings/Destination.h"
#include "settings/SavedPlaces.h"
#include "settings/SavedState.h"

#include <array>

namespace {

constexpr std::array fields = {
    StoredField{configNameKey, StoredType::Text}, StoredField{mainWindowTitleKey, StoredType::Text},
    StoredField{destinationKey, StoredType::Text}, StoredField{controlSelectionsKey, StoredType::List}};

void checkAddress(const QVariantMap& defaults, Report& report) {
    const QString address = stringValue(defaults.value(destinationKey));
    if (!address.isNull() && !parseAddress(address.toStdString())) {
        report.add({}, QString("'%1' is %2, which will be refused").arg(destinationKey, quoted(address)),
                   "make it four numbers from 0 to 255 with points between them");
    }
}

void checkElements(StoredType type, const QVariant& list, const QString& key, Report& report) {
    const QVariantList elements = listValue(list);
    for (qsizetype i = 0; i < elements.size(); ++i) {
        checkType(type, elements[i], {}, quoted(key) + QString(", element %1").arg(i + 1), report);
    }
}

void checkWindow(const QString& key, const QVariant& place, Report& report) {
    if (place.typeId() == QMetaType::QVariantList && place.toList().size() == 2) {
        checkElements(StoredType::Integer, place, key, report);
    } else {
        report.add({}, QString("%1 is no place of a window").arg(quoted(key)),
                   "make it an array of two integers");
    }
}

void checkLevels(const QString& key, const QVariant& levels, const FaderKeys& keys, Report& report) {
    checkType(StoredType::List, levels, key, {}, report);
    checkRecords(listValue(levels), keys, quoted(key), report);
}

} // namespace

void checkDefaults(const QVariantMap& defaults, const QMap<QString, FaderKeys>& keys, Report& report) {
    checkFields(defaults, fields, {}, report);
    checkAddress(defaults, report);
    checkElements(StoredType::Text, defaults.value(controlSelectionsKey), controlSelectionsKey, report);
    for (auto value = defaults.begin(); value != defaults.end(); ++value) {
        if (value.key().startsWith(stateKeyPrefix)) {
            checkLevels(value.key(), *value, keys.value(value.key().sliced(stateKeyPrefix.size())), report);
        } else if (value.key().startsWith(autosavenamePrefix)) {
            checkWindow(value.key(), *value, report);
        }
    }
}
