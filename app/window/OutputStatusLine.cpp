#include "window/OutputStatusLine.h"

#include "settings/Destination.h"

#include <chrono>

namespace {

constexpr std::chrono::seconds betweenLooks{1};

QString counted(int count, const QString& one) {
    return QString("%1 %2%3").arg(count).arg(one, count == 1 ? "" : "s");
}

} // namespace

QString outputStatusText(const OutputStatus& status, const QString& address) {
    if (status.error != 0) {
        return QString("Sending to %1 fails: %2").arg(address, qt_error_string(status.error));
    }
    if (status.universes == 0) {
        return "Nothing is sent";
    }
    const QString universes = QString("Sending %1 to %2").arg(counted(status.universes, "universe"), address);
    const int rate = qRound(status.datagramsPerSecond);
    return rate == 0 ? universes : universes + QString(" (%1/s)").arg(counted(rate, "datagram"));
}

OutputStatusLine::OutputStatusLine(const Engine& engine, const Destination& destination)
    : engine_(engine), destination_(destination) {
    setTextFormat(Qt::PlainText);
    setIndent(fontMetrics().averageCharWidth());                 // in line with what stands above
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long error does not widen the window
    timer_.setTimerType(Qt::VeryCoarseTimer);                    // rather with another alarm than by itself
    timer_.setInterval(betweenLooks);
    connect(&timer_, &QTimer::timeout, this, &OutputStatusLine::look);
}

void OutputStatusLine::look() {
    const QString now = outputStatusText(watch_.look(engine_), destination_.text());
    if (now != text()) {
        setText(now);
        setToolTip(now);
    }
}

void OutputStatusLine::showEvent(QShowEvent* event) {
    QLabel::showEvent(event);
    look();
    timer_.start();
}

void OutputStatusLine::hideEvent(QHideEvent* event) {
    QLabel::hideEvent(event);
    timer_.stop();
}
