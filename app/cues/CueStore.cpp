#include "cues/CueStore.h"

#include "controls/DMXControl.h"
#include "cues/CueNumber.h"
#include "settings/Settings.h"

#include <algorithm>

namespace {

const char* const placeholder = "cue data goes here";

// At its default and without a fade time a control rests, and executing a cue brings it to rest.
bool isAtRest(const DMXControl& control) {
    return !control.notDefault() && control.time() == 0;
}

QVariantMap controlRecord(const QString& key, const DMXControl& control) {
    return {{"key", key},
            {"value", qlonglong{static_cast<std::int32_t>(control.value())}},
            {"time", double{control.time()}}};
}

} // namespace

QStringList CueStore::sortedCueList() const {
    QStringList numbers = settings_.cues().keys();
    std::ranges::sort(numbers,
                      [](const QString& a, const QString& b) { return compareCueNumbers(a, b) < 0; });
    return numbers;
}

QVariant CueStore::entry(const QString& number) const {
    return settings_.cues().value(number);
}

void CueStore::create(const QString& number) {
    settings_.createCues();
    settings_.setCue(number, QString(placeholder));
}

void CueStore::store(const QString& number) {
    QVariantList records;
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        if (!isAtRest(*control)) {
            records.append(controlRecord(key, *control));
        }
    }
    settings_.setCue(number, records);
}

void CueStore::remove(const QString& number) {
    settings_.removeCue(number);
}
