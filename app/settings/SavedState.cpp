#include "settings/SavedState.h"

#include "controls/DMXControl.h"
#include "fixtures/ControlView.h"
#include "plist/Reading.h"
#include "settings/UserDefaults.h"

#include <QVariantMap>

#include <algorithm>

namespace {

const char* const selectionsKey = "control_selections";

QVariantMap levelRecord(const QString& key, std::uint32_t value) {
    return {{"key", key}, {"value", qlonglong{static_cast<std::int32_t>(value)}}, {"time", qlonglong{0}}};
}

// The key under which the control stands in the registry; "" when it stands under none.
QString registeredKey(const DMXControl* control) {
    const auto& registry = DMXControl::controlsByName();
    const auto found =
        std::ranges::find_if(registry, [&](const auto& entry) { return entry.second.get() == control; });
    return control && found != registry.end() ? found->first : QString("");
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
        DMXControl::setControl(stringValue(record.value("key")), record.value("value"), record.value("time"));
    }
}

void SavedState::saveControlSelections() {
    QVariantList selections;
    if (const auto* views = ControlView::controlViews()) {
        for (const auto& view : *views) {
            selections.append(registeredKey(view->selectedControl()));
        }
    }
    defaults_.setObject(selections, selectionsKey);
}

void SavedState::restoreControlSelections() const {
    const auto* views = ControlView::controlViews();
    const QVariantList selections = listValue(defaults_.objectForKey(selectionsKey));
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
