#include "cues/CueNumber.h"

#include "plist/Reading.h"

#include <algorithm>

namespace {

int order(auto first, auto second) {
    if (first == second) {
        return 0;
    }
    return first < second ? -1 : 1;
}

// The components are looked at in place: sorting compares each number many times over.
class Components {
public:
    explicit Components(QStringView number) : rest_(number) {}

    bool atEnd() const { return atEnd_; }

    int next() {
        const qsizetype point = rest_.indexOf('.');
        const QStringView component = point < 0 ? rest_ : rest_.first(point);
        atEnd_ = point < 0;
        rest_ = point < 0 ? QStringView() : rest_.sliced(point + 1);
        return leadingInteger(component);
    }

private:
    QStringView rest_;
    bool atEnd_ = false;
};

} // namespace

int compareCueNumbers(const QString& first, const QString& second, const void*) {
    Components firsts(first);
    Components seconds(second);
    while (!firsts.atEnd() && !seconds.atEnd()) {
        if (const int byNumber = order(firsts.next(), seconds.next()); byNumber != 0) {
            return byNumber;
        }
    }
    if (firsts.atEnd() != seconds.atEnd()) {
        return firsts.atEnd() ? -1 : 1;
    }
    return order(first.compare(second), 0);
}
