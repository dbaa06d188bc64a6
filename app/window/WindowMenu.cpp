#include "window/WindowMenu.h"

#include "widgets/ShownText.h"
#include "window/OrderFront.h"

#include <algorithm>

void WindowMenu::setWindows(const QList<QWidget*>& windows) {
    clear();
    for (QWidget* window : windows) {
        QAction* const item =
            addAction(menuText(window->windowTitle()), window, [window] { bringBack(*window); });
        item->setData(window->windowTitle());
        item->setShortcutContext(Qt::ApplicationShortcut);
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
    const QList<QAction*> items = actions();
    const auto found =
        std::ranges::find_if(items, [&](const QAction* item) { return item->data().toString() == title; });
    if (found == items.end()) {
        return false;
    }
    (*found)->setShortcut(number <= lastDigit ? QKeySequence(QString("Ctrl+%1").arg(number))
                                              : QKeySequence());
    return true;
}
