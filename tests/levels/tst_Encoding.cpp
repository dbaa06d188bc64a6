#include "levels/Encoding.h"

#include <QTest>

#include <array>

namespace {

using SlotArray = std::array<std::uint8_t, 512>;

} // namespace

class tst_Encoding : public QObject {
    Q_OBJECT

private slots:
    void aControlHasToLieInsideThe512Slots_data();
    void aControlHasToLieInsideThe512Slots();
    void twoSlotsAreReadCoarseByteFirst();
    void oneSlotIsReadByItself();
    void theLastSlotIsReadByItself();
    void threeChannelsAreReadAsTwoSlots();
    void aLevelOf16BitsIsWrittenCoarseByteFirst();
    void onlyTheLow8BitsGoIntoOneSlot_data();
    void onlyTheLow8BitsGoIntoOneSlot();
    void onlyTheLow16BitsGoIntoTwoSlots();
    void threeChannelsAreWrittenAsOneSlot();
    void theNeighboursOfTheLastSlotsStayAsTheyAre();
};

void tst_Encoding::aControlHasToLieInsideThe512Slots_data() {
    QTest::addColumn<quint32>("address");
    QTest::addColumn<quint32>("channels");
    QTest::addColumn<bool>("inside");

    QTest::newRow("8 bit, first slot") << 0U << 1U << true;
    QTest::newRow("8 bit, last slot") << 511U << 1U << true;
    QTest::newRow("8 bit, first slot outside") << 512U << 1U << false;
    QTest::newRow("8 bit, far outside") << 600U << 1U << false;
    QTest::newRow("8 bit, -7") << 4294967289U << 1U << false;
    QTest::newRow("8 bit, highest address") << 4294967295U << 1U << false;
    QTest::newRow("16 bit, first slots") << 0U << 2U << true;
    QTest::newRow("16 bit, last slots") << 510U << 2U << true;
    QTest::newRow("16 bit, half outside") << 511U << 2U << false;
    QTest::newRow("16 bit, outside") << 512U << 2U << false;
    QTest::newRow("16 bit, the second slot would wrap to 0") << 4294967295U << 2U << false;
    QTest::newRow("16 bit, the second slot is the highest address") << 4294967294U << 2U << false;
    QTest::newRow("no channels count as one, last slot") << 511U << 0U << true;
    QTest::newRow("no channels count as one, outside") << 512U << 0U << false;
    QTest::newRow("three channels count as two, last slots") << 510U << 3U << true;
    QTest::newRow("three channels count as two, half outside") << 511U << 3U << false;
    QTest::newRow("as many channels as there are numbers") << 510U << 4294967295U << true;
}

void tst_Encoding::aControlHasToLieInsideThe512Slots() {
    QFETCH(const quint32, address);
    QFETCH(const quint32, channels);
    QTEST(slotPlace(address, channels).inside(), "inside");
}

void tst_Encoding::twoSlotsAreReadCoarseByteFirst() {
    SlotArray levels{};
    levels[9] = 0x03;
    levels[10] = 0xE8;
    QCOMPARE(readLevel(levels, slotPlace(9, 2)), 1000U);
}

void tst_Encoding::oneSlotIsReadByItself() {
    SlotArray levels{};
    levels[9] = 0x03;
    levels[10] = 0xE8;
    QCOMPARE(readLevel(levels, slotPlace(9, 1)), 3U);
    QCOMPARE(readLevel(levels, slotPlace(9, 0)), 3U);
}

void tst_Encoding::theLastSlotIsReadByItself() {
    SlotArray levels{};
    levels[511] = 0xFF;
    QCOMPARE(readLevel(levels, slotPlace(511, 1)), 255U);
    QCOMPARE(readLevel(levels, slotPlace(510, 2)), 255U);
}

void tst_Encoding::threeChannelsAreReadAsTwoSlots() {
    SlotArray levels{};
    levels[0] = 0x12;
    levels[1] = 0x34;
    levels[2] = 0x56;
    QCOMPARE(readLevel(levels, slotPlace(0, 3)), 0x1234U);
}

void tst_Encoding::aLevelOf16BitsIsWrittenCoarseByteFirst() {
    SlotArray levels{};
    writeLevel(levels, slotPlace(100, 2), 0xABCD);
    SlotArray expected{};
    expected[100] = 0xAB;
    expected[101] = 0xCD;
    QCOMPARE(levels, expected);
}

void tst_Encoding::onlyTheLow8BitsGoIntoOneSlot_data() {
    QTest::addColumn<quint32>("level");
    QTest::addColumn<quint8>("slot");

    QTest::newRow("0") << 0U << quint8{0};
    QTest::newRow("255") << 255U << quint8{255};
    QTest::newRow("256") << 256U << quint8{0};
    QTest::newRow("300") << 300U << quint8{44};
    QTest::newRow("highest") << 4294967295U << quint8{255};
}

void tst_Encoding::onlyTheLow8BitsGoIntoOneSlot() {
    QFETCH(const quint32, level);
    QFETCH(const quint8, slot);
    SlotArray levels{};
    writeLevel(levels, slotPlace(0, 1), level);
    SlotArray expected{};
    expected[0] = slot;
    QCOMPARE(levels, expected);
}

void tst_Encoding::onlyTheLow16BitsGoIntoTwoSlots() {
    SlotArray levels{};
    writeLevel(levels, slotPlace(0, 2), 0x12345678);
    SlotArray expected{};
    expected[0] = 0x56;
    expected[1] = 0x78;
    QCOMPARE(levels, expected);
}

void tst_Encoding::threeChannelsAreWrittenAsOneSlot() {
    SlotArray levels{};
    writeLevel(levels, slotPlace(0, 3), 0x1234);
    SlotArray expected{};
    expected[0] = 0x34;
    QCOMPARE(levels, expected);
}

void tst_Encoding::theNeighboursOfTheLastSlotsStayAsTheyAre() {
    SlotArray levels{};
    levels.fill(0x77);
    writeLevel(levels, slotPlace(510, 2), 0);
    SlotArray expected{};
    expected.fill(0x77);
    expected[510] = 0;
    expected[511] = 0;
    QCOMPARE(levels, expected);
    writeLevel(levels, slotPlace(511, 1), 9);
    expected[511] = 9;
    QCOMPARE(levels, expected);
}

QTEST_APPLESS_MAIN(tst_Encoding)
#include "tst_Encoding.moc"
