#pragma once

#include <QObject>

class QWidget;

/// Counts how often the place of a widget is painted by its parent, which draws it, for as long as the widget
/// lives. It has to be on the screen.
class PaintCount : public QObject {
    Q_OBJECT

public:
    explicit PaintCount(const QWidget& widget);

    /// Lets the parent paint what is due and returns how often it painted the place since this was last
    /// asked.
    int take();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const QWidget& widget_;
    int paints_ = 0;
};
