#include "cues/CueStepper.h"

#include "controls/DMXControl.h"
#include "cues/CueStore.h"
#include "cues/ModifierKeys.h"
#include "plist/Reading.h"

#include <QHash>
#include <QVariantMap>

namespace {

// Where two records carry the same key, the later one wins.
QHash<QString, QVariantMap> recordsByKey(const QVariantList& records) {
    QHash<QString, QVariantMap> byKey;
    byKey.reserve(records.size());
    for (const QVariant& value : records) {
        const QVariantMap record = mapValue(value);
        byKey.insert(stringValue(record.value("key")), record);
    }
    return byKey;
}

} // namespace

void CueStepper::setCurrCue(const std::optional<QString>& number) {
    currCue_ = number;
    emit currCueChanged();
}

void CueStepper::executeCue(const QVariant& entry) {
    if (entry.typeId() != QMetaType::QVariantList) {
        return;
    }
    const QHash<QString, QVariantMap> records = recordsByKey(entry.toList());
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        const auto record = records.find(key);
        if (record == records.end()) {
            control->setDefault();
        } else {
            control->setDMXValue(static_cast<std::uint32_t>(integerValue(record->value("value"))),
                                 floatValue(record->value("time")));
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
    const QStringList numbers = cues_.sortedCueList();
    const qsizetype place = currCue_ ? numbers.indexOf(*currCue_) : numbers.size() - 1;
    if (place >= 0) {
        choose(numbers.at((place + 1) % numbers.size()));
    }
}

void CueStepper::previous() {
    const QStringList numbers = cues_.sortedCueList();
    const qsizetype place = currCue_ ? numbers.indexOf(*currCue_) : 0;
    if (place >= 0 && !numbers.isEmpty()) {
        choose(numbers.at((place + numbers.size() - 1) % numbers.size()));
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
