#include "artnet/DMX_Universe.h"
#include "artnet/Transport.h"
#include "support/StandardOutput.h"
#include "support/TestClock.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include <linux/if_packet.h>
#include <net/ethernet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace {

constexpr std::uint64_t Second = 1'000'000'000;
constexpr std::uint32_t Node = 0x0A4D0002; // 10.77.0.2

bool ip(const QString& arguments) {
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start("ip", arguments.split(u' '));
    return process.waitForFinished() && process.exitCode() == 0;
}

bool setKernelParameter(const QString& path, const QByteArray& value) {
    QFile file("/proc/sys/net/" + path);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(value) == value.size();
}

// The far end of the cable, where a node would be plugged in: sees every frame that comes out.
class FarEnd {
public:
    FarEnd() : socket_(::socket(AF_PACKET, SOCK_RAW | SOCK_NONBLOCK, htons(ETH_P_IP))) {
        sockaddr_ll end{};
        end.sll_family = AF_PACKET;
        end.sll_protocol = htons(ETH_P_IP);
        end.sll_ifindex = static_cast<int>(if_nametoindex("far"));
        if (bind(socket_, reinterpret_cast<const sockaddr*>(&end), sizeof end) != 0) {
            qFatal("nobody listens at the far end");
        }
    }
    ~FarEnd() { close(socket_); }
    FarEnd(const FarEnd&) = delete;
    FarEnd& operator=(const FarEnd&) = delete;
    FarEnd(FarEnd&&) = delete;
    FarEnd& operator=(FarEnd&&) = delete;

    // The levels of slot 1 in the datagrams that have come since the last call.
    QList<int> takeLevels() const {
        constexpr int slot1 = 14 + 20 + 8 + 18; // after the headers of Ethernet, IP, UDP and ArtDmx
        QTest::qWait(20);                       // handed over by the kernel in its own time
        QByteArray frame(2048, '\0');
        QList<int> levels;
        while (recv(socket_, frame.data(), 2048, 0) == slot1 + 512) {
            levels.append(static_cast<std::uint8_t>(frame.at(slot1)));
        }
        return levels;
    }

private:
    int socket_;
};

} // namespace

/// A network that comes and goes, on a cable of its own that no other program has to do with.
class tst_Outage : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void startedWithoutANetworkTheNextChangeGoesOutOnceThereIsOne();
    void anInterfaceThatIsPulledAndPluggedInAgainIsUsedAgain();
    void anInterfaceThatIsTakenAwayAndMadeAnewIsUsedAgain();
    void aRefusalIsOverWithItsCause_data();
    void aRefusalIsOverWithItsCause();
    void aFullBufferRefusesWithoutWaitingAndIsOverWithItsCause();
    void thereIsRoomFor256UniversesInOneTick();

private:
    static void plugIn();
    static void unplug() { ip("link del near"); }
    // Brings slot 1 to a level and offers the universe.
    std::int32_t send(int level, int universe = 0) const;

    // Of universe 0.
    static int error() { return DMX_Universe::getUniverse(0).sendRecord().error; }

    int socket_ = -1;
    TestClock clock_{Second};
};

void tst_Outage::initTestCase() {
    if (unshare(CLONE_NEWNET) != 0) {
        QSKIP("No network of its own is to be had here.");
    }
}

void tst_Outage::init() {
    DMX_Universe::releaseUniverses();
    socket_ = createSocket(0);
    QVERIFY(socket_ >= 0);
    clock_.advance(2 * Second);
}

void tst_Outage::cleanup() {
    close(std::exchange(socket_, -1));
    unplug();
    DMX_Universe::releaseUniverses();
}

void tst_Outage::plugIn() {
    QVERIFY(ip("link add near type veth peer name far"));
    QVERIFY(ip("link set far arp off up"));
    QVERIFY(ip("addr add 10.77.0.1/24 dev near"));
    QVERIFY(ip("link set near up"));
    QVERIFY(ip("neigh replace 10.77.0.2 lladdr 02:00:00:00:00:02 dev near nud permanent"));
}

std::int32_t tst_Outage::send(int level, int universe) const {
    DMX_Universe& sender = DMX_Universe::getUniverse(universe);
    sender.dmx()[0] = static_cast<std::uint8_t>(level);
    sender.setActive(true);
    sender.setNeedsTX(true);
    return sender.sendWithSocket(socket_, Node);
}

void tst_Outage::startedWithoutANetworkTheNextChangeGoesOutOnceThereIsOne() {
    const QByteArray failing = standardErrorOf([this] { QCOMPARE(send(1), -1); });
    QCOMPARE(failing, QByteArray("Art-Net output fails: Network is unreachable\n"));
    QCOMPARE(error(), ENETUNREACH);
    plugIn();
    const FarEnd node;
    clock_.advance(Second);
    const QByteArray working = standardErrorOf([this] { QCOMPARE(send(2), 530); });
    QCOMPARE(working, QByteArray("Art-Net output works again\n"));
    QCOMPARE(error(), 0);
    QCOMPARE(node.takeLevels(), QList<int>{2});
}

void tst_Outage::anInterfaceThatIsPulledAndPluggedInAgainIsUsedAgain() {
    plugIn();
    const FarEnd node;
    QCOMPARE(send(1), 530);
    QVERIFY(ip("link set near down"));
    standardErrorOf([this] { QCOMPARE(send(2), -1); });
    QVERIFY(ip("link set near up"));
    QVERIFY(ip("neigh replace 10.77.0.2 lladdr 02:00:00:00:00:02 dev near nud permanent"));
    QCOMPARE(send(3), 530);
    QCOMPARE(node.takeLevels(), (QList<int>{1, 3}));
}

void tst_Outage::anInterfaceThatIsTakenAwayAndMadeAnewIsUsedAgain() {
    plugIn();
    QCOMPARE(send(1), 530);
    unplug();
    standardErrorOf([this] { QCOMPARE(send(2), -1); });
    plugIn();
    const FarEnd node;
    QCOMPARE(send(3), 530);
    QCOMPARE(node.takeLevels(), QList<int>{3});
}

void tst_Outage::aRefusalIsOverWithItsCause_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("error");
    QTest::newRow("unreachable") << "unreachable" << EHOSTUNREACH;
    QTest::newRow("prohibited") << "prohibit" << EACCES;
    QTest::newRow("swallowed") << "blackhole" << EINVAL;
}

void tst_Outage::aRefusalIsOverWithItsCause() {
    QFETCH(const QString, kind);
    plugIn();
    const FarEnd node;
    QVERIFY(ip(QString("route add %1 10.77.0.2/32").arg(kind)));
    standardErrorOf([this] { QCOMPARE(send(1), -1); });
    QTEST(error(), "error");
    QVERIFY(ip(QString("route del %1 10.77.0.2/32").arg(kind)));
    QCOMPARE(send(2), 530);
    QCOMPARE(node.takeLevels(), QList<int>{2});
}

// Datagrams to a node that does not answer wait for it in the kernel, and count against the socket meanwhile.
void tst_Outage::aFullBufferRefusesWithoutWaitingAndIsOverWithItsCause() {
    plugIn();
    const FarEnd node;
    QVERIFY(ip("neigh del 10.77.0.2 dev near"));
    QVERIFY(setKernelParameter("ipv4/neigh/near/unres_qlen_bytes", "100000000"));
    std::int32_t last = 530;
    standardErrorOf([&] {
        for (int count = 0; count < 100'000 && last == 530; ++count) {
            last = send(1);
        }
    });
    QCOMPARE(last, -1);
    QCOMPARE(error(), EAGAIN); // which a socket that waits never tells
    QVERIFY(ip("neigh replace 10.77.0.2 lladdr 02:00:00:00:00:02 dev near nud permanent"));
    node.takeLevels();
    QCOMPARE(send(2), 530);
    QCOMPARE(node.takeLevels(), QList<int>{2});
}

void tst_Outage::thereIsRoomFor256UniversesInOneTick() {
    plugIn();
    QVERIFY(ip("neigh del 10.77.0.2 dev near"));
    QVERIFY(setKernelParameter("ipv4/neigh/near/unres_qlen_bytes", "100000000"));
    for (int universe = 0; universe < 256; ++universe) {
        QCOMPARE(send(1, universe), 530);
    }
}

QTEST_GUILESS_MAIN(tst_Outage)
#include "tst_Outage.moc"
