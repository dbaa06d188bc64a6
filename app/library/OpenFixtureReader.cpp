#include "library/OpenFixtureReader.h"

#include "library/OpenFixtureChannels.h"
#include "library/OpenFixtureMode.h"
#include "library/PixelMatrix.h"
#include "plist/WholeFile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr qint64 largestMakersFile = qint64{1024} * 1024;

FixtureReading refused(const QString& reason) {
    return {.definition = {}, .refusal = reason};
}

// The folder's name says whose fixtures are in it where the list of makers knows it; in any other place a
// folder's name says nothing.
QString makerOf(const QJsonObject& fixture, const QString& folder) {
    const QDir makersFolder(folder);
    const QString key = fixture.value("manufacturerKey").toString(makersFolder.dirName());
    const auto bytes = readWholeFile(makersFolder.filePath("../manufacturers.json"), largestMakersFile);
    const QJsonObject makers = QJsonDocument::fromJson(bytes.value_or(QByteArray())).object();
    return makers.value(key).toObject().value("name").toString(fixture.value("manufacturerKey").toString());
}

QString whyNoFixture(const QJsonObject& fixture) {
    if (fixture.contains("redirectTo")) {
        return QString("it only points to the fixture '%1'").arg(fixture.value("redirectTo").toString());
    }
    if (!fixture.value("modes").isArray() ||
        (!fixture.contains("availableChannels") && !fixture.contains("templateChannels"))) {
        return "it is no fixture of the Open Fixture Library";
    }
    const qsizetype length = fixture.value("name").toString().size();
    if (length == 0 || length > FixtureBounds::nameLength) {
        return QString("it has no name, or one of more than %1 characters").arg(FixtureBounds::nameLength);
    }
    return {};
}

FixtureReading readFixture(const QJsonObject& fixture, const QByteArray& json, const QString& folder) {
    const PixelMatrix matrix(fixture.value("matrix").toObject(), json);
    const OpenFixtureChannels channels(fixture, matrix);
    if (!matrix.refusal().isNull() || !channels.refusal().isNull()) {
        return refused(matrix.refusal().isNull() ? channels.refusal() : matrix.refusal());
    }
    FixtureReading reading{.definition = {.maker = makerOf(fixture, folder).left(FixtureBounds::nameLength),
                                          .model = fixture.value("name").toString(),
                                          .modes = {}},
                           .refusal = {}};
    for (const QJsonValue value : fixture.value("modes").toArray()) {
        OpenFixtureMode mode(channels, matrix);
        QString refusal = mode.read(value.toObject());
        refusal = refusal.isNull() ? addMode(reading.definition, mode.take()) : refusal;
        if (!refusal.isNull()) {
            return refused(refusal);
        }
    }
    return reading.definition.modes.empty() ? refused("it has no mode") : reading;
}

} // namespace

FixtureReading readOpenFixture(const QByteArray& json, const QString& folder) {
    QJsonParseError error;
    const QJsonObject fixture = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError) {
        return refused(QString("at byte %1: %2").arg(error.offset).arg(error.errorString()));
    }
    const QString reason = whyNoFixture(fixture);
    return reason.isNull() ? readFixture(fixture, json, folder) : refused(reason);
}
