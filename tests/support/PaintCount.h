#pragma once

#include <QObject>
#include <QRect>

class QWidget;

/// Counts how often a place in a widget is painted, for as long as the widget lives. It has to be on the
/// screen.
class PaintCount : public QObject {
    Q_OBJECT

public:
    PaintCount(QWidget& widget, const QRect& place);

    /// Lets the widget paint what is due and returns how often it painted the place since this was last
    /// asked.
    int take();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QRect place_;
    int paints_ = 0;
};
