#include "window/AddressField.h"

#include <QFocusEvent>

AddressField::AddressField(QWidget* parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::returnPressed, this, &AddressField::handOver);
}

void AddressField::handOver() {
    emit txChange(text());
    selectAll();
}

void AddressField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::ActiveWindowFocusReason) {
        selectAll();
    }
}
