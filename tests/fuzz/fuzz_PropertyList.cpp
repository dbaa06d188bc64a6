// Any bytes as a property-list file: gatekeeper, library, and the way into values and back.

#include "Require.h"
#include "plist/Gatekeeper.h"
#include "plist/PropertyList.h"

#include <cstddef>
#include <cstdint>

namespace {

constexpr std::size_t maxBytes = 1 << 20;

// What the console writes it reads again, and then as often as it likes.
void requireThatItComesBack(const QByteArray& written, QByteArray (*write)(const QVariant&)) {
    if (written.isEmpty() || !passesGatekeeper(written)) {
        return; // refused by whoever writes it to a file
    }
    const std::optional<QVariant> read = readPropertyList(written, largestPropertyListFile);
    require(read.has_value());
    require(write(*read) == written);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (const std::optional<QVariant> value = readPropertyList(bytes, maxBytes)) {
        requireThatItComesBack(writeXmlPropertyList(*value), writeXmlPropertyList);
        requireThatItComesBack(writeBinaryPropertyList(*value), writeBinaryPropertyList);
    }
    return 0;
}
