#include "cues/CueStore.h"

#include "cues/CueNumber.h"
#include "cues/CueRecords.h"
#include "rig/Faders.h"
#include "settings/Settings.h"

#include <algorithm>

namespace {

bool comesBefore(const QString& first, const QString& second) {
    return compareCueNumbers(first, second) < 0;
}

// An order that goes round: what `isBehind` takes stands behind all others.
auto roundOrder(const auto& isBehind) {
    return [&isBehind](const QString& first, const QString& second) {
        const bool firstIsBehind = isBehind(first);
        return firstIsBehind == isBehind(second) ? comesBefore(first, second) : !firstIsBehind;
    };
}

} // namespace

QStringList CueStore::sortedCueList() const {
    return sortedCueNumbers(settings_.cues().keys());
}

std::optional<QString> CueStore::firstNumber() const {
    const QVariantMap cues = settings_.cues();
    const auto first = std::min_element(cues.keyBegin(), cues.keyEnd(), comesBefore);
    return first == cues.keyEnd() ? std::nullopt : std::optional(*first);
}

std::optional<QString> CueStore::lastNumber() const {
    const QVariantMap cues = settings_.cues();
    const auto last = std::max_element(cues.keyBegin(), cues.keyEnd(), comesBefore);
    return last == cues.keyEnd() ? std::nullopt : std::optional(*last);
}

// A step looks at each number once instead of sorting them all.
std::optional<QString> CueStore::numberAfter(const QString& number) const {
    const QVariantMap cues = settings_.cues();
    if (!cues.contains(number)) {
        return {};
    }
    const auto isBehind = [&](const QString& other) { return !comesBefore(number, other); };
    return *std::min_element(cues.keyBegin(), cues.keyEnd(), roundOrder(isBehind));
}

std::optional<QString> CueStore::numberBefore(const QString& number) const {
    const QVariantMap cues = settings_.cues();
    if (!cues.contains(number)) {
        return {};
    }
    const auto isBehind = [&](const QString& other) { return comesBefore(other, number); };
    return *std::max_element(cues.keyBegin(), cues.keyEnd(), roundOrder(isBehind));
}

QVariant CueStore::entry(const QString& number) const {
    return settings_.cues().value(number);
}

void CueStore::create(const QString& number) {
    settings_.createCues();
    settings_.setCue(number, QString(cuePlaceholder));
}

void CueStore::store(const QString& number) {
    CueRecords records;
    for (const DMXControl* const fader : faders_.sorted()) {
        const std::uint32_t value = fader->value();
        // At its default and without a fade time a fader rests, and executing a cue brings it to rest.
        if (value != fader->defaultValue() || fader->time() != 0) {
            records.append({.key = fader->key(), .value = value, .time = fader->time()});
        }
    }
    settings_.setCue(number, cueEntry(records));
}

void CueStore::remove(const QString& number) {
    settings_.removeCue(number);
}

void CueStore::compact() {
    for (const QString& number : settings_.cues().keys()) {
        settings_.setCue(number, compactCueEntry(entry(number)));
    }
}
