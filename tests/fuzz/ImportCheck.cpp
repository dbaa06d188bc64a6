#include "ImportCheck.h"

#include "Require.h"
#include "library/ExpandedMode.h"
#include "library/FixtureDefinition.h"
#include "library/ProfileWriter.h"
#include "plist/PropertyList.h"

#include <QSet>

namespace {

constexpr std::size_t largestList = std::size_t{64} * 1024 * 1024;

} // namespace

void checkImport(const FixtureReading& reading) {
    require(reading.refusal.isNull() || reading.definition.modes.empty());
    require(!reading.refusal.isNull() || !reading.definition.modes.empty());
    ProfileWriter writer(readableText(reading.definition.maker + ' ' + reading.definition.model));
    QVariantMap profiles;
    for (const FixtureMode& mode : reading.definition.modes) {
        const ImportedMode imported = writer.write(mode);
        require(imported.channels == static_cast<int>(mode.channels.size()));
        const ExpandedMode comesTo = expanded(imported);
        require(comesTo.slotCount == imported.channels);
        require(QSet(comesTo.keys.begin(), comesTo.keys.end()).size() == comesTo.keys.size());
        for (auto profile = imported.profiles.begin(); profile != imported.profiles.end(); ++profile) {
            require(!profiles.contains(profile.key()));
            profiles.insert(profile.key(), profile.value());
        }
    }
    require(readPropertyList(writeXmlPropertyList(profiles), largestList) == QVariant(profiles));
}
