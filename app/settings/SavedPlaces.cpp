#include "settings/SavedPlaces.h"

#include "plist/Reading.h"
#include "settings/UserDefaults.h"

std::optional<QPoint> SavedPlaces::place(const QString& autosavename) const {
    const QVariantList coordinates = listValue(defaults_.objectForKey(autosavename));
    if (coordinates.size() != 2) {
        return {};
    }
    return QPoint(integerValue(coordinates[0]), integerValue(coordinates[1]));
}

void SavedPlaces::setPlace(const QString& autosavename, QPoint place) {
    defaults_.setObject(QVariantList{qlonglong{place.x()}, qlonglong{place.y()}}, autosavename);
}

void SavedPlaces::forgetPlace(const QString& autosavename) {
    defaults_.setObject({}, autosavename);
}
