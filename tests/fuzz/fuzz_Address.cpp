// Any text in the address field.

#include "Require.h"
#include "artnet/Address.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const std::optional<std::uint32_t> address = parseAddress(text)) {
        require(parseAddress(printAddress(*address)) == address);
    }
    return 0;
}
