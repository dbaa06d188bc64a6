#include "support/PaintCount.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

PaintCount::PaintCount(QWidget& widget) {
    QCoreApplication::processEvents();
    widget.installEventFilter(this);
}

int PaintCount::take() {
    QCoreApplication::processEvents();
    return std::exchange(paints_, 0);
}

bool PaintCount::eventFilter(QObject* watched, QEvent* event) {
    paints_ += event->type() == QEvent::Paint ? 1 : 0;
    return QObject::eventFilter(watched, event);
}
