// Any bytes on the pasteboard.

#include "Require.h"
#include "rig/ControlArchive.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (const std::optional<int> level = unarchiveLevel(bytes)) {
        require(unarchiveLevel(archiveLevel(*level)) == level);
    }
    return 0;
}
