#include "window/OutputStatusLine.h"

#include "settings/Destination.h"
#include "settings/UserDefaults.h"
#include "support/TestClock.h"
#include "support/TestRig.h"

#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

namespace {

constexpr std::uint64_t second = 1'000'000'000;

} // namespace

class tst_OutputStatusLine : public QObject {
    Q_OBJECT

private slots:
    void init();

    void theTextTellsWhatGoesOut_data();
    void theTextTellsWhatGoesOut();
    void theTextTellsWhySendingFails();
    void theLineLooksAsSoonAsItCanBeSeen();
    void theLineLooksAgainWithoutBeingAsked();
    void aLongTextDoesNotWidenTheWindow();

private:
    QTemporaryDir folder_;
    std::unique_ptr<TestRig> rig_;
    UserDefaults defaults_{folder_.filePath("Faderhall.plist")};
    Destination destination_{defaults_};
};

// The engine has no socket: what it sends fails.
void tst_OutputStatusLine::init() {
    rig_ = std::make_unique<TestRig>();
    rig_->add("Spot", {"Dimmer"});
}

void tst_OutputStatusLine::theTextTellsWhatGoesOut_data() {
    QTest::addColumn<int>("universes");
    QTest::addColumn<double>("datagramsPerSecond");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing") << 0 << 0.0 << "Nothing is sent";
    QTest::newRow("the rate is not known yet") << 2 << 0.0 << "Sending 2 universes to 10.0.0.1";
    QTest::newRow("one of each") << 1 << 0.97 << "Sending 1 universe to 10.0.0.1 (1 datagram/s)";
    QTest::newRow("a fade") << 1 << 29.7 << "Sending 1 universe to 10.0.0.1 (30 datagrams/s)";
    QTest::newRow("a big rig") << 256 << 7680.0 << "Sending 256 universes to 10.0.0.1 (7680 datagrams/s)";
}

void tst_OutputStatusLine::theTextTellsWhatGoesOut() {
    QFETCH(const int, universes);
    QFETCH(const double, datagramsPerSecond);
    QFETCH(const QString, text);
    QCOMPARE(outputStatusText({universes, datagramsPerSecond, 0}, "10.0.0.1"), text);
}

void tst_OutputStatusLine::theTextTellsWhySendingFails() {
    QCOMPARE(outputStatusText({0, 0.0, ENETUNREACH}, "10.0.0.1"),
             QString("Sending to 10.0.0.1 fails: Network is unreachable"));
    QCOMPARE(outputStatusText({3, 3.0, EACCES}, "10.0.0.1"),
             QString("Sending to 10.0.0.1 fails: Permission denied"));
}

void tst_OutputStatusLine::theLineLooksAsSoonAsItCanBeSeen() {
    const TestClock clock(100 * second);
    destination_.setIPAddress("10.0.0.1");
    OutputStatusLine line(rig_->engine(), destination_);
    QCOMPARE(line.text(), QString());
    rig_->tick();
    line.show();
    QCOMPARE(line.text(), QString("Sending to 10.0.0.1 fails: Bad file descriptor"));
    QCOMPARE(line.toolTip(), line.text());
}

void tst_OutputStatusLine::theLineLooksAgainWithoutBeingAsked() {
    destination_.setIPAddress("10.0.0.1");
    OutputStatusLine line(rig_->engine(), destination_);
    line.show();
    QCOMPARE(line.text(), QString("Nothing is sent"));
    rig_->tick();
    QTRY_COMPARE(line.text(), QString("Sending to 10.0.0.1 fails: Bad file descriptor"));
}

void tst_OutputStatusLine::aLongTextDoesNotWidenTheWindow() {
    QStatusBar bar;
    OutputStatusLine line(rig_->engine(), destination_);
    bar.addWidget(&line, 1);
    const int width = bar.minimumSizeHint().width();
    line.setText(QString(500, 'x'));
    QCOMPARE(bar.minimumSizeHint().width(), width);
}

QTEST_MAIN(tst_OutputStatusLine)
#include "tst_OutputStatusLine.moc"
