// Any bytes as a property-list file: gatekeeper, library, and the way into values and back.

#include "Require.h"
#include "plist/Gatekeeper.h"
#include "plist/PropertyList.h"

#include <cstddef>
#include <cstdint>

namespace {

constexpr std::size_t maxBytes = 1 << 20;

// What was written, and would be let into a file, is read again as the values that `asXml` shows: the same
// values come to the same XML, while the library's binary lists share equal values now more and now less.
void requireThatItComesBack(const QByteArray& written, const QByteArray& asXml) {
    if (written.isEmpty() || !passesGatekeeper(written)) {
        return;
    }
    const std::optional<QVariant> read = readPropertyList(written, largestPropertyListFile);
    require(read.has_value());
    require(writeXmlPropertyList(*read) == asXml);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (const std::optional<QVariant> value = readPropertyList(bytes, maxBytes)) {
        const QByteArray xml = writeXmlPropertyList(*value);
        requireThatItComesBack(xml, xml);
        requireThatItComesBack(writeBinaryPropertyList(*value), xml);
    }
    return 0;
}
