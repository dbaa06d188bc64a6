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
    removeItems();
    addCommands();
    for (const QString& number : numbers) {
        addCueAction(number, ChooseCue, {}, selectToolTip);
    }
    check(currCue ? itemWithTitle(*currCue) : nullptr);
}

// One of the items may be what asks for the rebuild, and it is still at work.
void CueMenu::removeItems() {
    checkedItem_ = nullptr;
    for (QAction* const item : actions()) {
        removeAction(item);
        item->deleteLater();
    }
}

void CueMenu::addCommands() {
    addCueAction("Next Cue", NextCue, Qt::CTRL | Qt::Key_A);
    addCueAction("Prev Cue", PrevCue, Qt::CTRL | Qt::Key_R);
    addCueAction("Clear", Clear, Qt::CTRL | Qt::Key_X);
    addCueAction("Clear Timing", ClearTiming, Qt::CTRL | Qt::ALT | Qt::Key_X,
                 "Clear all channels to their default values");
    addSeparator();
    addCueAction("Store Cue", StoreCue, Qt::CTRL | Qt::Key_W);
    addCueAction("Delete Cue", DeleteCue, {}, "Remove current cue from list");
    addItem("New Cue…", Qt::CTRL | Qt::Key_N, [this] { emit newCueChosen(); });
    addSeparator();
}

void CueMenu::addCueAction(const QString& title, Tag tag, const QKeySequence& keys, const QString& toolTip) {
    addItem(title, keys, [this, tag, title] { emit cueAction(tag, title); })->setToolTip(toolTip);
}

QAction* CueMenu::addItem(const QString& title, const QKeySequence& keys,
                          const std::function<void()>& chosen) {
    auto* const item = new QAction(menuText(title), this);
    item->setData(title);
    item->setAutoRepeat(false); // a key that is held down steps once, not through the whole show
    if (!keys.isEmpty()) {
        item->setShortcut(keys);
        item->setShortcutContext(Qt::ApplicationShortcut);
    }
    connect(item, &QAction::triggered, this, [this, item, chosen] {
        // A cue may be named like a command, which then carries its mark; it must not lose it by being
        // chosen.
        item->setChecked(item == checkedItem_);
        chosen();
    });
    addAction(item);
    return item;
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

// Only the checked item is checkable: choosing another must not mark it by itself.
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
