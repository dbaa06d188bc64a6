#include "library/FixtureFile.h"

#include "library/OpenFixtureReader.h"
#include "library/QxfReader.h"
#include "plist/WholeFile.h"

#include <QFileInfo>

namespace {

constexpr qint64 largestFile = qint64{4} * 1024 * 1024;

FixtureReading readingOf(const QString& path) {
    const std::optional<QByteArray> bytes = readWholeFile(path, largestFile);
    if (!bytes) {
        return {.definition = {}, .refusal = "it cannot be read, or is larger than 4 MiB"};
    }
    const QByteArray text = bytes->startsWith("\xEF\xBB\xBF") ? bytes->mid(3) : *bytes;
    return text.trimmed().startsWith('{') ? readOpenFixture(text, QFileInfo(path).absolutePath())
                                          : readQxf(text);
}

} // namespace

FixtureReading readFixtureFile(const QString& path) {
    FixtureReading reading = readingOf(path);
    if (!reading.refusal.isNull()) {
        reading.refusal = QString("%1: %2").arg(path, reading.refusal);
    }
    return reading;
}
