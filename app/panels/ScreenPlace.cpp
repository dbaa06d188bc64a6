#include "panels/ScreenPlace.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>

#include <algorithm>

namespace {

bool isOnAScreen(QPoint place) {
    return std::ranges::any_of(QGuiApplication::screens(), [&](const QScreen* screen) {
        return screen->availableGeometry().contains(place);
    });
}

} // namespace

QPoint movedOntoScreen(QPoint place, QSize size) {
    if (isOnAScreen(place)) {
        return place;
    }
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    // The place is the frame's, whose title bar the window manager adds later; the toolkit's is as high.
    const int height = size.height() + QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const int lastX = std::max(screen.left(), screen.right() - size.width());
    const int lastY = std::max(screen.top(), screen.bottom() - height);
    return {std::clamp(place.x(), screen.left(), lastX), std::clamp(place.y(), screen.top(), lastY)};
}

QPoint movedInto(const QRect& area, const QRect& frame) {
    const int right = std::max(area.left(), area.right() + 1 - frame.width());
    const int bottom = std::max(area.top(), area.bottom() + 1 - frame.height());
    return {std::clamp(frame.left(), area.left(), right), std::clamp(frame.top(), area.top(), bottom)};
}
