#include "rig/ViewLayout.h"

#include <QTest>

#include <limits>

namespace {

using Items = std::vector<LayoutItem>;
using Frames = std::vector<QRect>;
using Addresses = std::vector<std::uint32_t>;

constexpr LayoutItem control;
constexpr LayoutItem sixteenBits{.channels = 2};
constexpr LayoutItem header{.header = true};
constexpr LayoutItem label{.channels = 0};
constexpr LayoutItem blankOf4{.hide = true, .channels = 4};

Items columns(std::initializer_list<int> rows) {
    Items items;
    for (const int count : rows) {
        items.push_back(header);
        items.insert(items.end(), static_cast<std::size_t>(count - 1), control);
    }
    return items;
}

QSize sizeOf(const Items& items) {
    ViewLayout layout;
    layout.layOut(items);
    return layout.size();
}

} // namespace

class tst_ViewLayout : public QObject {
    Q_OBJECT

private slots:
    void controlsStandInRowsOf19();
    void aHeaderAtTheBeginningStartsNoNewColumn();
    void aHeaderAnywhereElseStartsAColumnAtTheTop();
    void aBlankTakesNoPlace();
    void aBlankAtTheEndTakesNoPlace();
    void aHiddenHeaderStartsAColumn();
    void aLabelTakesARow();
    void threeColumnsOf4And7And2RowsAre450By133();
    void theHighestColumnGivesTheHeight_data();
    void theHighestColumnGivesTheHeight();
    void anEmptyProfileIs150By0();
    void aSecondLayoutGoesOnFromTheFirst();

    void slotsFollowOneAnother();
    void addressesStartAt1And0StandsForIt_data();
    void addressesStartAt1And0StandsForIt();
    void aBlankTakesItsCountAndALabelNothing();
    void slotNumbersNeverWrap_data();
    void slotNumbersNeverWrap();
};

void tst_ViewLayout::controlsStandInRowsOf19() {
    ViewLayout layout;
    QCOMPARE(layout.layOut(Items{control, sixteenBits, control}),
             (Frames{QRect(0, 0, 150, 19), QRect(0, 19, 150, 19), QRect(0, 38, 150, 19)}));
    QCOMPARE(layout.size(), QSize(150, 57));
}

void tst_ViewLayout::aHeaderAtTheBeginningStartsNoNewColumn() {
    ViewLayout layout;
    QCOMPARE(layout.layOut(Items{header, control}), (Frames{QRect(0, 0, 150, 19), QRect(0, 19, 150, 19)}));
    QCOMPARE(layout.size(), QSize(150, 38));
}

void tst_ViewLayout::aHeaderAnywhereElseStartsAColumnAtTheTop() {
    ViewLayout layout;
    QCOMPARE(layout.layOut(Items{control, control, header, control, header}),
             (Frames{QRect(0, 0, 150, 19), QRect(0, 19, 150, 19), QRect(150, 0, 150, 19),
                     QRect(150, 19, 150, 19), QRect(300, 0, 150, 19)}));
    QCOMPARE(layout.size(), QSize(450, 38));
}

void tst_ViewLayout::aBlankTakesNoPlace() {
    ViewLayout layout;
    QCOMPARE(layout.layOut(Items{control, blankOf4, control}),
             (Frames{QRect(0, 0, 150, 19), QRect(0, 19, 150, 19), QRect(0, 19, 150, 19)}));
    QCOMPARE(layout.size(), QSize(150, 38));
}

void tst_ViewLayout::aBlankAtTheEndTakesNoPlace() {
    QCOMPARE(sizeOf({control, blankOf4}), QSize(150, 19));
    QCOMPARE(sizeOf({blankOf4}), QSize(150, 0));
}

void tst_ViewLayout::aHiddenHeaderStartsAColumn() {
    ViewLayout layout;
    QCOMPARE(layout.layOut(Items{control, LayoutItem{.header = true, .hide = true}, control}),
             (Frames{QRect(0, 0, 150, 19), QRect(150, 0, 150, 19), QRect(150, 0, 150, 19)}));
    QCOMPARE(layout.size(), QSize(300, 19));
    // Hidden or not, the first control is the first.
    QCOMPARE(sizeOf({blankOf4, header}), QSize(300, 19));
}

void tst_ViewLayout::aLabelTakesARow() {
    QCOMPARE(sizeOf({label, control, label}), QSize(150, 57));
}

void tst_ViewLayout::threeColumnsOf4And7And2RowsAre450By133() {
    QCOMPARE(sizeOf(columns({4, 7, 2})), QSize(450, 133));
}

void tst_ViewLayout::theHighestColumnGivesTheHeight_data() {
    QTest::addColumn<Items>("items");
    QTest::addColumn<QSize>("size");

    QTest::newRow("the first") << columns({7, 4, 2}) << QSize(450, 133);
    QTest::newRow("the last") << columns({2, 4, 7}) << QSize(450, 133);
    QTest::newRow("all alike") << columns({3, 3}) << QSize(300, 57);
}

void tst_ViewLayout::theHighestColumnGivesTheHeight() {
    QFETCH(const Items, items);
    QTEST(sizeOf(items), "size");
}

void tst_ViewLayout::anEmptyProfileIs150By0() {
    ViewLayout layout;
    QVERIFY(layout.layOut({}).empty());
    QCOMPARE(layout.size(), QSize(150, 0));
}

void tst_ViewLayout::aSecondLayoutGoesOnFromTheFirst() {
    ViewLayout layout;
    layout.layOut(Items{control, control, header});
    QCOMPARE(layout.layOut(Items{header, header}), (Frames{QRect(150, 0, 150, 19), QRect(300, 0, 150, 19)}));
    QCOMPARE(layout.size(), QSize(450, 38));
}

void tst_ViewLayout::slotsFollowOneAnother() {
    QCOMPARE(consecutiveAddresses(10, Items{control, sixteenBits, control}), (Addresses{9, 10, 12}));
}

void tst_ViewLayout::addressesStartAt1And0StandsForIt_data() {
    QTest::addColumn<quint32>("address");
    QTest::newRow("0") << 0U;
    QTest::newRow("1") << 1U;
}

void tst_ViewLayout::addressesStartAt1And0StandsForIt() {
    QFETCH(const quint32, address);
    QCOMPARE(consecutiveAddresses(address, Items{control, control}), (Addresses{0, 1}));
}

void tst_ViewLayout::aBlankTakesItsCountAndALabelNothing() {
    QCOMPARE(consecutiveAddresses(1, Items{label, control, blankOf4, label, sixteenBits, control}),
             (Addresses{0, 0, 1, 5, 5, 7}));
}

void tst_ViewLayout::slotNumbersNeverWrap_data() {
    QTest::addColumn<quint32>("address");
    QTest::addColumn<Items>("items");
    QTest::addColumn<Addresses>("addresses");

    const Items three{control, sixteenBits, control};
    QTest::newRow("512") << 512U << three << Addresses{511, 512, 514};
    QTest::newRow("600") << 600U << three << Addresses{599, 600, 602};
    QTest::newRow("-7") << 4294967289U << three << Addresses{4294967288, 4294967289, 4294967291};
    QTest::newRow("highest") << 4294967295U << three << Addresses{4294967294, 4294967295, 4294967295};
    constexpr LayoutItem hugeBlank{.hide = true, .channels = 4294967295};
    QTest::newRow("blanks as large as numbers")
        << 1U << Items{control, hugeBlank, control, hugeBlank, control}
        << Addresses{0, 1, 4294967295, 4294967295, 4294967295};
}

void tst_ViewLayout::slotNumbersNeverWrap() {
    QFETCH(const quint32, address);
    QFETCH(const Items, items);
    QTEST(consecutiveAddresses(address, items), "addresses");
}

QTEST_APPLESS_MAIN(tst_ViewLayout)
#include "tst_ViewLayout.moc"
