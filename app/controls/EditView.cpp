#include "controls/EditView.h"

#include <QLabel>
#include <QPointer>

namespace {

// Watched, because a fixture view that is torn down takes its children with it.
QPointer<QLabel> gEditView;
const QWidget* gOwner = nullptr;

QLabel* editView() {
    if (!gEditView) {
        gEditView = new QLabel;
        gEditView->setObjectName("gEditView");
        gEditView->setAlignment(Qt::AlignCenter);
        gEditView->setAutoFillBackground(true);
        QPalette colours = gEditView->palette();
        colours.setColor(QPalette::Window, Qt::blue);
        colours.setColor(QPalette::WindowText, Qt::white);
        gEditView->setPalette(colours);
    }
    return gEditView;
}

} // namespace

namespace EditView {

void show(const QWidget* owner, QWidget* superview, const QRect& frame, const QString& text) {
    QLabel* field = editView();
    gOwner = owner;
    field->setText(text);
    field->setParent(superview);
    field->setGeometry(frame);
    field->show();
    field->raise();
}

void hide(const QWidget* owner) {
    if (!isShownBy(owner)) {
        return;
    }
    gOwner = nullptr;
    gEditView->hide();
    gEditView->setParent(nullptr);
}

bool isShownBy(const QWidget* owner) {
    return gEditView && gOwner == owner;
}

void release() {
    delete gEditView;
    gOwner = nullptr;
}

} // namespace EditView
