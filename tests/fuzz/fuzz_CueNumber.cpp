// Any three cue numbers, one to a line: whatever they are, they stand in one order.

#include "Require.h"
#include "cues/CueNumber.h"

#include <QByteArray>
#include <QStringList>

#include <cstddef>
#include <cstdint>

namespace {

bool comesBefore(const QString& first, const QString& second) {
    const int order = compareCueNumbers(first, second);
    require(order == -compareCueNumbers(second, first));
    require((order == 0) == (first == second));
    return order < 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QStringList numbers = QString::fromUtf8(bytes).split(u'\n');
    for (qsizetype i = 0; i + 2 < numbers.size(); ++i) {
        const QString& first = numbers.at(i);
        const QString& second = numbers.at(i + 1);
        const QString& third = numbers.at(i + 2);
        const bool inOrder = comesBefore(first, second) && comesBefore(second, third);
        require(!inOrder || comesBefore(first, third));
        const bool inReverse = comesBefore(second, first) && comesBefore(third, second);
        require(!inReverse || comesBefore(third, first));
    }
    return 0;
}
