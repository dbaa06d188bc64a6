#include "process/ProcessActivity.h"

#include "support/StandardOutput.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

namespace {

constexpr auto busConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>)";

/// A message bus of its own, which ends with the object.
class PrivateBus {
public:
    PrivateBus() {
        QFile file(folder_.filePath("bus.conf"));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(QString(busConfiguration).arg(folder_.path()).toUtf8());
        }
        file.close();
        daemon_.start("dbus-daemon", {"--config-file=" + file.fileName(), "--print-address", "--nofork"});
        daemon_.waitForReadyRead();
        address_ = daemon_.readLine().trimmed();
    }
    ~PrivateBus() {
        daemon_.terminate();
        daemon_.waitForFinished();
    }

    QByteArray address() const { return address_; }

private:
    QTemporaryDir folder_;
    QProcess daemon_;
    QByteArray address_;
};

/// What a desktop offers, and whom it listened to.
class StandInScreenSaver : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

public:
    QList<QStringList> inhibitions; ///< application and reason of each
    QString inhibitor;              ///< the caller's name on the bus

public slots:
    unsigned int Inhibit(const QString& application, const QString& reason) {
        inhibitions.append({application, reason});
        inhibitor = message().service();
        return 7;
    }
};

/// What beginning the activity prints.
QByteArray saidWhileBeginning() {
    QByteArray output;
    const QByteArray error = standardErrorOf([&] {
        output = standardOutputOf([] {
            beginActivity();
            QThreadPool::globalInstance()->waitForDone();
            QCoreApplication::processEvents();
        });
    });
    return output + error;
}

} // namespace

class tst_ProcessActivity : public QObject {
    Q_OBJECT

private slots:
    void init();
    void withoutABusNothingHappens();
    void withoutTheServiceNothingHappens();
    void theDesktopIsToldThatTheConsoleRuns();
    void theConsoleStaysOnTheBusWhileItRuns();

private:
    QDBusConnection desktop();

    PrivateBus bus;
};

void tst_ProcessActivity::init() {
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address());
}

/// The other end of the bus.
QDBusConnection tst_ProcessActivity::desktop() {
    return QDBusConnection::connectToBus(bus.address(), "desktop");
}

// First of all: once connected, the toolkit stays with its bus.
void tst_ProcessActivity::withoutABusNothingHappens() {
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/proc/nowhere");
    QCOMPARE(saidWhileBeginning(), QByteArray());
}

void tst_ProcessActivity::withoutTheServiceNothingHappens() {
    QVERIFY2(!bus.address().isEmpty(), "no dbus-daemon");
    QCOMPARE(saidWhileBeginning(), QByteArray());
    QVERIFY(QDBusConnection::sessionBus().isConnected());
}

void tst_ProcessActivity::theDesktopIsToldThatTheConsoleRuns() {
    StandInScreenSaver service;
    QVERIFY(
        desktop().registerObject("/org/freedesktop/ScreenSaver", &service, QDBusConnection::ExportAllSlots));
    QVERIFY(desktop().registerService("org.freedesktop.ScreenSaver"));

    beginActivity();
    QTRY_COMPARE(service.inhibitions.size(), 1);
    QCOMPARE(service.inhibitions.first(), QStringList({"Faderhall", "Faderhall is running"}));
    desktop().unregisterObject("/org/freedesktop/ScreenSaver");
}

// A desktop lets an inhibition go as soon as whoever asked for it leaves the bus.
void tst_ProcessActivity::theConsoleStaysOnTheBusWhileItRuns() {
    StandInScreenSaver service;
    QVERIFY(
        desktop().registerObject("/org/freedesktop/ScreenSaver", &service, QDBusConnection::ExportAllSlots));

    beginActivity();
    QTRY_VERIFY(!service.inhibitor.isEmpty());
    QCOMPARE(service.inhibitor, QDBusConnection::sessionBus().baseService());
    QVERIFY(QDBusConnection::sessionBus().isConnected());
}

QTEST_GUILESS_MAIN(tst_ProcessActivity)
#include "tst_ProcessActivity.moc"
