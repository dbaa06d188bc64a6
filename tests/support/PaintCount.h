#pragma once

#include <QObject>

class QWidget;

/// Counts how often a widget is painted, for as long as it lives. The widget has to be on the screen.
class PaintCount : public QObject {
    Q_OBJECT

public:
    explicit PaintCount(QWidget& widget);

    /// Lets the widget paint what is due and returns how often it painted since this was last asked.
    int take();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int paints_ = 0;
};
