#include "output/Universes.h"

#include "support/AllocationCount.h"

#include <QTest>

#include <limits>

class tst_Universes : public QObject {
    Q_OBJECT

private slots:
    void thereIsNoneBeforeTheFirst();
    void aNumberLeadsToTheSameUniverseEachTime();
    void everyNumberHasAUniverse_data();
    void everyNumberHasAUniverse();
    void universe256StandsBesideUniverse0();
    void aUniverseStaysWhereItIs();
    void findingAllocatesNothing();
};

void tst_Universes::thereIsNoneBeforeTheFirst() {
    Universes universes;
    QVERIFY(universes.universes().empty());
    QCOMPARE(universes.find(0), nullptr);
    universes.getUniverse(0);
    QCOMPARE(universes.universes().size(), std::size_t{1});
    QVERIFY(universes.find(0) != nullptr);
    QCOMPARE(universes.find(1), nullptr);
    QCOMPARE(universes.universes().size(), std::size_t{1});
}

void tst_Universes::aNumberLeadsToTheSameUniverseEachTime() {
    Universes universes;
    DMX_Universe& universe = universes.getUniverse(7);
    universe.dmx()[0] = 0x55;
    QCOMPARE(&universes.getUniverse(7), &universe);
    QCOMPARE(universes.find(7), &universe);
    QCOMPARE(universes.getUniverse(7).dmx()[0], 0x55);
    QCOMPARE(universes.universes().size(), std::size_t{1});
}

void tst_Universes::everyNumberHasAUniverse_data() {
    QTest::addColumn<qint32>("number");
    QTest::addColumn<quint32>("kept");

    QTest::newRow("0") << 0 << 0U;
    QTest::newRow("1") << 1 << 1U;
    QTest::newRow("99999") << 99999 << 99999U;
    QTest::newRow("100000") << 100000 << 100000U;
    QTest::newRow("-1") << -1 << 4294967295U;
    QTest::newRow("highest") << std::numeric_limits<qint32>::max() << 2147483647U;
    QTest::newRow("lowest") << std::numeric_limits<qint32>::min() << 2147483648U;
}

void tst_Universes::everyNumberHasAUniverse() {
    QFETCH(const qint32, number);
    Universes universes;
    QTEST(universes.getUniverse(number).universe(), "kept");
    QVERIFY(universes.find(number) != nullptr);
}

void tst_Universes::universe256StandsBesideUniverse0() {
    Universes universes;
    universes.getUniverse(0).dmx()[0] = 0x11;
    universes.getUniverse(256).dmx()[0] = 0x22;
    QCOMPARE(universes.find(0)->dmx()[0], 0x11);
    QCOMPARE(universes.find(256)->dmx()[0], 0x22);
}

void tst_Universes::aUniverseStaysWhereItIs() {
    Universes universes;
    const DMX_Universe* const first = &universes.getUniverse(500);
    for (int number = 0; number < 1000; ++number) {
        universes.getUniverse(number);
    }
    QCOMPARE(universes.find(500), first);
}

void tst_Universes::findingAllocatesNothing() {
    Universes universes;
    universes.getUniverse(2'000'000'000);
    const std::size_t before = allocationCount();
    universes.getUniverse(2'000'000'000).setActive(true);
    QCOMPARE(allocationCount() - before, std::size_t{0});
    QVERIFY(before > 0);
}

QTEST_APPLESS_MAIN(tst_Universes)
#include "tst_Universes.moc"
