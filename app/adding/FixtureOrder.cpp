#include "adding/FixtureOrder.h"

#include "levels/Encoding.h"
#include "rig/ControlDefinition.h"
#include "rig/Placement.h"

#include <QRegularExpression>
#include <QSet>
#include <QVariantMap>

#include <algorithm>
#include <limits>

namespace {

// A number short enough to be counted on.
const QRegularExpression& numberAtEnd() {
    static const QRegularExpression pattern("^(.* )(\\d{1,6})$",
                                            QRegularExpression::DotMatchesEverythingOption);
    return pattern;
}

QString numbered(const QString& name, int number) {
    return name + ' ' + QString::number(number);
}

bool isNumbered(const QString& name, const QString& base) {
    const QRegularExpressionMatch match = numberAtEnd().match(name);
    return match.hasMatch() && match.captured(1) == base + ' ';
}

// The 1-based slot behind the last copy's last one.
std::uint64_t endOf(const FixtureOrder& order) {
    return static_cast<std::uint64_t>(order.address) +
           order.slotsEach * static_cast<std::uint64_t>(order.copies);
}

} // namespace

QStringList copyNames(const QString& name, int copies) {
    if (copies == 1) {
        return {name};
    }
    const QRegularExpressionMatch match = numberAtEnd().match(name);
    const QString base = match.hasMatch() ? match.captured(1) : name + ' ';
    const QString first = match.hasMatch() ? match.captured(2) : "1";
    QStringList names;
    for (int copy = 0; copy < copies; ++copy) {
        names.append(base + QString::number(first.toInt() + copy).rightJustified(first.size(), '0'));
    }
    return names;
}

QString freeName(const QString& base, int copies, const QStringList& taken) {
    const QSet<QString> names(taken.cbegin(), taken.cend());
    const bool isFirst = !names.contains(base) && std::ranges::none_of(taken, [&](const QString& other) {
        return isNumbered(other, base);
    });
    if (copies == 1 && isFirst) {
        return base;
    }
    int free = 0; // numbers in a row
    int number = names.contains(base) ? 1 : 0;
    while (free < copies) {
        ++number;
        free = names.contains(numbered(base, number)) ? 0 : free + 1;
    }
    return numbered(base, number - copies + 1);
}

QString obstacleTo(const FixtureOrder& order, const QStringList& takenNames) {
    if (order.name.trimmed().isEmpty()) {
        return "A fixture needs a name.";
    }
    for (const QString& name : copyNames(order.name, order.copies)) {
        if (takenNames.contains(name)) {
            return QString("There is a fixture “%1” already; cues could not tell them apart.").arg(name);
        }
    }
    if (const std::uint64_t end = endOf(order); end > slotsPerUniverse + 1) {
        return QString("The last slot would be %1, and a universe ends with 512.").arg(end - 1);
    }
    return {};
}

QVariantList placementsOf(const FixtureOrder& order) {
    QVariantList placements;
    qlonglong address = order.address;
    for (const QString& name : copyNames(order.name, order.copies)) {
        Placement placement;
        placement.setName(name);
        placement.setUniverse(order.universe);
        placement.setAddress(static_cast<int>(std::min<qlonglong>(address, std::numeric_limits<int>::max())));
        placement.setLayer(order.layer);
        placement.setProfiles({QVariantMap{{entryKeys::profile, order.profile}}});
        placements.append(placement.toEntry());
        address += static_cast<qlonglong>(order.slotsEach);
    }
    return placements;
}
