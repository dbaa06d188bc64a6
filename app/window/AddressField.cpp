#include "window/AddressField.h"

AddressField::AddressField(QWidget* parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::returnPressed, this, [this] { emit txChange(text()); });
}
