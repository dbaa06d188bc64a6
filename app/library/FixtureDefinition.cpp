#include "library/FixtureDefinition.h"

#include <numeric>

namespace {

std::size_t slotsOf(const FixtureDefinition& definition) {
    return std::transform_reduce(definition.modes.begin(), definition.modes.end(), std::size_t{0},
                                 std::plus<>(), [](const FixtureMode& mode) { return mode.channels.size(); });
}

} // namespace

QString addMode(FixtureDefinition& definition, FixtureMode mode) {
    if (mode.name.isEmpty()) {
        return "a mode without a name";
    }
    if (mode.channels.empty()) {
        return QString("mode '%1' has no channel").arg(mode.name);
    }
    if (definition.modes.size() == FixtureBounds::modes) {
        return QString("it has more than %1 modes").arg(FixtureBounds::modes);
    }
    if (slotsOf(definition) + mode.channels.size() > FixtureBounds::slotsOfAllModes) {
        return QString("its modes have more than %1 slots").arg(FixtureBounds::slotsOfAllModes);
    }
    definition.modes.push_back(std::move(mode));
    return {};
}
