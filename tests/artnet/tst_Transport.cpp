#include "artnet/Transport.h"

#include "artnet/DMX_Universe.h"
#include "support/DatagramListener.h"
#include "support/NoMoreDescriptors.h"
#include "support/StandardOutput.h"

#include <QTest>

#include <dlfcn.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace {

constexpr std::uint8_t OwnAddress = 71;
constexpr std::uint16_t TakenPort = 16454;
constexpr std::uint32_t LoopbackBroadcast = 0x7FFFFFFF;

bool gRefuseOptions = false;

std::uint16_t localPort(int socket) {
    sockaddr_in local{};
    socklen_t size = sizeof local;
    getsockname(socket, reinterpret_cast<sockaddr*>(&local), &size);
    return ntohs(local.sin_port);
}

} // namespace

// The system never refuses the broadcast option to a fresh socket; this stands before its call and can.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's names are reserved ones
extern "C" int setsockopt(int socket, int level, int name, const void* value, socklen_t size) noexcept {
    if (gRefuseOptions) {
        errno = EPERM;
        return -1;
    }
    static const auto original = reinterpret_cast<decltype(&setsockopt)>(dlsym(RTLD_NEXT, "setsockopt"));
    return original(socket, level, name, value, size);
}

class tst_Transport : public QObject {
    Q_OBJECT

private slots:
    void cleanup();
    void printsNothingWhenAllGoesWell();
    void mayBroadcast();
    void neverWaits();
    void port0IsLeftToTheFirstSend();
    void anotherPortIsBound();
    void aTakenPortIsPrintedAndTheSocketStillSends();
    void aRefusedBroadcastOptionIsPrintedAndSingleAddressesStillWork();
    void withoutADescriptorTheErrorIsPrintedAndTheResultIsMinus1();

private:
    /// Opens the socket that the test is about, and keeps what it printed.
    void open(std::uint16_t port);
    std::int32_t sendTo(std::uint32_t address) const;
    void verifySends() const;

    int socket_ = -1;
    QByteArray printed_;
};

void tst_Transport::open(std::uint16_t port) {
    printed_ = standardOutputOf([this, port] { socket_ = createSocket(port); });
}

std::int32_t tst_Transport::sendTo(std::uint32_t address) const {
    DMX_Universe universe;
    universe.setActive(true);
    universe.setNeedsTX(true);
    return universe.sendWithSocket(socket_, address);
}

void tst_Transport::verifySends() const {
    DatagramListener listener(OwnAddress);
    QVERIFY(listener.isListening());
    QCOMPARE(sendTo(listener.address()), 530);
    QCOMPARE(listener.waitFor(1).size(), 1);
}

void tst_Transport::cleanup() {
    gRefuseOptions = false;
    if (socket_ >= 0) {
        close(std::exchange(socket_, -1));
    }
}

void tst_Transport::printsNothingWhenAllGoesWell() {
    open(0);
    QVERIFY(socket_ >= 0);
    QCOMPARE(printed_, QByteArray());
    verifySends();
}

void tst_Transport::mayBroadcast() {
    open(0);
    QCOMPARE(sendTo(LoopbackBroadcast), 530);
}

void tst_Transport::neverWaits() {
    open(0);
    QVERIFY((fcntl(socket_, F_GETFL) & O_NONBLOCK) != 0);
}

void tst_Transport::port0IsLeftToTheFirstSend() {
    open(0);
    QCOMPARE(localPort(socket_), 0);
    verifySends();
    QVERIFY(localPort(socket_) != 0);
}

void tst_Transport::anotherPortIsBound() {
    open(TakenPort);
    QCOMPARE(printed_, QByteArray());
    QCOMPARE(localPort(socket_), 16454);
}

void tst_Transport::aTakenPortIsPrintedAndTheSocketStillSends() {
    const DatagramListener holder(OwnAddress, TakenPort);
    QVERIFY(holder.isListening());
    open(TakenPort);
    QVERIFY(socket_ >= 0);
    QCOMPARE(printed_, QByteArray("      bind returned -1\n"));
    verifySends();
}

void tst_Transport::aRefusedBroadcastOptionIsPrintedAndSingleAddressesStillWork() {
    gRefuseOptions = true;
    open(0);
    QVERIFY(socket_ >= 0);
    QCOMPARE(printed_, QByteArray("      setsockopt(SO_BROADCAST) returned -1\n        errno = 1\n"));
    QCOMPARE(sendTo(LoopbackBroadcast), -1);
    verifySends();
}

void tst_Transport::withoutADescriptorTheErrorIsPrintedAndTheResultIsMinus1() {
    printed_ = standardOutputOf([this] {
        const NoMoreDescriptors full;
        socket_ = createSocket(0);
    });
    QCOMPARE(socket_, -1);
    QCOMPARE(printed_, QByteArray("    Error opening UDP socket! (24)\n"));
}

QTEST_APPLESS_MAIN(tst_Transport)
#include "tst_Transport.moc"
