#pragma once

#include <QLineEdit>

/// The field in which the operator types where to send. Return hands the text over; whoever takes it shows
/// what became of it. Its text stands selected when it was handed over and when its window comes to the
/// front: a level typed there by mistake takes the address's place and is refused, where at its end it would
/// make another address, 127.0.0.1 and 50 for example.
class AddressField : public QLineEdit {
    Q_OBJECT

public:
    explicit AddressField(QWidget* parent = nullptr);

signals:
    void txChange(const QString& text);

protected:
    void focusInEvent(QFocusEvent* event) override;

private:
    void handOver();
};
