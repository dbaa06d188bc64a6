#include "process/DesktopIdentity.h"

#include <QGuiApplication>
#include <QIcon>

void identifyToDesktop() {
    QGuiApplication::setDesktopFileName("com.ktq.orvaneapplications.faderhall");
    QIcon icon;
    for (const char* size : {"48", "128", "256"}) {
        icon.addFile(QString(":/faderhall-%1.png").arg(size));
    }
    QGuiApplication::setWindowIcon(icon);
}
