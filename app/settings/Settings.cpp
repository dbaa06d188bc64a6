#include "settings/Settings.h"

#include "plist/Reading.h"

#include <algorithm>

namespace {

// Takes the value out, so that it is changed in place and not in a copy.
template <typename Change>
void changeMap(QVariantMap& dictionary, const QString& key, Change change) {
    QVariantMap map = dictionary.take(key).toMap();
    change(map);
    dictionary.insert(key, map);
}

} // namespace

QVariantList Settings::views() const {
    return dictionary_ ? listValue(dictionary_->value(rigKeys::views)) : QVariantList();
}

std::optional<Placement> Settings::placement(qsizetype index) const {
    const QVariant entry = views().value(index);
    return entry.typeId() == QMetaType::QVariantMap ? std::optional(Placement::fromEntry(entry))
                                                    : std::nullopt;
}

void Settings::setPlacement(qsizetype index, const Placement& placement) {
    QVariantList placements = views();
    placements[index] = placement.toEntry();
    setViews(placements);
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
    dictionary_->insert(rigKeys::views, placements);
}

QVariantMap Settings::userProfiles() const {
    return dictionary_ ? mapValue(dictionary_->value(rigKeys::profiles)) : QVariantMap();
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
    dictionary_->insert(rigKeys::profiles, profiles);
}

QVariantMap Settings::cues() const {
    return dictionary_ ? mapValue(dictionary_->value(rigKeys::cues)) : QVariantMap();
}

bool Settings::hasCues() const {
    return dictionary_ && dictionary_->value(rigKeys::cues).typeId() == QMetaType::QVariantMap;
}

void Settings::createCues() {
    if (dictionary_ && !hasCues()) {
        dictionary_->insert(rigKeys::cues, QVariantMap());
    }
}

void Settings::setCue(const QString& number, const QVariant& entry) {
    if (hasCues()) {
        changeMap(*dictionary_, rigKeys::cues, [&](QVariantMap& cues) { cues.insert(number, entry); });
    }
}

void Settings::removeCue(const QString& number) {
    if (hasCues()) {
        changeMap(*dictionary_, rigKeys::cues, [&](QVariantMap& cues) { cues.remove(number); });
    }
}
