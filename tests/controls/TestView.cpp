#include "controls/TestView.h"

#include <QPaintEvent>
#include <QPainter>
#include <QTest>

#include <utility>

TestView::TestView(QString key) : key_(std::move(key)) {
    resize(150, 190);
}

TestView::~TestView() {
    for (auto* const control : findChildren<DMXControl*>()) {
        control->removeFromSuperview();
    }
}

DMXControl& TestView::add(const QVariantMap& entry) {
    const auto& control = controls_.emplace_back(DMXControl::controlWithDictionary(entry, *this));
    control->setGeometry(0, 19 * static_cast<int>(controls_.size() - 1), 150, 19);
    control->setVisible(!control->hide());
    return *control;
}

bool TestView::bringToFront() {
    show();
    activateWindow();
    return QTest::qWaitForWindowActive(this);
}

QString TestView::resolvedName(const QString& name) const {
    return QString(name).replace('#', QString::number(layerNum_));
}

void TestView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    drawControls(painter, event->region(), controls_);
}
