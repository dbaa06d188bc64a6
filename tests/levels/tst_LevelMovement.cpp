#include "levels/LevelMovement.h"

#include <QTest>

class tst_LevelMovement : public QObject {
    Q_OBJECT

private slots:
    void aDragMovesInProportionToTheWidth_data();
    void aDragMovesInProportionToTheWidth();
    void aTurnOfTheWheelIsTruncatedToAStep_data();
    void aTurnOfTheWheelIsTruncatedToAStep();
    void aStepStaysWithinTheRange_data();
    void aStepStaysWithinTheRange();
};

void tst_LevelMovement::aDragMovesInProportionToTheWidth_data() {
    QTest::addColumn<quint32>("startValue");
    QTest::addColumn<double>("pixels");
    QTest::addColumn<int>("width");
    QTest::addColumn<quint32>("max");
    QTest::addColumn<quint32>("level");

    QTest::newRow("8 bit, the whole width") << 0U << 150.0 << 150 << 255U << 255U;
    QTest::newRow("8 bit, back over the whole width") << 255U << -150.0 << 150 << 255U << 0U;
    QTest::newRow("16 bit, the whole width") << 0U << 150.0 << 150 << 65535U << 65535U;
    QTest::newRow("16 bit, back over the whole width") << 65535U << -150.0 << 150 << 65535U << 0U;
    QTest::newRow("another width") << 0U << 100.0 << 100 << 255U << 255U;
    QTest::newRow("half the width is truncated") << 0U << 75.0 << 150 << 255U << 127U;
    QTest::newRow("part of a pixel") << 0U << 0.5 << 150 << 65535U << 218U;
    QTest::newRow("not moved") << 99U << 0.0 << 150 << 255U << 99U;
    QTest::newRow("beyond the range") << 250U << 10.0 << 150 << 255U << 255U;
    QTest::newRow("below the range") << 5U << -10.0 << 150 << 255U << 0U;
    QTest::newRow("from beyond the range") << 300U << 1.0 << 150 << 255U << 255U;
    QTest::newRow("far away") << 5U << 1e30 << 150 << 255U << 255U;
    QTest::newRow("far away on the other side") << 5U << -1e30 << 150 << 255U << 0U;
    QTest::newRow("no width") << 5U << 1.0 << 0 << 255U << 255U;
    QTest::newRow("no width, not moved") << 5U << 0.0 << 0 << 255U << 5U;
    QTest::newRow("the widest range") << 0U << 150.0 << 150 << 4294967295U << 4294967295U;
}

void tst_LevelMovement::aDragMovesInProportionToTheWidth() {
    QFETCH(const quint32, startValue);
    QFETCH(const double, pixels);
    QFETCH(const int, width);
    QFETCH(const quint32, max);
    QTEST(draggedLevel(startValue, pixels, width, max), "level");
}

void tst_LevelMovement::aTurnOfTheWheelIsTruncatedToAStep_data() {
    QTest::addColumn<double>("delta");
    QTest::addColumn<bool>("command");
    QTest::addColumn<qint64>("step");

    QTest::newRow("+0.5 counts tenfold") << 0.5 << false << qint64{5};
    QTest::newRow("-0.5 counts tenfold") << -0.5 << false << qint64{-5};
    QTest::newRow("+1") << 1.0 << false << qint64{1};
    QTest::newRow("-1") << -1.0 << false << qint64{-1};
    QTest::newRow("just less than 1 counts tenfold") << 0.99 << false << qint64{9};
    QTest::newRow("just less than -1 counts tenfold") << -0.99 << false << qint64{-9};
    QTest::newRow("too little to be a step") << 0.09 << false << qint64{0};
    QTest::newRow("+2.9") << 2.9 << false << qint64{2};
    QTest::newRow("-2.9") << -2.9 << false << qint64{-2};
    QTest::newRow("nothing") << 0.0 << false << qint64{0};
    QTest::newRow("+1 with Command") << 1.0 << true << qint64{200};
    QTest::newRow("-1 with Command") << -1.0 << true << qint64{-200};
    QTest::newRow("+0.5 with Command") << 0.5 << true << qint64{1000};
    QTest::newRow("a step only with Command") << 0.001 << true << qint64{2};
}

void tst_LevelMovement::aTurnOfTheWheelIsTruncatedToAStep() {
    QFETCH(const double, delta);
    QFETCH(const bool, command);
    QTEST(static_cast<qint64>(wheelStep(delta, command)), "step");
}

void tst_LevelMovement::aStepStaysWithinTheRange_data() {
    QTest::addColumn<quint32>("level");
    QTest::addColumn<qint64>("step");
    QTest::addColumn<quint32>("max");
    QTest::addColumn<quint32>("next");

    QTest::newRow("up") << 0U << qint64{1} << 255U << 1U;
    QTest::newRow("down") << 255U << qint64{-1} << 255U << 254U;
    QTest::newRow("up to the maximum") << 254U << qint64{1} << 255U << 255U;
    QTest::newRow("up at the maximum") << 255U << qint64{1} << 255U << 255U;
    QTest::newRow("up over the maximum") << 254U << qint64{200} << 255U << 255U;
    QTest::newRow("down to 0") << 1U << qint64{-1} << 255U << 0U;
    QTest::newRow("down at 0") << 0U << qint64{-1} << 255U << 0U;
    QTest::newRow("down below 0") << 1U << qint64{-200} << 255U << 0U;
    QTest::newRow("16 bit, to the maximum") << 65534U << qint64{1} << 65535U << 65535U;
    QTest::newRow("no step") << 7U << qint64{0} << 255U << 7U;
    QTest::newRow("no step beyond the range") << 300U << qint64{0} << 255U << 300U;
    QTest::newRow("up from beyond the range") << 300U << qint64{1} << 255U << 300U;
    QTest::newRow("down from beyond the range") << 300U << qint64{-1} << 255U << 299U;
    QTest::newRow("as far as there are numbers") << 7U << qint64{5'000'000'000} << 4294967295U << 4294967295U;
    QTest::newRow("from the highest level") << 4294967295U << qint64{-5'000'000'000} << 255U << 0U;
}

void tst_LevelMovement::aStepStaysWithinTheRange() {
    QFETCH(const quint32, level);
    QFETCH(const qint64, step);
    QFETCH(const quint32, max);
    QTEST(steppedLevel(level, step, max), "next");
}

QTEST_APPLESS_MAIN(tst_LevelMovement)
#include "tst_LevelMovement.moc"
