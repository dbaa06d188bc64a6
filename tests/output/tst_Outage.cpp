#include "artnet/Transport.h"
#include "output/EngineFixture.h"
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
#include <memory>
#include <optional>
#include <vector>

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
    // Brings slot 1 to another level and ticks; true when a datagram went out.
    bool send(int level);
    int error() const { return engine_->sendRecords().front().error; }

    std::optional<Engine> engine_;
    std::shared_ptr<FixtureLevels> levels_;
    TestClock clock_{Second};
};

void tst_Outage::initTestCase() {
    if (unshare(CLONE_NEWNET) != 0) {
        QSKIP("No network of its own is to be had here.");
    }
}

void tst_Outage::init() {
    const int socket = createSocket(0);
    QVERIFY(socket >= 0);
    engine_.emplace();
    engine_->setSocket(socket);
    engine_->setAddress(Node);
    levels_ = makeLevels(*engine_, 0, 1);
    engine_->setPatch({levels_});
    clock_.advance(2 * Second);
}

void tst_Outage::cleanup() {
    engine_.reset();
    levels_.reset();
    unplug();
}

void tst_Outage::plugIn() {
    QVERIFY(ip("link add near type veth peer name far"));
    QVERIFY(ip("link set far arp off up"));
    QVERIFY(ip("addr add 10.77.0.1/24 dev near"));
    QVERIFY(ip("link set near up"));
    QVERIFY(ip("neigh replace 10.77.0.2 lladdr 02:00:00:00:00:02 dev near nud permanent"));
}

bool tst_Outage::send(int level) {
    const std::uint64_t before = engine_->sendRecords().front().sent;
    levels_->held()->setValue(0, static_cast<std::uint32_t>(level));
    engine_->tick();
    return engine_->sendRecords().front().sent == before + 1;
}

void tst_Outage::startedWithoutANetworkTheNextChangeGoesOutOnceThereIsOne() {
    const QByteArray failing = standardErrorOf([this] { QVERIFY(!send(1)); });
    QCOMPARE(failing, QByteArray("Art-Net output fails: Network is unreachable\n"));
    QCOMPARE(error(), ENETUNREACH);
    plugIn();
    const FarEnd node;
    clock_.advance(Second);
    const QByteArray working = standardErrorOf([this] { QVERIFY(send(2)); });
    QCOMPARE(working, QByteArray("Art-Net output works again\n"));
    QCOMPARE(error(), 0);
    QCOMPARE(node.takeLevels(), QList<int>{2});
}

void tst_Outage::anInterfaceThatIsPulledAndPluggedInAgainIsUsedAgain() {
    plugIn();
    const FarEnd node;
    QVERIFY(send(1));
    QVERIFY(ip("link set near down"));
    standardErrorOf([this] { QVERIFY(!send(2)); });
    QVERIFY(ip("link set near up"));
    QVERIFY(ip("neigh replace 10.77.0.2 lladdr 02:00:00:00:00:02 dev near nud permanent"));
    QVERIFY(send(3));
    QCOMPARE(node.takeLevels(), (QList<int>{1, 3}));
}

void tst_Outage::anInterfaceThatIsTakenAwayAndMadeAnewIsUsedAgain() {
    plugIn();
    QVERIFY(send(1));
    unplug();
    standardErrorOf([this] { QVERIFY(!send(2)); });
    plugIn();
    const FarEnd node;
    QVERIFY(send(3));
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
    standardErrorOf([this] { QVERIFY(!send(1)); });
    QTEST(error(), "error");
    QVERIFY(ip(QString("route del %1 10.77.0.2/32").arg(kind)));
    QVERIFY(send(2));
    QCOMPARE(node.takeLevels(), QList<int>{2});
}

// Datagrams to a node that does not answer wait for it in the kernel, and count against the socket meanwhile.
void tst_Outage::aFullBufferRefusesWithoutWaitingAndIsOverWithItsCause() {
    plugIn();
    const FarEnd node;
    QVERIFY(ip("neigh del 10.77.0.2 dev near"));
    QVERIFY(setKernelParameter("ipv4/neigh/near/unres_qlen_bytes", "100000000"));
    bool isSent = true;
    standardErrorOf([&] {
        for (int count = 0; count < 100'000 && isSent; ++count) {
            isSent = send(1 - count % 2);
        }
    });
    QVERIFY(!isSent);
    QCOMPARE(error(), EAGAIN); // which a socket that waits never tells
    QVERIFY(ip("neigh replace 10.77.0.2 lladdr 02:00:00:00:00:02 dev near nud permanent"));
    node.takeLevels();
    QVERIFY(send(2));
    QCOMPARE(node.takeLevels(), QList<int>{2});
}

void tst_Outage::thereIsRoomFor256UniversesInOneTick() {
    plugIn();
    QVERIFY(ip("neigh del 10.77.0.2 dev near"));
    QVERIFY(setKernelParameter("ipv4/neigh/near/unres_qlen_bytes", "100000000"));
    Engine::Patch patch;
    for (int universe = 0; universe < 256; ++universe) {
        patch.push_back(makeLevels(*engine_, universe, 1));
    }
    engine_->setPatch(patch);
    engine_->tick();
    const std::vector<SendRecord> records = engine_->sendRecords();
    QCOMPARE(records.size(), std::size_t{256});
    for (const SendRecord& record : records) {
        QCOMPARE(record.error, 0);
        QCOMPARE(record.sent, std::uint64_t{1});
    }
}

QTEST_GUILESS_MAIN(tst_Outage)
#include "tst_Outage.moc"
