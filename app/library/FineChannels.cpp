#include "library/FineChannels.h"

#include "library/ControlNames.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

constexpr QLatin1StringView fineMark("Fine");

// The words that tell the two bytes apart, and what stands between words.
const QRegularExpression& byteWords() {
    static const QRegularExpression words(
        R"((least|most) significant (byte|bit)|\b(8|16)[ -]?bits?\b|\b(fine|coarse|lsb|msb|(low|high) byte)\b|[^\p{L}\p{N}])",
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return words;
}

QString nameWithoutByte(const QString& name) {
    return QString(name).remove(byteWords()).toCaseFolded();
}

bool haveTheSamePreset(const QxfChannel& fine, const QxfChannel& coarse) {
    return fine.preset.endsWith(fineMark) && coarse.preset.startsWith(fine.preset.chopped(fineMark.size()));
}

bool numbersTellApart(const QString& one, const QString& other) {
    const QStringList numbers = numbersIn(nameWithoutByte(one));
    const QStringList others = numbersIn(nameWithoutByte(other));
    return !numbers.isEmpty() && !others.isEmpty() && numbers != others;
}

} // namespace

bool isFine(const QxfChannel& channel) {
    return channel.isLowByte || channel.preset.endsWith(fineMark);
}

bool isUnused(const QxfChannel& channel) {
    return channel.preset == QLatin1StringView("NoFunction");
}

bool isFineOf(const QxfChannel& fine, const QxfChannel& coarse) {
    if (!isFine(fine) || isFine(coarse) || isUnused(coarse)) {
        return false;
    }
    return nameWithoutByte(fine.name) == nameWithoutByte(coarse.name) ||
           (haveTheSamePreset(fine, coarse) && !numbersTellApart(fine.name, coarse.name));
}
