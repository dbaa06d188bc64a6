#include "library/ProfileEntries.h"

#include "library/ModeControls.h"

#include <QVariantMap>

#include <algorithm>
#include <numeric>

namespace {

constexpr int rowsOfPlainWindow = 20; // some 400 pixels high
constexpr int largestRows = 48;       // what a screen of 1,080 lines shows
constexpr int columnsOfScreen = 12;   // what 1,920 pixels show

constexpr QLatin1StringView blankKey("blank");

int rowsPerColumn(const QList<EntryBlock>& blocks) {
    const int rows = std::transform_reduce(blocks.begin(), blocks.end(), 0, std::plus<>(),
                                           [](const EntryBlock& block) { return block.rows; });
    return std::clamp((rows + columnsOfScreen - 1) / columnsOfScreen, rowsOfPlainWindow, largestRows);
}

// A blank without slots takes neither a slot nor a row.
QVariantMap columnBreak() {
    return {{"header", true}, {blankKey, qlonglong{0}}};
}

bool isBlank(const QVariant& entry) {
    return entry.toMap().value(blankKey).toLongLong() > 0;
}

void append(QVariantList& entries, const EntryBlock& block) {
    const bool meetsBlank = block.entries.size() == 1 && isBlank(block.entries.first()) &&
                            !entries.isEmpty() && isBlank(entries.last());
    if (meetsBlank) {
        const qlonglong before = entries.takeLast().toMap().value(blankKey).toLongLong();
        const qlonglong more = block.entries.first().toMap().value(blankKey).toLongLong();
        entries.append(QVariantMap{{blankKey, before + more}});
    } else {
        entries.append(block.entries);
    }
}

} // namespace

EntryBlock entryFor(const ModeControl& control, const QString& name) {
    if (control.isBlank) {
        return {.entries = {QVariantMap{{blankKey, qlonglong{control.slotCount}}}}, .rows = 0};
    }
    QVariantMap entry{{"name", name}};
    if (control.slotCount == 2) {
        entry.insert("channels", qlonglong{2});
    }
    if (control.defaultValue != 0) {
        entry.insert("default", qlonglong{control.defaultValue});
    }
    return {.entries = {entry}, .rows = 1};
}

QVariantList inColumns(const QList<EntryBlock>& blocks) {
    const int largest = rowsPerColumn(blocks);
    QVariantList entries;
    int rows = 0;
    for (const EntryBlock& block : blocks) {
        if (rows > 0 && rows + block.rows > largest) {
            entries.append(columnBreak());
            rows = 0;
        }
        append(entries, block);
        rows += block.rows;
    }
    return entries;
}
