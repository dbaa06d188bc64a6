#include "console/DrawingPace.h"

#include <QTest>

namespace {

constexpr std::uint64_t Millisecond = 1'000'000;
constexpr std::uint64_t Start = 1'000'000 * Millisecond;
constexpr std::uint64_t UsedBefore = 5'000 * Millisecond;

} // namespace

class tst_DrawingPace : public QObject {
    Q_OBJECT

private slots:
    void theFirstDrawingDoesNotWait();
    void drawingWaitsUntilItTookItsShare_data();
    void drawingWaitsUntilItTookItsShare();
    void aNewDrawingCountsAnew();
    void othersWorkOfTheThreadCountsToo();
    void theThreadsTimeGoesOnWithItsWorkOnly();
};

void tst_DrawingPace::theFirstDrawingDoesNotWait() {
    const DrawingPace pace;
    QCOMPARE(pace.pause(Start, 0), std::uint64_t{0});
    QCOMPARE(pace.pause(Start, 100 * Millisecond), std::uint64_t{0});
}

void tst_DrawingPace::drawingWaitsUntilItTookItsShare_data() {
    QTest::addColumn<int>("used");
    QTest::addColumn<int>("passed");
    QTest::addColumn<int>("pause");

    QTest::newRow("nothing used") << 0 << 0 << 0;
    QTest::newRow("little used, a tick later") << 5 << 33 << 0;
    QTest::newRow("just its share") << 10 << 60 << 0;
    QTest::newRow("a millisecond early") << 10 << 59 << 1;
    QTest::newRow("more than its share") << 20 << 33 << 87;
    QTest::newRow("all of the core") << 33 << 33 << 165;
    QTest::newRow("one picture of a second") << 1'000 << 1'000 << 1'000;
    QTest::newRow("more than a second ago, whatever was used") << 6'000 << 1'001 << 0;
    QTest::newRow("long ago, and the thread did something else") << 6'000 << 15'000 << 0;
    QTest::newRow("long ago") << 20 << 60'000 << 0;
}

void tst_DrawingPace::drawingWaitsUntilItTookItsShare() {
    QFETCH(const int, used);
    QFETCH(const int, passed);
    QFETCH(const int, pause);

    DrawingPace pace;
    pace.asked(Start, UsedBefore);
    const std::uint64_t now = Start + static_cast<std::uint64_t>(passed) * Millisecond;
    const std::uint64_t usedNow = UsedBefore + static_cast<std::uint64_t>(used) * Millisecond;
    QCOMPARE(pace.pause(now, usedNow), static_cast<std::uint64_t>(pause) * Millisecond);
}

void tst_DrawingPace::aNewDrawingCountsAnew() {
    DrawingPace pace;
    pace.asked(Start, UsedBefore);
    pace.asked(Start + 1'000 * Millisecond, UsedBefore + 200 * Millisecond);
    QCOMPARE(pace.pause(Start + 1'000 * Millisecond, UsedBefore + 200 * Millisecond), std::uint64_t{0});
    QCOMPARE(pace.pause(Start + 1'010 * Millisecond, UsedBefore + 204 * Millisecond), 14 * Millisecond);
}

// Asking is not drawing: that comes after, and its time is what the next one waits for.
void tst_DrawingPace::othersWorkOfTheThreadCountsToo() {
    DrawingPace pace;
    pace.asked(Start, UsedBefore);
    QCOMPARE(pace.pause(Start + 10 * Millisecond, UsedBefore + Millisecond), std::uint64_t{0});
    QCOMPARE(pace.pause(Start + 10 * Millisecond, UsedBefore + 4 * Millisecond), 14 * Millisecond);
}

void tst_DrawingPace::theThreadsTimeGoesOnWithItsWorkOnly() {
    const std::uint64_t before = threadProcessorNanoseconds();
    QTest::qSleep(100);
    const std::uint64_t slept = threadProcessorNanoseconds();
    QVERIFY(slept - before < 50 * Millisecond);
    while (threadProcessorNanoseconds() - slept < 5 * Millisecond) { // ends, since it works
    }
}

QTEST_GUILESS_MAIN(tst_DrawingPace)
#include "tst_DrawingPace.moc"
