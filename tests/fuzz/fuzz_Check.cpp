// Any settings file, checked against a table of profiles and as one: whatever stands in it, a check ends, and
// each problem is a line of its own. The first byte tells a file as it stands from bytes that rigs are made
// of.

#include "Require.h"
#include "RigMaker.h"
#include "check/DefaultsCheck.h"
#include "check/Report.h"
#include "check/RigCheck.h"
#include "check/RigListing.h"
#include "plist/PropertyList.h"
#include "plist/Reading.h"
#include "rig/Profiles.h"

#include <fuzzer/FuzzedDataProvider.h>

namespace {

constexpr std::size_t maxBytes = 1 << 20;

struct Rig {
    QVariantMap settings;
    QVariantMap profiles;
};

Rig rigFrom(const std::uint8_t* data, std::size_t size) {
    if (size > 0 && data[0] == 'R') {
        FuzzedDataProvider bytes(data + 1, size - 1);
        RigMaker maker(bytes);
        const QVariantMap settings = maker.settings();
        return {.settings = settings, .profiles = maker.profiles()};
    }
    const QByteArray file(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QVariantMap root = mapValue(readPropertyList(file, maxBytes).value_or(QVariant()));
    return {.settings = root, .profiles = root};
}

void requireLines(const QStringList& lines) {
    for (const QString& line : lines) {
        require(!line.contains('\n') && !line.contains('\r') && !line.contains('\033'));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Rig rig = rigFrom(data, size);
    Report report("rig");
    checkProfiles(rig.profiles, rig.profiles, {}, report);
    const FaderKeys keys = RigCheck(rig.profiles).check(rig.settings, {}, report);
    checkDefaults(rig.settings, {{"unknown_config", keys}}, report);
    requireLines(report.lines());
    Profiles profiles;
    profiles.setTable(rig.profiles);
    requireLines(rigListing(rig.settings, profiles));
    return 0;
}
