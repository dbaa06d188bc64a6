#include "process/BusGreeting.h"

#include "BusSocket.h"

#include <QTest>

using namespace std::chrono_literals;

namespace {

std::chrono::steady_clock::time_point in(std::chrono::milliseconds time) {
    return std::chrono::steady_clock::now() + time;
}

} // namespace

class tst_BusGreeting : public QObject {
    Q_OBJECT

private slots:
    void aSocketThatOnlyTakesTheConnectionIsSilent();
    void aPartOfALineIsNoAnswer();
    void aBusIsGreetedAsThisUserAndAnswers_data();
    void aBusIsGreetedAsThisUserAndAnswers();
    void aBusThatOnlyGreetsIsSilent();
    void aBusThatClosesTheConnectionIsNotWaitedFor();
    void theFirstOneThatTakesTheConnectionCounts();
    void aNameMayBeEscaped();
    void anAbstractNameIsFound();
    void whatNobodyWaitsForIsNotSilent_data();
    void whatNobodyWaitsForIsNotSilent();
};

void tst_BusGreeting::aSocketThatOnlyTakesTheConnectionIsSilent() {
    const BusSocket bus;
    QVERIFY(bus.isOpen());
    QVERIFY(isSilentBus(bus.address(), in(20ms)));
    QVERIFY(isSilentBus(bus.address(), in(0ms)));
}

void tst_BusGreeting::aPartOfALineIsNoAnswer() {
    BusSocket bus;
    bus.answer("OK");
    QVERIFY(isSilentBus(bus.address(), in(20ms)));
}

void tst_BusGreeting::aBusIsGreetedAsThisUserAndAnswers_data() {
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QByteArray>("next");

    // The message as dbus-send was seen to send it: a method call without a body, whose header fields take
    // 109 bytes.
    QTest::newRow("it knows the user") << QByteArray("OK 1234deadbeef\r\n")
                                       << QByteArray("BEGIN\r\nl\x01\0\x01\0\0\0\0\x01\0\0\0\x6e\0\0\0"
                                                     "\x01\x01o\0\x15\0\0\0/org/freedesktop/DBus\0\0\0"
                                                     "\x06\x01s\0\x14\0\0\0org.freedesktop.DBus\0\0\0\0"
                                                     "\x02\x01s\0\x14\0\0\0org.freedesktop.DBus\0\0\0\0"
                                                     "\x03\x01s\0\x05\0\0\0Hello\0\0\0",
                                                     7 + 128);
    QTest::newRow("it does not") << QByteArray("REJECTED EXTERNAL\r\n") << QByteArray();
}

void tst_BusGreeting::aBusIsGreetedAsThisUserAndAnswers() {
    QFETCH(const QByteArray, answer);
    QFETCH(const QByteArray, next);

    BusSocket bus;
    bus.answer(answer);
    QVERIFY(!isSilentBus(bus.address(), in(1min)));
    QByteArray user; // each digit as its code: 1000 is 31303030
    for (const char digit : std::to_string(getuid())) {
        user.append('3').append(digit);
    }
    QCOMPARE(bus.taken(), QByteArray("\0AUTH EXTERNAL ", 15) + user + "\r\n" + next);
}

void tst_BusGreeting::aBusThatOnlyGreetsIsSilent() {
    BusSocket bus;
    bus.answerOnce("OK 1234deadbeef\r\n");
    QVERIFY(isSilentBus(bus.address(), in(20ms)));
}

void tst_BusGreeting::aBusThatClosesTheConnectionIsNotWaitedFor() {
    BusSocket bus;
    bus.answer({});
    QVERIFY(!isSilentBus(bus.address(), in(1min)));
}

void tst_BusGreeting::theFirstOneThatTakesTheConnectionCounts() {
    const BusSocket silent;
    QVERIFY(isSilentBus("unix:path=/nowhere/bus;" + silent.address(), in(20ms)));
    BusSocket bus;
    bus.answer("OK\r\n");
    QVERIFY(!isSilentBus(bus.address() + ';' + silent.address(), in(1min)));
}

void tst_BusGreeting::aNameMayBeEscaped() {
    const BusSocket silent;
    QByteArray address = silent.address();
    address.replace("bus", "b%75s,guid=1234");
    QVERIFY(isSilentBus(address, in(20ms)));
}

void tst_BusGreeting::anAbstractNameIsFound() {
#ifdef __linux__
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    const QByteArray text = "faderhall-test-" + QByteArray::number(getpid());
    std::copy(text.begin(), text.end(), name.sun_path + 1);
    const auto length = offsetof(sockaddr_un, sun_path) + 1 + static_cast<std::size_t>(text.size());
    QCOMPARE(bind(socket, reinterpret_cast<const sockaddr*>(&name), static_cast<socklen_t>(length)), 0);
    QCOMPARE(listen(socket, 8), 0);
    QVERIFY(isSilentBus("unix:abstract=" + text, in(20ms)));
    close(socket);
#else
    QSKIP("no abstract names here");
#endif
}

void tst_BusGreeting::whatNobodyWaitsForIsNotSilent_data() {
    QTest::addColumn<QByteArray>("address");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no socket") << QByteArray("unix:path=/dev/null");
    QTest::newRow("no name") << QByteArray("unix:path=");
    QTest::newRow("a name that is too long") << "unix:path=/" + QByteArray(108, 'x');
    QTest::newRow("another kind of address") << QByteArray("unix:runtime=yes");
    QTest::newRow("another transport") << QByteArray("tcp:host=localhost,port=1");
    QTest::newRow("no address") << QByteArray("a bus");
    QTest::newRow("an option that is none") << QByteArray("unix:,=,path");
}

void tst_BusGreeting::whatNobodyWaitsForIsNotSilent() {
    QFETCH(const QByteArray, address);

    QVERIFY(!isSilentBus(address, in(1min)));
}

QTEST_APPLESS_MAIN(tst_BusGreeting)
#include "tst_BusGreeting.moc"
