#include "window/WindowMenu.h"

#include "rig/ShownText.h"
#include "window/OrderFront.h"

#include <algorithm>

QAction& WindowMenu::addCommand(const QString& text, const QList<QKeySequence>& keys) {
    if (!aboveCommands_) {
        aboveCommands_ = addSeparator();
    }
    QAction* const command = addAction(text);
    command->setShortcuts(keys);
    command->setShortcutContext(Qt::ApplicationShortcut);
    return *command;
}

void WindowMenu::setWindows(const QList<QWidget*>& windows) {
    qDeleteAll(windowItems_);
    windowItems_.clear();
    for (QWidget* window : windows) {
        auto* const item = new QAction(menuText(window->windowTitle()), this);
        connect(item, &QAction::triggered, window, [window] { bringBack(*window); });
        item->setData(window->windowTitle());
        item->setShortcutContext(Qt::ApplicationShortcut);
        insertAction(aboveCommands_, item);
        windowItems_.append(item);
    }
}

void WindowMenu::setKeyEquivalents(const QString& mainTitle, const QStringList& fixtureTitles) {
    setKeyEquivalent(mainTitle, 0);
    int number = 1;
    for (const QString& title : fixtureTitles) {
        if (setKeyEquivalent(title, number)) {
            ++number;
        }
    }
}

bool WindowMenu::setKeyEquivalent(const QString& title, int number) {
    constexpr int lastDigit = 9;
    const auto found = std::ranges::find_if(
        windowItems_, [&](const QAction* item) { return item->data().toString() == title; });
    if (found == windowItems_.end()) {
        return false;
    }
    (*found)->setShortcut(number <= lastDigit ? QKeySequence(QString("Ctrl+%1").arg(number))
                                              : QKeySequence());
    return true;
}
