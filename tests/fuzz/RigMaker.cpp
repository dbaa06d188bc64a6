#include "RigMaker.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <limits>

namespace {

constexpr int longestList = 12;

} // namespace

QVariantMap RigMaker::settings() {
    return {{"profiles", profiles()}, {"views", list([this] { return placement(); })}, {"cues", cues()}};
}

QVariantMap RigMaker::profiles() {
    QVariantMap table;
    for (int left = bytes_.ConsumeIntegralInRange(0, longestList); left > 0; --left) {
        table.insert(name(), bytes_.ConsumeBool() ? QVariant(entries()) : anything());
    }
    return table;
}

QVariantList RigMaker::entries() {
    return list([this] { return entry(); });
}

QVariantMap RigMaker::entry() {
    QVariantMap entry;
    const auto flags = bytes_.ConsumeIntegral<std::uint8_t>();
    const auto insertIf = [&entry, flags](int bit, const QString& key, auto make) {
        if ((flags >> bit & 1) != 0) {
            entry.insert(key, make());
        }
    };
    insertIf(0, "name", [this] { return name(); });
    insertIf(1, "profile", [this] { return name(); });
    insertIf(2, "channels", [this] { return number(); });
    insertIf(3, "default", [this] { return number(); });
    insertIf(4, "header", [this] { return anything(); });
    insertIf(5, "newlayer", [this] { return anything(); });
    insertIf(6, "blank", [this] { return number(); });
    insertIf(7, "label", [this] { return name(); });
    return entry;
}

QVariantMap RigMaker::placement() {
    return {{"name", name()},
            {"universe", number()},
            {"address", number()},
            {"layer", number()},
            {"profiles", entries()}};
}

QVariantMap RigMaker::cues() {
    QVariantMap cues;
    for (int left = bytes_.ConsumeIntegralInRange(0, longestList); left > 0; --left) {
        cues.insert(name(), bytes_.ConsumeBool() ? QVariant(list([this] { return record(); })) : anything());
    }
    return cues;
}

QVariantMap RigMaker::record() {
    return {{"key", name() + u'.' + name()}, {"value", number()}, {"time", number()}};
}

// Few names, so that they meet.
QString RigMaker::name() {
    const char* const names[] = {"", "A", "B", "C", "D", "#", "A#", "1", "2.5", "A.B", "%1", "a\nb"};
    return bytes_.ConsumeIntegralInRange(0, 15) == 0
               ? QString::fromStdString(bytes_.ConsumeRandomLengthString(64))
               : QString(bytes_.PickValueInArray(names));
}

QVariant RigMaker::number() {
    switch (bytes_.ConsumeIntegralInRange(0, 5)) {
    case 0:
        return bytes_.ConsumeIntegral<qlonglong>();
    case 1:
        return bytes_.ConsumeFloatingPoint<double>();
    case 2:
        return std::numeric_limits<double>::quiet_NaN();
    case 3:
        return QString::number(bytes_.ConsumeIntegral<int>()) + name();
    default:
        return bytes_.ConsumeIntegralInRange<qlonglong>(-2, 600);
    }
}

QVariant RigMaker::anything() {
    switch (bytes_.ConsumeIntegralInRange(0, 4)) {
    case 0:
        return bytes_.ConsumeBool();
    case 1:
        return number();
    case 2:
        return name();
    case 3:
        return QVariantList{number(), name()};
    default:
        return QVariantMap{{name(), number()}};
    }
}

template <typename Make>
QVariantList RigMaker::list(Make make) {
    QVariantList values;
    for (int left = bytes_.ConsumeIntegralInRange(0, longestList); left > 0; --left) {
        values.append(bytes_.ConsumeIntegralInRange(0, 15) == 0 ? anything() : QVariant(make()));
    }
    return values;
}
