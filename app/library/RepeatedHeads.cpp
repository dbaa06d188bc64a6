#include "library/RepeatedHeads.h"

#include "library/ControlNames.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

namespace {

// What has to be equal for two heads to be the same.
using Shape = std::vector<std::tuple<QString, int, int, bool>>;

// A head that might be repeated.
struct Candidate {
    RepeatedHead head;
    QString number; // that all its names bear; empty for none
    Shape shape;
};

// The numbers that the names of all faders bear.
QStringList commonNumbers(std::span<const ModeControl> controls) {
    std::optional<QStringList> common;
    for (const ModeControl& control : controls) {
        if (!control.isBlank) {
            const QStringList numbers = numbersIn(control.name);
            common = common.value_or(numbers);
            common->removeIf([&](const QString& number) { return !numbers.contains(number); });
        }
    }
    QStringList numbers = common.value_or(QStringList());
    numbers.removeDuplicates();
    return numbers;
}

// Nothing for a head that has gaps, cuts a control in two or has no fader.
std::optional<RepeatedHead> headOver(std::vector<int> head, std::span<const ModeControl> controls) {
    std::ranges::sort(head);
    head.erase(std::unique(head.begin(), head.end()), head.end());
    if (head.empty() || head.back() - head.front() + 1 != static_cast<int>(head.size())) {
        return std::nullopt;
    }
    const auto first = std::ranges::find(controls, head.front(), &ModeControl::firstSlot);
    const auto last = std::find_if(first, controls.end(), [&](const ModeControl& control) {
        return control.endSlot() == head.back() + 1;
    });
    if (last == controls.end() || std::all_of(first, last + 1, [](const auto& c) { return c.isBlank; })) {
        return std::nullopt;
    }
    return RepeatedHead{.firstControl = static_cast<std::size_t>(first - controls.begin()),
                        .controlCount = static_cast<std::size_t>(last - first) + 1};
}

std::vector<RepeatedHead> headsInOrder(const std::vector<std::vector<int>>& heads,
                                       std::span<const ModeControl> controls) {
    std::vector<RepeatedHead> found;
    for (const std::vector<int>& head : heads) {
        if (const std::optional<RepeatedHead> over = headOver(head, controls)) {
            found.push_back(*over);
        }
    }
    std::ranges::sort(found, {}, &RepeatedHead::firstControl);
    std::vector<RepeatedHead> apart;
    for (const RepeatedHead& head : found) {
        if (apart.empty() || head.firstControl >= apart.back().firstControl + apart.back().controlCount) {
            apart.push_back(head);
        }
    }
    return apart;
}

std::vector<Candidate> candidatesAmong(const std::vector<RepeatedHead>& heads,
                                       std::span<const ModeControl> controls) {
    std::vector<Candidate> candidates;
    for (const RepeatedHead& head : heads) {
        const auto own = controls.subspan(head.firstControl, head.controlCount);
        const QStringList numbers = commonNumbers(own);
        if (numbers.size() > 1) {
            continue; // a place in a matrix, which one number does not express
        }
        candidates.push_back({.head = head, .number = numbers.value(0), .shape = {}});
        for (const ModeControl& control : namedWithinHead(own)) {
            candidates.back().shape.emplace_back(control.name, control.slotCount, control.defaultValue,
                                                 control.isBlank);
        }
    }
    return candidates;
}

// Leaves those that there are several of.
void keepRepeated(std::vector<Candidate>& candidates) {
    std::map<Shape, std::pair<std::size_t, std::size_t>> kinds; // count and number of each
    for (const Candidate& candidate : candidates) {
        ++kinds.try_emplace(candidate.shape, 0, kinds.size()).first->second.first;
    }
    for (Candidate& candidate : candidates) {
        candidate.head.kind = kinds[candidate.shape].second;
    }
    std::erase_if(candidates, [&](const Candidate& candidate) { return kinds[candidate.shape].first < 2; });
}

// Leaves those that bear no number or the one that they will be given.
void keepCounted(std::vector<Candidate>& candidates) {
    int count = 0;
    std::erase_if(candidates, [&](const Candidate& candidate) {
        const bool counts = candidate.number.isEmpty() || candidate.number.toInt() == count + 1;
        count += counts ? 1 : 0;
        return !counts;
    });
}

} // namespace

std::vector<ModeControl> namedWithinHead(std::span<const ModeControl> controls) {
    const QString number = commonNumbers(controls).value(0);
    UniqueNames names;
    std::vector<ModeControl> named(controls.begin(), controls.end());
    for (ModeControl& control : named) {
        const QString name = control.isBlank ? QString() : nameWithoutNumber(control.name, number);
        control.name = control.isBlank ? name : names.take(name.isEmpty() ? "Level" : name);
    }
    return named;
}

std::vector<RepeatedHead> repeatedHeads(const std::vector<std::vector<int>>& heads,
                                        std::span<const ModeControl> controls) {
    std::vector<Candidate> candidates = candidatesAmong(headsInOrder(heads, controls), controls);
    std::size_t before = 0;
    do {
        before = candidates.size();
        keepRepeated(candidates);
        keepCounted(candidates);
    } while (candidates.size() != before);
    std::vector<RepeatedHead> repeated;
    repeated.reserve(candidates.size());
    for (const Candidate& candidate : candidates) {
        repeated.push_back(candidate.head);
    }
    return repeated;
}
