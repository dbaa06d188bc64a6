#include "check/DefaultsCheck.h"

#include "artnet/Address.h"
#include "check/Report.h"
#include "check/StoredTypes.h"
#include "plist/Reading.h"

#include <array>

namespace {

constexpr QLatin1StringView statePrefix("saved_state: ");
constexpr QLatin1StringView windowPrefix("faderhall_");
constexpr QLatin1StringView selectionsKey("control_selections");
constexpr QLatin1StringView addressKey("tx_address");

constexpr std::array fields = {StoredField{QLatin1StringView("configName"), StoredType::Text},
                               StoredField{QLatin1StringView("mainWindowTitle"), StoredType::Text},
                               StoredField{addressKey, StoredType::Text},
                               StoredField{selectionsKey, StoredType::List}};

void checkAddress(const QVariantMap& defaults, Report& report) {
    const QString address = stringValue(defaults.value(addressKey));
    if (!address.isNull() && !parseAddress(address.toStdString())) {
        report.add({}, QString("'%1' is %2, which will be refused").arg(addressKey, quoted(address)),
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
    checkElements(StoredType::Text, defaults.value(selectionsKey), selectionsKey, report);
    for (auto value = defaults.begin(); value != defaults.end(); ++value) {
        if (value.key().startsWith(statePrefix)) {
            checkLevels(value.key(), *value, keys.value(value.key().sliced(statePrefix.size())), report);
        } else if (value.key().startsWith(windowPrefix)) {
            checkWindow(value.key(), *value, report);
        }
    }
}
