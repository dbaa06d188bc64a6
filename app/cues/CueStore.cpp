#include "cues/CueStore.h"

#include "controls/DMXControl.h"
#include "cues/CueNumber.h"
#include "cues/CueRecords.h"
#include "settings/Settings.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace {

// At its default and without a fade time a control rests, and executing a cue brings it to rest.
bool isAtRest(const DMXControl& control) {
    return !control.notDefault() && control.time() == 0;
}

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

// Each number is taken apart once and not for each comparison. The order is compareCueNumbers()'s.
QStringList CueStore::sortedCueList() const {
    std::vector<std::pair<CueNumberComponents, QString>> sorted;
    for (const QString& number : settings_.cues().keys()) {
        sorted.emplace_back(cueNumberComponents(number), number);
    }
    std::ranges::sort(sorted, std::less());
    QStringList numbers;
    for (auto& [components, number] : sorted) {
        numbers.append(std::move(number));
    }
    return numbers;
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
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        if (!isAtRest(*control)) {
            records.append({.key = key, .value = control->value(), .time = control->time()});
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
