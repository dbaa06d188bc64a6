#include "library/FixtureImport.h"

#include "library/ControlNames.h"
#include "library/FixtureFile.h"
#include "library/ProfileWriter.h"

FixtureImport importFixture(const QString& path) {
    const FixtureReading reading = readFixtureFile(path);
    const FixtureDefinition& definition = reading.definition;
    FixtureImport result{
        .maker = definition.maker, .model = definition.model, .modes = {}, .refusal = reading.refusal};
    ProfileWriter writer(readableText(QString("%1 %2").arg(definition.maker, definition.model)));
    for (const FixtureMode& mode : definition.modes) {
        result.modes.push_back(writer.write(mode));
    }
    return result;
}
