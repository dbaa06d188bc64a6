#include "rigging/KeptFixture.h"

#include "controls/DMXControl.h"
#include "fixtures/ControlView.h"

#include <algorithm>

KeptFixture keptFixture(const ControlView& view, const QVariant& placement) {
    KeptFixture kept{
        .placement = placement, .levels = {}, .selected = {}, .windowPlace = view.rememberedPlace()};
    for (const auto& control : view.controls()) {
        if (control.get() == view.selectedControl()) {
            kept.selected = kept.levels.size();
        }
        kept.levels.push_back({.value = control->value(), .time = control->time()});
    }
    return kept;
}

void restoreControls(const KeptFixture& fixture, const ControlView& view) {
    const std::size_t count = std::min(fixture.levels.size(), view.controls().size());
    for (std::size_t i = 0; i < count; ++i) {
        DMXControl& control = *view.controls()[i];
        control.setDMXValue(fixture.levels[i].value, 0);
        control.setTime(fixture.levels[i].time);
    }
    if (fixture.selected && *fixture.selected < view.controls().size()) {
        view.controls()[*fixture.selected]->makeFirstResponder();
    }
}
