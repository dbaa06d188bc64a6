#include "plist/PropertyListTypes.h"

#include <QtEndian>

#include <bit>

namespace {

constexpr char dateList[] = "bplist00\x33"         // one date
                            "\0\0\0\0\0\0\0\0"     // its seconds
                            "\x08"                 // offset table: the date stands at 8
                            "\0\0\0\0\0\0\x01\x01" // trailer: 1 byte per offset and per reference,
                            "\0\0\0\0\0\0\0\x01"   // one object,
                            "\0\0\0\0\0\0\0\0"     // the root is object 0,
                            "\0\0\0\0\0\0\0\x11";  // the offset table stands at 17
constexpr qsizetype datePosition = 9;

// 0001-01-01 and 10000-01-01, 00:00 UTC. Other years have no XML form.
bool isDate(double secondsSince2001) {
    return secondsSince2001 >= -63'114'076'800.0 && secondsSince2001 < 252'423'993'600.0;
}

} // namespace

QByteArray binaryListOf(PropertyListDate date) {
    if (!isDate(date.secondsSince2001)) {
        return {};
    }
    QByteArray list(dateList, sizeof dateList - 1);
    qToBigEndian(std::bit_cast<quint64>(date.secondsSince2001), list.data() + datePosition);
    return list;
}

std::optional<PropertyListDate> dateOfBinaryList(const QByteArray& list) {
    if (list.size() != sizeof dateList - 1) {
        return std::nullopt;
    }
    const auto seconds = std::bit_cast<double>(qFromBigEndian<quint64>(list.constData() + datePosition));
    return isDate(seconds) ? std::optional(PropertyListDate{seconds}) : std::nullopt;
}
