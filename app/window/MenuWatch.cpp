#include "window/MenuWatch.h"

#include <QApplication>
#include <QEvent>
#include <QMenu>

namespace {

bool isMenuOpen() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget()) != nullptr;
}

// A menu on its way out is no menu any more, but still a popup.
bool isPopup(QObject* object) {
    return object->isWidgetType() && static_cast<QWidget*>(object)->windowType() == Qt::Popup;
}

} // namespace

MenuWatch::MenuWatch(std::function<void(bool)> changed) : changed_(std::move(changed)) {
    qApp->installEventFilter(this);
}

bool MenuWatch::eventFilter(QObject* watched, QEvent* event) {
    // It is told before the toolkit counts it among the popups.
    if (event->type() == QEvent::Show && isPopup(watched)) {
        changed_(isMenuOpen() || qobject_cast<QMenu*>(watched));
    } else if (event->type() == QEvent::Hide && isPopup(watched)) {
        changed_(isMenuOpen());
    }
    return false;
}
