#pragma once

#include <QRect>
#include <QString>

class QWidget;

/// The one field of the program that shows the number being typed, `gEditView`. It stands in one fixture
/// view at a time, for one owner, and is nobody's child while it is not shown.
namespace EditView {

/// Puts the field at `frame` into `superview`, over its other children, with `text` in it. Whoever showed
/// it before has lost it.
void show(const QWidget* owner, QWidget* superview, const QRect& frame, const QString& text);

/// Takes the field away if `owner` is the one who shows it.
void hide(const QWidget* owner);

bool isShownBy(const QWidget* owner);

/// Ends the field's life; it is made anew when it is needed again.
void release();

} // namespace EditView
