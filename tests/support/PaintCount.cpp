#include "support/PaintCount.h"

#include <QCoreApplication>
#include <QPaintEvent>
#include <QWidget>

#include <utility>

PaintCount::PaintCount(QWidget& widget, const QRect& place) : place_(place) {
    QCoreApplication::processEvents();
    widget.installEventFilter(this);
}

int PaintCount::take() {
    QCoreApplication::processEvents();
    return std::exchange(paints_, 0);
}

bool PaintCount::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        const QRegion& due = static_cast<QPaintEvent*>(event)->region();
        paints_ += due.intersects(place_) ? 1 : 0;
    }
    return QObject::eventFilter(watched, event);
}
