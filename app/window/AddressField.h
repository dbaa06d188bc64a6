#pragma once

#include <QLineEdit>

/// The field in which the operator types where to send. Return hands the text over; whoever takes it shows
/// what became of it.
class AddressField : public QLineEdit {
    Q_OBJECT

public:
    explicit AddressField(QWidget* parent = nullptr);

signals:
    void txChange(const QString& text);
};
