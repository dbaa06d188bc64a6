#include "window/ScrollingMenu.h"

#include <QMenu>

void scrollInOneColumn(QMenu& menu) {
    menu.setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }"));
}
