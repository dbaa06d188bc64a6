#include "settings/Settings.h"

#include "plist/Reading.h"

#include <algorithm>

namespace {

constexpr QLatin1StringView viewsKey("views");
constexpr QLatin1StringView profilesKey("profiles");
constexpr QLatin1StringView cuesKey("cues");

// Takes the value out, so that it is changed in place and not in a copy.
template <typename Change>
void changeMap(QVariantMap& dictionary, const QString& key, Change change) {
    QVariantMap map = dictionary.take(key).toMap();
    change(map);
    dictionary.insert(key, map);
}

} // namespace

QVariantList Settings::views() const {
    return dictionary_ ? listValue(dictionary_->value(viewsKey)) : QVariantList();
}

bool Settings::setPlacement(qsizetype index, const QString& key, int value) {
    QVariantList placements = views();
    if (index < 0 || index >= placements.size() || placements.at(index).typeId() != QMetaType::QVariantMap) {
        return false;
    }
    QVariantMap placement = placements.at(index).toMap();
    placement.insert(key, static_cast<qlonglong>(value));
    placements[index] = placement;
    dictionary_->insert(viewsKey, placements);
    return true;
}

void Settings::insertPlacements(qsizetype index, const QVariantList& placements) {
    const QVariantList present = views();
    const qsizetype at = std::min(index, present.size());
    setViews(present.first(at) + placements + present.sliced(at));
}

void Settings::removePlacements(qsizetype index, qsizetype count) {
    QVariantList placements = views();
    placements.remove(index, count);
    setViews(placements);
}

void Settings::setViews(const QVariantList& placements) {
    if (!dictionary_) {
        dictionary_.emplace();
    }
    dictionary_->insert(viewsKey, placements);
}

QVariantMap Settings::userProfiles() const {
    return dictionary_ ? mapValue(dictionary_->value(profilesKey)) : QVariantMap();
}

void Settings::setUserProfile(const QString& name, const QVariant& profile) {
    QVariantMap profiles = userProfiles();
    if (profile.isValid()) {
        profiles.insert(name, profile);
    } else {
        profiles.remove(name);
    }
    if (!dictionary_) {
        dictionary_.emplace();
    }
    dictionary_->insert(profilesKey, profiles);
}

QVariantMap Settings::cues() const {
    return dictionary_ ? mapValue(dictionary_->value(cuesKey)) : QVariantMap();
}

bool Settings::hasCues() const {
    return dictionary_ && dictionary_->value(cuesKey).typeId() == QMetaType::QVariantMap;
}

void Settings::createCues() {
    if (dictionary_ && !hasCues()) {
        dictionary_->insert(cuesKey, QVariantMap());
    }
}

void Settings::setCue(const QString& number, const QVariant& entry) {
    if (hasCues()) {
        changeMap(*dictionary_, cuesKey, [&](QVariantMap& cues) { cues.insert(number, entry); });
    }
}

void Settings::removeCue(const QString& number) {
    if (hasCues()) {
        changeMap(*dictionary_, cuesKey, [&](QVariantMap& cues) { cues.remove(number); });
    }
}
