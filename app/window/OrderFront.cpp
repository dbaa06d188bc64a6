#include "window/OrderFront.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>
#include <QWindow>

namespace {

void makeKey(QWidget& window) {
    window.raise();
    window.activateWindow();
}

/// Waits for `newest` and goes with it, should that never come to the screen.
class FrontAfter : public QObject {
public:
    FrontAfter(QWidget& window, QWidget& newest) : QObject(&newest), window_(&window) {
        newest.windowHandle()->installEventFilter(this);
    }

    bool eventFilter(QObject* newest, QEvent* event) override {
        if (event->type() == QEvent::Expose) {
            newest->removeEventFilter(this);
            deleteLater();
            if (window_) {
                makeKey(*window_);
            }
        }
        return false;
    }

private:
    QPointer<QWidget> window_;
};

} // namespace

void bringBack(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    makeKey(window);
}

void orderFront(QWidget& window, QWidget& newest) {
    const QWindow* const handle = newest.windowHandle();
    if (!handle || handle->isExposed()) {
        makeKey(window);
        return;
    }
    new FrontAfter(window, newest); // owned by the newest window
}
