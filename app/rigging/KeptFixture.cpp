#include "rigging/KeptFixture.h"

#include "rig/Fixture.h"

#include <algorithm>

KeptFixture keptFixture(const Fixture& fixture, const QVariant& placement) {
    KeptFixture kept{.placement = placement, .levels = {}, .selected = {}, .windowPlace = {}};
    for (const auto& control : fixture.controls()) {
        if (control.get() == fixture.selectedControl()) {
            kept.selected = kept.levels.size();
        }
        kept.levels.push_back({.value = control->value(), .time = control->time()});
    }
    return kept;
}

void restoreControls(const KeptFixture& kept, const Fixture& fixture) {
    const std::size_t count = std::min(kept.levels.size(), fixture.controls().size());
    for (std::size_t i = 0; i < count; ++i) {
        DMXControl& control = *fixture.controls()[i];
        control.setDMXValue(kept.levels[i].value, 0);
        control.setTime(kept.levels[i].time);
    }
    if (kept.selected && *kept.selected < fixture.controls().size()) {
        fixture.controls()[*kept.selected]->becomeFirstResponder();
    }
}
