// Any .qxf file.

#include "ImportCheck.h"
#include "library/QxfReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkImport(readQxf(bytes));
    return 0;
}
