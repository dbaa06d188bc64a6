#include "output/TickGrid.h"

#include <QTest>

class tst_TickGrid : public QObject {
    Q_OBJECT

private slots:
    void nextTickIsOnTheGridAfterNow_data();
    void nextTickIsOnTheGridAfterNow();
    void aMinuteHasTheSameTicksHoweverLateEachIs_data();
    void aMinuteHasTheSameTicksHoweverLateEachIs();
};

void tst_TickGrid::nextTickIsOnTheGridAfterNow_data() {
    QTest::addColumn<quint64>("start");
    QTest::addColumn<quint64>("now");
    QTest::addColumn<quint64>("due");

    QTest::newRow("at the start") << quint64(0) << quint64(0) << quint64(33'300'000);
    QTest::newRow("just before a tick") << quint64(0) << quint64(33'299'999) << quint64(33'300'000);
    QTest::newRow("at a tick") << quint64(0) << quint64(33'300'000) << quint64(66'600'000);
    QTest::newRow("just after a tick") << quint64(0) << quint64(33'300'001) << quint64(66'600'000);
    QTest::newRow("late by several ticks") << quint64(0) << quint64(200'000'000) << quint64(233'100'000);
    QTest::newRow("another start") << quint64(1'000) << quint64(33'300'000) << quint64(33'301'000);
    QTest::newRow("before the start") << quint64(1'000) << quint64(0) << quint64(33'301'000);
    QTest::newRow("after an hour") << quint64(7) << quint64(3'600'000'000'007) << quint64(3'600'029'700'007);
    QTest::newRow("after a century of uptime")
        << quint64(3'155'760'000'000'000'000) << quint64(3'155'760'000'000'000'001)
        << quint64(3'155'760'000'033'300'000);
}

void tst_TickGrid::nextTickIsOnTheGridAfterNow() {
    QFETCH(const quint64, start);
    QFETCH(const quint64, now);
    QFETCH(const quint64, due);

    QCOMPARE(nextTickDue(start, now), due);
}

void tst_TickGrid::aMinuteHasTheSameTicksHoweverLateEachIs_data() {
    QTest::addColumn<quint64>("lateness");

    QTest::newRow("on time") << quint64(0);
    QTest::newRow("20 ms late") << quint64(20'000'000);
    QTest::newRow("late by all but a nanosecond of a period") << quint64(33'299'999);
}

void tst_TickGrid::aMinuteHasTheSameTicksHoweverLateEachIs() {
    QFETCH(const quint64, lateness);

    constexpr quint64 start = 7;
    constexpr quint64 minute = 60'000'000'000;
    int ticks = 0;
    quint64 lastDue = start;
    for (quint64 due = nextTickDue(start, start); due <= start + minute;
         due = nextTickDue(start, lastDue + lateness)) {
        lastDue = due;
        ++ticks;
    }
    QCOMPARE(ticks, 1801);
    QCOMPARE(lastDue, quint64(59'973'300'007));
}

QTEST_APPLESS_MAIN(tst_TickGrid)
#include "tst_TickGrid.moc"
