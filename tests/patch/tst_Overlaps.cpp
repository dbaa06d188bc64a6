#include "patch/Overlaps.h"

#include "patch/Patch.h"

#include <QTest>

namespace {

PatchedControl control(std::uint32_t slot, std::uint32_t channels = 1) {
    return {.key = "Key", .slot = slot, .channels = channels, .dummy = false};
}

PatchedControl blank(std::uint32_t slot, std::uint32_t channels) {
    return {.key = {}, .slot = slot, .channels = channels, .dummy = true};
}

PatchedFixture fixture(const std::vector<PatchedControl>& controls, std::int32_t universe = 1) {
    return {.name = "Spot", .universe = universe, .address = 1, .controls = controls};
}

// As a failed comparison prints it: "1: slots 5 to 8, 0 2".
QStringList texts(const std::vector<Overlap>& found) {
    QStringList result;
    for (const Overlap& overlap : found) {
        QString text = QString("%1: %2,").arg(overlap.universe).arg(slotText(overlap.slotRange));
        for (const std::size_t place : overlap.fixtures) {
            text += QString(" %1").arg(place);
        }
        result.append(text);
    }
    return result;
}

} // namespace

using Patch = std::vector<PatchedFixture>;
using Controls = std::vector<PatchedControl>;

class tst_Overlaps : public QObject {
    Q_OBJECT

private slots:
    void slotsThatSeveralFixturesDriveAreFound_data();
    void slotsThatSeveralFixturesDriveAreFound();
    void controlsThatAreNotHeardAreFound_data();
    void controlsThatAreNotHeardAreFound();
    void fixturesWithoutNumberTakeNoTimeWithoutEnd();
};

void tst_Overlaps::slotsThatSeveralFixturesDriveAreFound_data() {
    QTest::addColumn<Patch>("patch");
    QTest::addColumn<QStringList>("found");

    QTest::newRow("no fixture") << Patch{} << QStringList{};
    QTest::newRow("side by side") << Patch{fixture({control(0, 2)}), fixture({control(2)})} << QStringList{};
    QTest::newRow("one slot") << Patch{fixture({control(0, 2)}), fixture({control(1)})}
                              << QStringList{"1: slot 2, 0 1"};
    QTest::newRow("several controls as one range")
        << Patch{fixture({control(4), control(5, 2), control(7)}), fixture({control(5, 2), control(7)})}
        << QStringList{"1: slots 6 to 8, 0 1"};
    QTest::newRow("apart") << Patch{fixture({control(0)}), fixture({control(0)}), fixture({control(2)}),
                                    fixture({control(2)})}
                           << QStringList{"1: slot 1, 0 1", "1: slot 3, 2 3"};
    QTest::newRow("three, then two") << Patch{fixture({control(0), control(1)}),
                                              fixture({control(0), control(1)}), fixture({control(0)})}
                                     << QStringList{"1: slot 1, 0 1 2", "1: slot 2, 0 1"};
    QTest::newRow("the same on both sides of a gap") << Patch{fixture({control(0), control(1), control(2)}),
                                                              fixture({control(0), blank(1, 1), control(2)})}
                                                     << QStringList{"1: slot 1, 0 1", "1: slot 3, 0 1"};
    QTest::newRow("other universes") << Patch{fixture({control(0)}, 1), fixture({control(0)}, 2),
                                              fixture({control(0)}, 257)}
                                     << QStringList{};
    QTest::newRow("by universe") << Patch{fixture({control(0)}, 2), fixture({control(0)}, -1),
                                          fixture({control(0)}, 2), fixture({control(0)}, -1)}
                                 << QStringList{"-1: slot 1, 1 3", "2: slot 1, 0 2"};
    QTest::newRow("a blank drives nothing")
        << Patch{fixture({blank(0, 4)}), fixture({control(2)}), fixture({blank(2, 1)})} << QStringList{};
    QTest::newRow("the last slot") << Patch{fixture({control(511)}), fixture({control(510, 2)})}
                                   << QStringList{"1: slot 512, 0 1"};
    QTest::newRow("past the universe nothing is driven")
        << Patch{fixture({control(511, 2), control(513)}), fixture({control(511), control(513)}),
                 fixture({control(4'294'967'295, 2)}), fixture({control(4'294'967'295, 2)})}
        << QStringList{};
}

void tst_Overlaps::slotsThatSeveralFixturesDriveAreFound() {
    QFETCH(const Patch, patch);
    QFETCH(const QStringList, found);
    QCOMPARE(texts(overlaps(patch)), found);
}

void tst_Overlaps::controlsThatAreNotHeardAreFound_data() {
    QTest::addColumn<Controls>("controls");
    QTest::addColumn<QStringList>("unheard");

    QTest::newRow("within") << Controls{control(0), control(510, 2)} << QStringList{};
    QTest::newRow("none") << Controls{} << QStringList{};
    QTest::newRow("the first slot past it")
        << Controls{control(511), control(512)} << QStringList{"slot 513"};
    QTest::newRow("half of a control") << Controls{control(511, 2)} << QStringList{"slots 512 to 513"};
    QTest::newRow("several in a row")
        << Controls{control(511, 2), control(513), control(514, 2)} << QStringList{"slots 512 to 516"};
    QTest::newRow("around a blank") << Controls{control(512), blank(513, 2), control(515)}
                                    << QStringList{"slot 513", "slot 516"};
    QTest::newRow("a blank should drive nothing") << Controls{blank(0, 4'294'967'295)} << QStringList{};
    QTest::newRow("far out") << Controls{control(4'294'967'295)} << QStringList{"slot 4294967296"};
}

void tst_Overlaps::controlsThatAreNotHeardAreFound() {
    QFETCH(const Controls, controls);
    QFETCH(const QStringList, unheard);
    QStringList found;
    for (const SlotRange& slotRange : unheardSlots(fixture(controls))) {
        found.append(slotText(slotRange));
    }
    QCOMPARE(found, unheard);
}

// 100,000 fixtures on one slot: 5,000,000,000 pairs.
void tst_Overlaps::fixturesWithoutNumberTakeNoTimeWithoutEnd() {
    const Patch patch(100'000, fixture({control(0)}));
    const std::vector<Overlap> found = overlaps(patch);
    QCOMPARE(found.size(), std::size_t{1});
    QCOMPARE(found.front().fixtures.size(), std::size_t{100'000});
}

QTEST_APPLESS_MAIN(tst_Overlaps)
#include "tst_Overlaps.moc"
