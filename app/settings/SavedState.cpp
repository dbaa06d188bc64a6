#include "settings/SavedState.h"

#include "controls/DMXControl.h"
#include "fixtures/ControlView.h"
#include "plist/Reading.h"
#include "settings/LevelRecord.h"
#include "settings/UserDefaults.h"

#include <QVariantMap>

#include <unordered_map>

namespace {

QVariantMap levelRecord(const QString& key, std::uint32_t value) {
    return {{recordKeys::key, key},
            {recordKeys::value, qlonglong{static_cast<std::int32_t>(value)}},
            {recordKeys::time, qlonglong{0}}};
}

// Each registered control's key; no control stands under two.
std::unordered_map<const DMXControl*, QString> keysOfControls() {
    std::unordered_map<const DMXControl*, QString> keys;
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        keys.emplace(control.get(), key);
    }
    return keys;
}

} // namespace

void SavedState::saveState(const QString& stateKey) {
    QVariantList records;
    for (const auto& [key, control] : DMXControl::controlsByName()) {
        if (control->notDefault()) {
            records.append(levelRecord(key, control->value()));
        }
    }
    defaults_.setObject(records, stateKey);
}

void SavedState::restoreState(const QString& stateKey) const {
    for (const QVariant& saved : listValue(defaults_.objectForKey(stateKey))) {
        const QVariantMap record = mapValue(saved);
        DMXControl::setControl(stringValue(record.value(recordKeys::key)), record.value(recordKeys::value),
                               record.value(recordKeys::time));
    }
}

void SavedState::saveControlSelections() {
    const auto keys = keysOfControls();
    QVariantList selections;
    if (const auto* views = ControlView::controlViews()) {
        for (const auto& view : *views) {
            const auto found = keys.find(view->selectedControl());
            selections.append(found == keys.end() ? QString("") : found->second);
        }
    }
    defaults_.setObject(selections, controlSelectionsKey);
}

void SavedState::restoreControlSelections() const {
    const auto* views = ControlView::controlViews();
    const QVariantList selections = listValue(defaults_.objectForKey(controlSelectionsKey));
    const auto& registry = DMXControl::controlsByName();
    for (std::size_t i = 0; views && i < views->size() && i < static_cast<std::size_t>(selections.size());
         ++i) {
        const auto found = registry.find(stringValue(selections.at(static_cast<qsizetype>(i))));
        if (found == registry.end()) {
            continue;
        }
        (*views)[i]->setSelectedControl(found->second.get());
        found->second->makeFirstResponder();
    }
}
