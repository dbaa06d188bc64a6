#include "levels/NumericEntry.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace {

constexpr std::uint32_t mostCharacters = 6;
constexpr std::uint32_t mostAppliedCharacters = 5;
constexpr double unreadable = -1.0;

// The number that the digits and points begin with, in every locale: "1.2.3" is 1.2, ".5" is 0.5.
double readNumber(std::string_view text) {
    double number = unreadable;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

} // namespace

void NumericEntry::append(char character) {
    if (bufindex < mostCharacters) {
        numbuf[bufindex++] = character;
    }
}

void NumericEntry::removeLast() {
    if (bufindex > 0) {
        --bufindex;
    }
}

void NumericEntry::clear() {
    bufindex = 0;
}

void NumericEntry::setTimeMode() {
    time_mode = true;
}

NumericEntry::Outcome NumericEntry::finish(std::uint32_t max) {
    if (bufindex < 1 || bufindex > mostAppliedCharacters) {
        return {};
    }
    const double number = readNumber(text());
    if (std::exchange(time_mode, false)) {
        return {.value = {}, .time = number >= 0 ? std::optional(static_cast<float>(number)) : std::nullopt};
    }
    // At most five characters: the number lies between -1 and 99999.
    return {.value = std::min(static_cast<std::uint32_t>(number + 0.5 < 0 ? 0 : number + 0.5), max),
            .time = {}};
}
