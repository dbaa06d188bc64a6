#include "settings/Configurations.h"

#include "plist/Reading.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

constexpr QLatin1StringView defaultKey("_default_configuration");

qlonglong shifted(int universe, int offset) {
    using Limits = std::numeric_limits<std::int32_t>;
    return std::clamp<std::int64_t>(std::int64_t{universe} + offset, Limits::min(), Limits::max());
}

} // namespace

Configurations::Configurations(const std::optional<QVariantMap>& table)
    : configurations_(table.value_or(QVariantMap())),
      defaultName_(stringValue(configurations_.take(defaultKey))) {}

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
    QVariantList views = listValue(copy->value("views"));
    for (QVariant& view : views) {
        if (view.typeId() != QMetaType::QVariantMap) {
            continue;
        }
        QVariantMap placement = view.toMap();
        placement.insert("universe", shifted(integerValue(placement.value("universe")), universeOffset));
        view = placement;
    }
    copy->insert("views", views);
    return copy;
}
