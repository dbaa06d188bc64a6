#include "window/RemoveFixtureSheet.h"

#include "rig/ShownText.h"
#include "window/Sheets.h"

#include <QPersistentModelIndex>

#include <algorithm>

namespace {

constexpr qsizetype mostNames = 12;

QString namesOf(const QModelIndexList& rows) {
    QStringList lines;
    for (const QModelIndex& row : rows.first(std::min(rows.size(), mostNames))) {
        lines.append(shownName(row.data().toString()));
    }
    if (rows.size() > mostNames) {
        lines.append(QString("and %1 more").arg(rows.size() - mostNames));
    }
    return lines.join('\n');
}

} // namespace

// The patch may change while the question is open: what it was asked about is kept, not where it stood.
QDialog* openRemoveFixtureSheet(QWidget& window, const QModelIndexList& rows,
                                const std::function<void(std::vector<std::size_t>)>& accepted) {
    QModelIndexList sorted = rows;
    std::sort(sorted.begin(), sorted.end());
    const QList<QPersistentModelIndex> asked(sorted.cbegin(), sorted.cend());
    const auto remove = [asked, accepted] {
        std::vector<std::size_t> present;
        for (const QPersistentModelIndex& row : asked) {
            if (row.isValid()) {
                present.push_back(static_cast<std::size_t>(row.row()));
            }
        }
        accepted(present);
    };
    const QString message =
        rows.size() == 1 ? QString("Remove this fixture?") : QString("Remove %1 fixtures?").arg(rows.size());
    return openQuestionSheet(window,
                             {.message = message,
                              .informativeText = namesOf(sorted) + "\nCues keep their records.",
                              .fieldLabel = {}},
                             "Remove", remove);
}
