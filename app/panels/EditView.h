#pragma once

#include <QPointer>
#include <QRect>
#include <QString>

class DMXControl;
class QLabel;
class QWidget;

/// The one field that shows the number being typed. It stands in one view at a time, for one fader, and is
/// nobody's child while it is not shown.
class EditView {
public:
    EditView() = default;
    ~EditView();
    EditView(const EditView&) = delete;
    EditView& operator=(const EditView&) = delete;
    EditView(EditView&&) = delete;
    EditView& operator=(EditView&&) = delete;

    /// Puts the field at `frame` into `superview`, over its other children, with `text` in it. Whoever showed
    /// it before has lost it.
    void show(const DMXControl& owner, QWidget& superview, const QRect& frame, const QString& text);
    /// Takes the field away if it is shown for `owner`.
    void hide(const DMXControl& owner);
    /// Takes the field out of a view that goes away.
    void leave(const QWidget& superview);
    bool isShownFor(const DMXControl& owner) const;

private:
    void takeAway();

    QPointer<QLabel> field_; ///< made when it is first needed
    const DMXControl* owner_ = nullptr;
};
