#include "panels/EditView.h"

#include <QLabel>

namespace {

QLabel* makeField() {
    auto* const field = new QLabel;
    field->setObjectName("gEditView");
    field->setAlignment(Qt::AlignCenter);
    field->setAutoFillBackground(true);
    QPalette colours = field->palette();
    colours.setColor(QPalette::Window, Qt::blue);
    colours.setColor(QPalette::WindowText, Qt::white);
    field->setPalette(colours);
    return field;
}

} // namespace

EditView::~EditView() {
    delete field_;
}

void EditView::show(const DMXControl& owner, QWidget& superview, const QRect& frame, const QString& text) {
    if (!field_) {
        field_ = makeField();
    }
    owner_ = &owner;
    field_->setText(text);
    field_->setParent(&superview);
    field_->setGeometry(frame);
    field_->show();
    field_->raise();
}

void EditView::hide(const DMXControl& owner) {
    if (isShownFor(owner)) {
        takeAway();
    }
}

void EditView::leave(const QWidget& superview) {
    if (field_ && field_->parentWidget() == &superview) {
        takeAway();
    }
}

bool EditView::isShownFor(const DMXControl& owner) const {
    return field_ && owner_ == &owner;
}

void EditView::takeAway() {
    owner_ = nullptr;
    field_->hide();
    field_->setParent(nullptr);
}
