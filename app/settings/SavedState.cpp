#include "settings/SavedState.h"

#include "plist/Reading.h"
#include "rig/Faders.h"
#include "rig/Fixtures.h"
#include "settings/LevelRecord.h"
#include "settings/ShowSnapshot.h"
#include "settings/UserDefaults.h"

#include <QVariantMap>

namespace {

QVariantMap levelRecord(const QString& key, std::uint32_t value) {
    return {{recordKeys::key, key},
            {recordKeys::value, qlonglong{static_cast<std::int32_t>(value)}},
            {recordKeys::time, qlonglong{0}}};
}

} // namespace

void SavedState::saveState(const QString& stateKey) {
    QVariantList records;
    for (const KeptLevel& level : presentLevels(faders_)) {
        records.append(levelRecord(level.key, level.value));
    }
    defaults_.setObject(records, stateKey);
}

void SavedState::restoreState(const QString& stateKey) const {
    for (const QVariant& saved : listValue(defaults_.objectForKey(stateKey))) {
        const QVariantMap record = mapValue(saved);
        faders_.setControl(stringValue(record.value(recordKeys::key)), record.value(recordKeys::value),
                           record.value(recordKeys::time));
    }
}

void SavedState::saveControlSelections() {
    QVariantList selections;
    for (const auto& fixture : fixtures_.rows()) {
        const DMXControl* const selected = fixture->selectedControl();
        const bool isFound = selected && faders_.find(selected->key()) == selected;
        selections.append(isFound ? selected->key() : QString(""));
    }
    defaults_.setObject(selections, controlSelectionsKey);
}

void SavedState::restoreControlSelections() const {
    const QVariantList selections = listValue(defaults_.objectForKey(controlSelectionsKey));
    for (qsizetype row = 0; row < selections.size(); ++row) {
        Fixture* const fixture = fixtures_.at(static_cast<std::size_t>(row));
        DMXControl* const control = faders_.find(stringValue(selections.at(row)));
        if (fixture && control) {
            fixture->setSelectedControl(control);
            control->becomeFirstResponder();
        }
    }
}
