#include "settings/Configurations.h"

#include "plist/Reading.h"
#include "rig/Placement.h"
#include "settings/Settings.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

int shifted(int universe, int offset) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<int>(
        std::clamp<std::int64_t>(std::int64_t{universe} + offset, Limits::min(), Limits::max()));
}

} // namespace

Configurations::Configurations(const std::optional<QVariantMap>& table)
    : configurations_(table.value_or(QVariantMap())),
      defaultName_(stringValue(configurations_.take(defaultConfigurationKey))) {}

std::optional<QVariantMap> Configurations::configuration(const QString& name) const {
    const QVariant found = configurations_.value(name);
    return found.typeId() == QMetaType::QVariantMap ? std::optional(found.toMap()) : std::nullopt;
}

std::optional<QVariantMap> Configurations::shiftedConfiguration(const QString& name,
                                                                int universeOffset) const {
    std::optional<QVariantMap> copy = configuration(name);
    if (!copy) {
        return {};
    }
    QVariantList views = listValue(copy->value(rigKeys::views));
    for (QVariant& view : views) {
        if (view.typeId() != QMetaType::QVariantMap) {
            continue;
        }
        Placement placement = Placement::fromEntry(view);
        placement.setUniverse(shifted(placement.universe(), universeOffset));
        view = placement.toEntry();
    }
    copy->insert(rigKeys::views, views);
    return copy;
}
