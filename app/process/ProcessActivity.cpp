#include "process/ProcessActivity.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFileInfo>
#include <QThreadPool>

namespace {

// Asked without one, the bus library would start a bus that nobody listens on.
bool hasSessionBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus");
}

void askDesktop() {
    QDBusMessage inhibit =
        QDBusMessage::createMethodCall("org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver",
                                       "org.freedesktop.ScreenSaver", "Inhibit");
    inhibit.setAutoStartService(false);
    inhibit.setArguments({"Faderhall", "Faderhall is running"});
    QDBusConnection::sessionBus().send(inhibit); // does not wait for the answer
}

} // namespace

// Connecting waits for the bus. The pool is waited for before the program ends.
void beginActivity() {
    if (hasSessionBus()) {
        QThreadPool::globalInstance()->start(askDesktop);
    }
}
