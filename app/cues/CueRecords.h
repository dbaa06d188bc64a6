#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <optional>

/// What a cue says of one control: its level and the seconds in which it goes there.
struct CueRecord {
    QString key;
    std::uint32_t value = 0;
    float time = 0;
    bool operator==(const CueRecord&) const = default;
};

using CueRecords = QList<CueRecord>;
Q_DECLARE_METATYPE(CueRecords)

/// An entry of the cue table with these records, in a tenth of the space of a list of dictionaries. It is one
/// all the same to whoever asks for its list, and in the file.
QVariant cueEntry(const CueRecords& records);

/// An entry as it stood in a file, in the form of cueEntry() if it is a list of nothing but plain records;
/// what would read or be written otherwise stays as it is.
QVariant compactCueEntry(const QVariant& entry);

/// The records of an entry. Nothing when it is no list.
std::optional<CueRecords> recordsAsTheyStand(const QVariant& entry);

/// The records of an entry in the order of their keys, as Faders::sorted() has them. Where
/// several carry the same key, the last one of them alone. Nothing when the entry is no list.
std::optional<CueRecords> recordsByKey(const QVariant& entry);
