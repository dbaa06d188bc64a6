#pragma once

#include <QObject>

#include <functional>

/// Says when a menu of the program is open, and when none is any more.
class MenuWatch : public QObject {
    Q_OBJECT

public:
    explicit MenuWatch(std::function<void(bool isOpen)> changed);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void(bool)> changed_;
};
