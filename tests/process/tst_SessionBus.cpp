#include "process/SessionBus.h"

#include "BusSocket.h"

#include <QTest>

using namespace std::chrono_literals;

namespace {

constexpr auto session = "DBUS_SESSION_BUS_ADDRESS";
constexpr auto accessibility = "AT_SPI_BUS_ADDRESS";
constexpr auto runtimeFolder = "XDG_RUNTIME_DIR";

const QByteArray givenUp("unix:path=/dev/null");

} // namespace

class tst_SessionBus : public QObject {
    Q_OBJECT

private slots:
    void init();

    void aBusThatSaysNothingIsGivenUp();
    void aBusThatAnswersIsKept();
    void withoutAnAddressTheRuntimeFolderIsLookedInto();
    void theBusOfAssistiveTechnologyIsAskedToo();
    void withoutABusNothingHappens();
    void theBusNeedNotBeWaitedFor();
};

void tst_SessionBus::init() {
    for (const auto* variable : {session, accessibility, runtimeFolder}) {
        qunsetenv(variable);
    }
}

void tst_SessionBus::aBusThatSaysNothingIsGivenUp() {
    const BusSocket silent;
    qputenv(session, silent.address());
    SessionBus bus(20ms);
    QCOMPARE(qgetenv(session), silent.address());
    bus.giveUpIfSilent();
    QCOMPARE(qgetenv(session), givenUp);
}

void tst_SessionBus::aBusThatAnswersIsKept() {
    BusSocket answering;
    answering.answer("OK 1234deadbeef\r\n");
    qputenv(session, answering.address());
    SessionBus(1min).giveUpIfSilent();
    QCOMPARE(qgetenv(session), answering.address());
}

void tst_SessionBus::withoutAnAddressTheRuntimeFolderIsLookedInto() {
    const BusSocket silent;
    qputenv(runtimeFolder, silent.folder().toUtf8());
    SessionBus(20ms).giveUpIfSilent();
    QCOMPARE(qgetenv(session), givenUp);
}

void tst_SessionBus::theBusOfAssistiveTechnologyIsAskedToo() {
    const BusSocket silent;
    qputenv(accessibility, silent.address());
    SessionBus(20ms).giveUpIfSilent();
    QCOMPARE(qgetenv(accessibility), givenUp);
    QVERIFY(!qEnvironmentVariableIsSet(session));
}

void tst_SessionBus::withoutABusNothingHappens() {
    SessionBus(1min).giveUpIfSilent();
    qputenv(runtimeFolder, "/proc/nowhere");
    SessionBus(1min).giveUpIfSilent();
    QVERIFY(!qEnvironmentVariableIsSet(session));
    QVERIFY(!qEnvironmentVariableIsSet(accessibility));
}

void tst_SessionBus::theBusNeedNotBeWaitedFor() {
    const BusSocket silent;
    qputenv(session, silent.address());
    { const SessionBus bus(20ms); }
    QCOMPARE(qgetenv(session), silent.address());
}

QTEST_APPLESS_MAIN(tst_SessionBus)
#include "tst_SessionBus.moc"
