#include "cues/CueStepper.h"

#include "cues/CueRecords.h"
#include "cues/CueStore.h"
#include "rig/Faders.h"

#include <vector>

namespace {

FaderChange atRest(DMXControl& fader) {
    return {.fader = &fader, .value = fader.defaultValue(), .time = 0};
}

// Records and faders mostly stand in the same order and are walked side by side; nothing when a record is not
// met on the way, since it stands out of order or names no fader. That texts are alike is told faster than
// their order.
std::optional<std::vector<FaderChange>> changesInStep(const CueRecords& records, const Faders& faders) {
    std::vector<FaderChange> changes;
    changes.reserve(faders.count());
    auto record = records.cbegin();
    for (DMXControl* const fader : faders.sorted()) {
        if (record != records.cend() && record->key == fader->key()) {
            changes.push_back({.fader = fader, .value = record->value, .time = record->time});
            ++record;
        } else {
            changes.push_back(atRest(*fader));
        }
    }
    return record == records.cend() ? std::optional(std::move(changes)) : std::nullopt;
}

// The same with records of other faders in between.
std::vector<FaderChange> changesOf(const CueRecords& sorted, const Faders& faders) {
    std::vector<FaderChange> changes;
    changes.reserve(faders.count());
    auto record = sorted.cbegin();
    for (DMXControl* const fader : faders.sorted()) {
        int order = 1;
        while (record != sorted.cend() && (order = record->key.compare(fader->key())) < 0) {
            ++record;
        }
        if (record != sorted.cend() && order == 0) {
            changes.push_back({.fader = fader, .value = record->value, .time = record->time});
        } else {
            changes.push_back(atRest(*fader));
        }
    }
    return changes;
}

} // namespace

void CueStepper::setCurrCue(const std::optional<QString>& number) {
    currCue_ = number;
    emit currCueChanged();
}

void CueStepper::executeCue(const QVariant& entry) {
    if (const std::optional<CueRecords> records = recordsAsTheyStand(entry)) {
        const auto changes = changesInStep(*records, faders_);
        Faders::setDMXValues(changes ? *changes : changesOf(*recordsByKey(entry), faders_));
    }
}

void CueStepper::choose(const QString& number, Choosing choosing) {
    setCurrCue(number);
    if (choosing == Choosing::Execute) {
        executeCue(cues_.entry(number));
    }
}

void CueStepper::next(Choosing choosing) {
    chooseIfAny(currCue_ ? cues_.numberAfter(*currCue_) : cues_.firstNumber(), choosing);
}

void CueStepper::previous(Choosing choosing) {
    chooseIfAny(currCue_ ? cues_.numberBefore(*currCue_) : cues_.lastNumber(), choosing);
}

void CueStepper::chooseIfAny(const std::optional<QString>& number, Choosing choosing) {
    if (number) {
        choose(*number, choosing);
    }
}

void CueStepper::storeCue() {
    if (currCue_) {
        cues_.store(*currCue_);
    }
}

void CueStepper::clear() {
    executeCue(QVariantList());
    setCurrCue({});
}

void CueStepper::clearTiming() {
    for (DMXControl* const fader : faders_.sorted()) {
        fader->setTime(0);
    }
    setCurrCue({});
}

bool CueStepper::deleteCue() {
    if (!currCue_) {
        return false;
    }
    cues_.remove(*currCue_);
    setCurrCue({});
    return true;
}
