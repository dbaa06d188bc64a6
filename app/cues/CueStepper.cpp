#include "cues/CueStepper.h"

#include "controls/DMXControl.h"
#include "cues/CueRecords.h"
#include "cues/CueStore.h"
#include "cues/ModifierKeys.h"

#include <algorithm>

void CueStepper::setCurrCue(const std::optional<QString>& number) {
    currCue_ = number;
    emit currCueChanged();
}

// Records and controls stand in the same order and are walked side by side.
void CueStepper::executeCue(const QVariant& entry) {
    const std::optional<CueRecords> records = recordsByKey(entry);
    if (!records) {
        return;
    }
    auto record = records->cbegin();
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        const auto isAtOrBeyond = [&key = key](const CueRecord& candidate) { return candidate.key >= key; };
        record = std::find_if(record, records->cend(), isAtOrBeyond);
        if (record != records->cend() && record->key == key) {
            control->setDMXValue(record->value, record->time);
        } else {
            control->setDefault();
        }
    }
}

void CueStepper::choose(const QString& number) {
    setCurrCue(number);
    if (!optionKeyIsHeld()) {
        executeCue(cues_.entry(number));
    }
}

void CueStepper::next() {
    chooseIfAny(currCue_ ? cues_.numberAfter(*currCue_) : cues_.firstNumber());
}

void CueStepper::previous() {
    chooseIfAny(currCue_ ? cues_.numberBefore(*currCue_) : cues_.lastNumber());
}

void CueStepper::chooseIfAny(const std::optional<QString>& number) {
    if (number) {
        choose(*number);
    }
}

void CueStepper::storeCue() {
    if (currCue_) {
        cues_.store(*currCue_);
    }
}

void CueStepper::clear() {
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        control->setDefault();
        control->update();
    }
    setCurrCue({});
}

void CueStepper::clearTiming() {
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        control->setTime(0);
        control->update();
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
