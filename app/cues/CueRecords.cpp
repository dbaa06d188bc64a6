#include "cues/CueRecords.h"

#include "plist/Reading.h"
#include "settings/LevelRecord.h"

#include <QVariantList>
#include <QVariantMap>

#include <algorithm>
#include <bit>
#include <functional>
#include <limits>

namespace {

// The entries are walked instead of looked up: a lookup compares texts several times over, and a cue may have
// a record for each control of the rig.
CueRecord recordOf(const QVariantMap& entries) {
    CueRecord record;
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        if (entry.key() == recordKeys::key) {
            record.key = stringValue(entry.value());
        } else if (entry.key() == recordKeys::value) {
            record.value = static_cast<std::uint32_t>(integerValue(entry.value()));
        } else if (entry.key() == recordKeys::time) {
            record.time = floatValue(entry.value());
        }
    }
    return record;
}

QVariantMap dictionaryOf(const CueRecord& record) {
    static const QString key = recordKeys::key;
    static const QString value = recordKeys::value;
    static const QString time = recordKeys::time;
    return {{key, record.key},
            {value, qlonglong{static_cast<std::int32_t>(record.value)}},
            {time, double{record.time}}};
}

QVariantList listOf(const CueRecords& records) {
    QVariantList list;
    list.reserve(records.size());
    for (const CueRecord& record : records) {
        list.append(dictionaryOf(record));
    }
    return list;
}

bool isInteger32(const QVariant& value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return value.typeId() == QMetaType::LongLong && value.toLongLong() >= Limits::min() &&
           value.toLongLong() <= Limits::max();
}

// To the bit, since a zero has a sign.
bool isFloat(const QVariant& value) {
    return value.typeId() == QMetaType::Double &&
           std::bit_cast<quint64>(double{static_cast<float>(value.toDouble())}) ==
               std::bit_cast<quint64>(value.toDouble());
}

bool isPlainEntry(const QString& key, const QVariant& value) {
    if (key == recordKeys::key) {
        return value.typeId() == QMetaType::QString;
    }
    return key == recordKeys::value ? isInteger32(value) : key == recordKeys::time && isFloat(value);
}

// Whether a CueRecord says all that there is.
bool isPlain(const QVariant& value) {
    const QVariantMap entries = mapValue(value);
    const auto all = entries.asKeyValueRange();
    return entries.size() == 3 && std::all_of(all.begin(), all.end(), [](const auto& entry) {
               return isPlainEntry(entry.first, entry.second);
           });
}

CueRecords recordsOf(const QVariantList& list) {
    CueRecords records;
    records.reserve(list.size());
    for (const QVariant& record : list) {
        records.append(recordOf(mapValue(record)));
    }
    return records;
}

CueRecords sorted(CueRecords records) {
    std::ranges::stable_sort(records, {}, &CueRecord::key);
    // Backwards, since the last of those with the same key is the one that stays.
    const auto haveSameKey = [](const CueRecord& a, const CueRecord& b) { return a.key == b.key; };
    const auto superfluous = std::unique(records.rbegin(), records.rend(), haveSameKey);
    records.erase(records.begin(), superfluous.base());
    return records;
}

} // namespace

QVariant cueEntry(const CueRecords& records) {
    static const bool isRegistered = QMetaType::registerConverter<CueRecords, QVariantList>(listOf);
    Q_ASSERT(isRegistered);
    return QVariant::fromValue(records);
}

QVariant compactCueEntry(const QVariant& entry) {
    const QVariantList list = listValue(entry);
    const bool isCompact = !list.isEmpty() && std::ranges::all_of(list, isPlain);
    return isCompact ? cueEntry(recordsOf(list)) : entry;
}

std::optional<CueRecords> recordsAsTheyStand(const QVariant& entry) {
    if (entry.typeId() == qMetaTypeId<CueRecords>()) {
        return entry.value<CueRecords>();
    }
    return entry.typeId() == QMetaType::QVariantList ? std::optional(recordsOf(entry.toList()))
                                                     : std::nullopt;
}

std::optional<CueRecords> recordsByKey(const QVariant& entry) {
    const std::optional<CueRecords> records =
        recordsAsTheyStand(entry); // constant: looking at them copies none
    if (!records) {
        return {};
    }
    const auto outOfOrder =
        std::ranges::adjacent_find(*records, std::ranges::greater_equal(), &CueRecord::key);
    return outOfOrder == records->end() ? records : sorted(*records);
}
