#pragma once

#include "artnet/OutputWatch.h"

#include <QLabel>
#include <QTimer>

class Destination;

/// What the status line says of the output to that address.
QString outputStatusText(const OutputStatus& status, const QString& address);

/// The line that tells what happens on the network. Looks once a second, and only while it can be seen.
class OutputStatusLine : public QLabel {
    Q_OBJECT

public:
    /// `destination` has to outlive the line.
    explicit OutputStatusLine(const Destination& destination);

    /// Looks at the output now.
    void look();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    const Destination& destination_;
    OutputWatch watch_;
    QTimer timer_;
};
