#pragma once

#include "output/OutputWatch.h"

#include <QLabel>
#include <QTimer>

class Destination;
class Engine;

/// What the status line says of the output to that address.
QString outputStatusText(const OutputStatus& status, const QString& address);

/// The line that tells what happens on the network. Looks once a second, and only while it can be seen.
class OutputStatusLine : public QLabel {
    Q_OBJECT

public:
    /// Both have to outlive the line.
    OutputStatusLine(const Engine& engine, const Destination& destination);

    /// Looks at the output now.
    void look();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    const Engine& engine_;
    const Destination& destination_;
    OutputWatch watch_;
    QTimer timer_;
};
