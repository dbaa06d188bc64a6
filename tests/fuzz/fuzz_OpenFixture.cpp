// Any fixture of the Open Fixture Library.

#include "ImportCheck.h"
#include "library/OpenFixtureReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkImport(readOpenFixture(bytes, "/nowhere/acme"));
    return 0;
}
