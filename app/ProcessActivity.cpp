#include "ProcessActivity.h"

#include <QDBusConnection>
#include <QDBusMessage>

void beginActivity() {
    QDBusMessage inhibit =
        QDBusMessage::createMethodCall("org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver",
                                       "org.freedesktop.ScreenSaver", "Inhibit");
    inhibit.setAutoStartService(false);
    inhibit.setArguments({"Faderhall", "Faderhall is running"});
    QDBusConnection::sessionBus().send(inhibit); // does not wait; without a bus it is lost, as it may be
}
