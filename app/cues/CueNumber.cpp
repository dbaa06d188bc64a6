#include "cues/CueNumber.h"

#include "plist/Reading.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace {

int order(const auto& first, const auto& second) {
    if (first == second) {
        return 0;
    }
    return first < second ? -1 : 1;
}

} // namespace

CueNumberComponents cueNumberComponents(QStringView number) {
    CueNumberComponents components;
    for (qsizetype point = number.indexOf(u'.'); point >= 0; point = number.indexOf(u'.')) {
        components.append(leadingInteger(number.first(point)));
        number = number.sliced(point + 1);
    }
    components.append(leadingInteger(number));
    return components;
}

int compareCueNumbers(const QString& first, const QString& second, const void*) {
    const int byComponents = order(cueNumberComponents(first), cueNumberComponents(second));
    return byComponents != 0 ? byComponents : order(first.compare(second), 0);
}

// Each number is taken apart once and not for each comparison. The order is compareCueNumbers()'s.
QStringList sortedCueNumbers(const QStringList& numbers) {
    std::vector<std::pair<CueNumberComponents, QString>> sorted;
    for (const QString& number : numbers) {
        sorted.emplace_back(cueNumberComponents(number), number);
    }
    std::ranges::sort(sorted, std::less());
    QStringList result;
    for (auto& [components, number] : sorted) {
        result.append(std::move(number));
    }
    return result;
}
