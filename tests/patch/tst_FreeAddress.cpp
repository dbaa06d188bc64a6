#include "patch/FreeAddress.h"

#include "patch/Patch.h"

#include <QTest>

namespace {

PatchedControl control(std::uint32_t slot, std::uint32_t channels = 1) {
    return {.key = "Key", .slot = slot, .channels = channels, .dummy = false};
}

PatchedControl blank(std::uint32_t slot, std::uint32_t channels) {
    return {.key = {}, .slot = slot, .channels = channels, .dummy = true};
}

PatchedFixture fixture(std::int32_t universe, const std::vector<PatchedControl>& controls) {
    return {.name = "Spot", .universe = universe, .address = 1, .controls = controls};
}

} // namespace

using Address = std::optional<std::uint32_t>;
using Patch = std::vector<PatchedFixture>;

class tst_FreeAddress : public QObject {
    Q_OBJECT

private slots:
    void theFirstGapThatIsWideEnoughIsTaken_data();
    void theFirstGapThatIsWideEnoughIsTaken();
};

void tst_FreeAddress::theFirstGapThatIsWideEnoughIsTaken_data() {
    QTest::addColumn<Patch>("patch");
    QTest::addColumn<quint64>("wanted");
    QTest::addColumn<Address>("address");

    const Patch empty;
    QTest::newRow("an empty universe") << empty << quint64{6} << Address(1);
    QTest::newRow("a whole universe") << empty << quint64{512} << Address(1);
    QTest::newRow("more than a universe") << empty << quint64{513} << Address();
    QTest::newRow("more than any number of slots") << empty << ~quint64{0} << Address();
    QTest::newRow("nothing to place") << empty << quint64{0} << Address(1);

    const Patch one{fixture(2, {control(0), control(1, 2)})};
    QTest::newRow("behind the only fixture") << one << quint64{1} << Address(4);
    QTest::newRow("all that is left") << one << quint64{509} << Address(4);
    QTest::newRow("one more than is left") << one << quint64{510} << Address();

    const Patch gaps{fixture(2, {control(10)}), fixture(2, {control(3)}), fixture(2, {control(14, 2)})};
    QTest::newRow("the gap before all") << gaps << quint64{3} << Address(1);
    QTest::newRow("the second gap") << gaps << quint64{4} << Address(5);
    QTest::newRow("the second gap, filled") << gaps << quint64{6} << Address(5);
    QTest::newRow("behind all") << gaps << quint64{7} << Address(17);

    const Patch blanks{fixture(2, {control(0), blank(1, 4), control(5)})};
    QTest::newRow("a blank is no gap") << blanks << quint64{2} << Address(7);

    const Patch elsewhere{fixture(1, {control(0)}), fixture(-2, {control(0)})};
    QTest::newRow("other universes do not count") << elsewhere << quint64{1} << Address(1);

    const Patch beyond{fixture(2, {control(511, 2)}), fixture(2, {control(4'294'967'295)}),
                       fixture(2, {blank(510, 4'294'967'295)})};
    QTest::newRow("up to what runs past the universe") << beyond << quint64{510} << Address(1);
    QTest::newRow("into what runs past the universe") << beyond << quint64{511} << Address();
}

void tst_FreeAddress::theFirstGapThatIsWideEnoughIsTaken() {
    QFETCH(const Patch, patch);
    QFETCH(const quint64, wanted);
    QFETCH(const Address, address);
    QCOMPARE(firstFreeAddress(patch, 2, wanted), address);
}

QTEST_APPLESS_MAIN(tst_FreeAddress)
#include "tst_FreeAddress.moc"
