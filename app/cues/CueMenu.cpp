#include "cues/CueMenu.h"

#include "cues/MenuText.h"

#include <QKeyEvent>

#include <algorithm>

namespace {

constexpr auto noCueTitle = "Cues";
constexpr auto selectToolTip = "Use 'alt' key to select a cue without executing it.";

} // namespace

CueMenu::CueMenu(QWidget* parent) : QMenu(noCueTitle, parent) {
    setToolTipsVisible(true);
    // Thousands of cues stand in one column that scrolls, not in columns beyond the screen.
    setStyleSheet("QMenu { menu-scrollable: 1; }");
}

void CueMenu::setupCueMenu(const QStringList& numbers, const std::optional<QString>& currCue) {
    clear();
    checkedItem_ = nullptr;
    addCommands();
    for (const QString& number : numbers) {
        addItem(number, ChooseCue, {}, selectToolTip);
    }
    check(currCue ? itemWithTitle(*currCue) : nullptr);
}

void CueMenu::addCommands() {
    addItem("Next Cue", NextCue, Qt::CTRL | Qt::Key_A);
    addItem("Prev Cue", PrevCue, Qt::CTRL | Qt::Key_R);
    addItem("Clear", Clear, Qt::CTRL | Qt::Key_X);
    addItem("Clear Timing", ClearTiming, Qt::CTRL | Qt::ALT | Qt::Key_X,
            "Clear all channels to their default values");
    addSeparator();
    addItem("Store Cue", StoreCue, Qt::CTRL | Qt::Key_W);
    addItem("Delete Cue", DeleteCue, {}, "Remove current cue from list");
    QAction* const newCue = addAction("New Cue…", Qt::CTRL | Qt::Key_N, this, &CueMenu::newCueChosen);
    newCue->setShortcutContext(Qt::ApplicationShortcut);
    addSeparator();
}

void CueMenu::addItem(const QString& title, Tag tag, const QKeySequence& keys, const QString& toolTip) {
    QAction* const item = addAction(menuText(title));
    item->setData(title);
    item->setToolTip(toolTip);
    item->setShortcut(keys);
    item->setShortcutContext(Qt::ApplicationShortcut);
    connect(item, &QAction::triggered, this, [this, tag, title] { emit cueAction(tag, title); });
}

QAction* CueMenu::itemWithTitle(const QString& title) const {
    const QList<QAction*> items = actions();
    const auto found = std::ranges::find_if(
        items, [&](const QAction* item) { return !item->isSeparator() && item->data().toString() == title; });
    return found == items.end() ? nullptr : *found;
}

void CueMenu::showCurrCue(const std::optional<QString>& currCue) {
    check(currCue ? itemWithTitle(*currCue) : nullptr);
    setTitle(currCue ? menuText("Cue: " + *currCue) : QString(noCueTitle));
}

// Only the checked item is checkable: choosing an item must not turn its mark round by itself.
void CueMenu::check(QAction* item) {
    if (checkedItem_) {
        checkedItem_->setCheckable(false);
    }
    checkedItem_ = item;
    if (item) {
        item->setCheckable(true);
        item->setChecked(true);
    }
}

// Alt goes down to select a cue without executing it; the menu stays open.
void CueMenu::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Alt) {
        QMenu::keyPressEvent(event);
    }
}
