#pragma once

#include "plist/PropertyList.h"

/// What comes back of a value that is written to a file and read again; invalid when it cannot be written.
inline QVariant asWritten(const QVariant& value) {
    constexpr std::size_t limit = 1'000'000;
    return readPropertyList(writeXmlPropertyList(value), limit).value_or(QVariant());
}
