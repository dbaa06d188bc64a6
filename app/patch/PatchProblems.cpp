#include "patch/PatchProblems.h"

#include "levels/Encoding.h"
#include "patch/Overlaps.h"
#include "patch/Patch.h"
#include "rig/ShownText.h"

#include <QStringList>

#include <algorithm>

namespace {

// More than this makes no tip that anybody reads, and takes time without end where all stand on one slot.
constexpr std::size_t mostPartners = 5;

/// Another fixture, and where it is overlapped.
struct Partner {
    std::size_t place;
    std::vector<SlotRange> slotRanges;
};

struct Partners {
    std::vector<Partner> named;
    bool more = false;
};

void appendRange(const SlotRange& slotRange, std::vector<SlotRange>& slotRanges) {
    if (!slotRanges.empty() && slotRanges.back().first + slotRanges.back().count == slotRange.first) {
        slotRanges.back().count += slotRange.count;
    } else {
        slotRanges.push_back(slotRange);
    }
}

void addPartner(std::size_t place, const SlotRange& slotRange, Partners& partners) {
    auto& named = partners.named;
    auto found = std::ranges::find(named, place, &Partner::place);
    if (found == named.end() && named.size() == mostPartners) {
        partners.more = true;
        return;
    }
    if (found == named.end()) {
        found = named.insert(named.end(), {.place = place, .slotRanges = {}});
    }
    appendRange(slotRange, found->slotRanges);
}

void addOverlap(const Overlap& overlap, std::size_t place, Partners& partners) {
    std::size_t seen = 0;
    for (const std::size_t other : overlap.fixtures) {
        if (other == place) {
            continue;
        }
        addPartner(other, overlap.slotRange, partners);
        if (++seen > mostPartners) {
            return;
        }
    }
}

QString listOf(const std::vector<SlotRange>& slotRanges) {
    QStringList texts;
    for (const SlotRange& slotRange : slotRanges) {
        texts.append(slotText(slotRange));
    }
    return listed(texts);
}

QStringList overlapTexts(std::span<const PatchedFixture> patch, const Partners& partners) {
    QStringList texts;
    for (const Partner& partner : partners.named) {
        texts.append(QString("Overlaps %1 in %2")
                         .arg(shownName(patch[partner.place].name), listOf(partner.slotRanges)));
    }
    if (partners.more) {
        texts.append("Overlaps more fixtures");
    }
    return texts;
}

QString outsideText(const PatchedFixture& fixture) {
    const std::vector<SlotRange> unheard = unheardSlots(fixture);
    if (unheard.empty()) {
        return {};
    }
    const auto address = static_cast<std::int32_t>(fixture.address);
    if (address < 0) {
        return QString("Sends nothing: address %1 is before slot 1").arg(address);
    }
    return QString("Sends nothing on %1: a universe ends at slot %2")
        .arg(listOf(unheard), QString::number(slotsPerUniverse));
}

} // namespace

std::vector<QString> patchProblems(std::span<const PatchedFixture> patch) {
    std::vector<Partners> partners(patch.size());
    for (const Overlap& overlap : overlaps(patch)) {
        for (const std::size_t place : overlap.fixtures) {
            addOverlap(overlap, place, partners[place]);
        }
    }
    std::vector<QString> problems;
    problems.reserve(patch.size());
    for (std::size_t place = 0; place < patch.size(); ++place) {
        QStringList texts = overlapTexts(patch, partners[place]);
        if (const QString outside = outsideText(patch[place]); !outside.isNull()) {
            texts.append(outside);
        }
        problems.push_back(texts.isEmpty() ? QString() : texts.join('\n'));
    }
    return problems;
}
