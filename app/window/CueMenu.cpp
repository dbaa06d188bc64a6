#include "window/CueMenu.h"

#include "rig/ShownText.h"
#include "window/ScrollingMenu.h"

#include <QKeyEvent>

#include <algorithm>
#include <iterator>

namespace {

constexpr QLatin1StringView noCueTitle("Cues");
constexpr QLatin1StringView selectToolTip("Use 'alt' key to select a cue without executing it.");

QString titleOf(const QAction* item) {
    return item->data().toString();
}

} // namespace

CueMenu::CueMenu(QWidget* parent) : QMenu(noCueTitle, parent) {
    setToolTipsVisible(true);
    scrollInOneColumn(*this);
}

void CueMenu::setupCueMenu(const QStringList& numbers, const std::optional<QString>& currCue) {
    check(nullptr);
    if (actions().isEmpty()) {
        addCommands();
    }
    listCues(numbers);
    check(currCue ? itemWithTitle(*currCue) : nullptr);
}

void CueMenu::addCommands() {
    addCommand("Next Cue", NextCue, Qt::CTRL | Qt::Key_A);
    addCommand("Prev Cue", PrevCue, Qt::CTRL | Qt::Key_R);
    addCommand("Clear", Clear, Qt::CTRL | Qt::Key_X);
    addCommand("Clear Timing", ClearTiming, Qt::CTRL | Qt::ALT | Qt::Key_X,
               "Clear all channels to their default values");
    addSeparator();
    addCommand("Store Cue", StoreCue, Qt::CTRL | Qt::Key_W);
    addCommand("Delete Cue", DeleteCue, {}, "Remove current cue from list");
    addAction(newItem("New Cue…", Qt::CTRL | Qt::Key_N, [this] { emit newCueChosen(); }));
    addSeparator();
}

// What stands at both ends of the old list and the new one stays: items take time to make, and when one of
// ten thousand cues comes or goes, the others would hold up the output.
void CueMenu::listCues(const QStringList& numbers) {
    const auto isListed = [](const QAction* item, const QString& number) { return titleOf(item) == number; };
    const auto [firstOld, firstNew] =
        std::mismatch(cueItems_.cbegin(), cueItems_.cend(), numbers.cbegin(), numbers.cend(), isListed);
    const auto [lastOld, lastNew] =
        std::mismatch(cueItems_.crbegin(), std::make_reverse_iterator(firstOld), numbers.crbegin(),
                      std::make_reverse_iterator(firstNew), isListed);
    const QList<QAction*> behind(lastOld.base(), cueItems_.cend());
    QList<QAction*> items(cueItems_.cbegin(), firstOld);
    for (auto number = firstNew; number != lastNew.base(); ++number) {
        items.append(cueItem(*number));
        insertAction(behind.value(0), items.last());
    }
    for (auto item = firstOld; item != lastOld.base(); ++item) {
        removeAction(*item);
        (*item)->deleteLater(); // it may be what asks for this, and is still at work
    }
    cueItems_ = items + behind;
}

void CueMenu::addCommand(const QString& title, Tag tag, const QKeySequence& keys, const QString& toolTip) {
    QAction* const item = newItem(title, keys, [this, tag, title] { emit cueAction(tag, title); });
    item->setToolTip(toolTip);
    addAction(item);
}

QAction* CueMenu::cueItem(const QString& number) {
    QAction* const item = newItem(number, {}, [this, number] { emit cueAction(ChooseCue, number); });
    item->setToolTip(selectToolTip);
    return item;
}

QAction* CueMenu::newItem(const QString& title, const QKeySequence& keys,
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
    return item;
}

QAction* CueMenu::itemWithTitle(const QString& title) const {
    const QList<QAction*> items = actions();
    const auto found = std::ranges::find_if(
        items, [&](const QAction* item) { return !item->isSeparator() && titleOf(item) == title; });
    return found == items.end() ? nullptr : *found;
}

void CueMenu::showCurrCue(const std::optional<QString>& currCue) {
    check(currCue ? itemWithTitle(*currCue) : nullptr);
    setTitle(currCue ? menuText("Cue: " + *currCue) : noCueTitle);
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
