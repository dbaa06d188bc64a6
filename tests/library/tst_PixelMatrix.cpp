#include "library/PixelMatrix.h"

#include <QJsonDocument>
#include <QTest>

namespace {

PixelMatrix matrixOf(const QByteArray& json) {
    return {QJsonDocument::fromJson(json).object(), json};
}

} // namespace

class tst_PixelMatrix : public QObject {
    Q_OBJECT

private slots:
    void pixelsComeInTheOrderAskedFor_data();
    void pixelsComeInTheOrderAskedFor();
    void sizesWithoutSenseAreRefused_data();
    void sizesWithoutSenseAreRefused();
};

void tst_PixelMatrix::pixelsComeInTheOrderAskedFor_data() {
    QTest::addColumn<QByteArray>("matrix");
    QTest::addColumn<QString>("order");
    QTest::addColumn<QStringList>("keys");

    const QByteArray row = R"({"pixelCount": [11, 1, 1]})";
    QTest::newRow("numbers of a row count as numbers")
        << row << "eachPixelABC" << QStringList{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"};
    QTest::newRow("one pixel") << QByteArray(R"({"pixelCount": [1, 1, 1]})") << "eachPixelABC"
                               << QStringList{"1"};
    QTest::newRow("a column") << QByteArray(R"({"pixelCount": [1, 2, 1]})") << "eachPixelXYZ"
                              << QStringList{"1", "2"};
    const QByteArray square = R"({"pixelCount": [2, 2, 1]})";
    QTest::newRow("row by row") << square << "eachPixelXYZ"
                                << QStringList{"(1, 1)", "(2, 1)", "(1, 2)", "(2, 2)"};
    QTest::newRow("column by column")
        << square << "eachPixelYXZ" << QStringList{"(1, 1)", "(1, 2)", "(2, 1)", "(2, 2)"};
    const QByteArray cube = R"({"pixelCount": [1, 2, 2]})";
    QTest::newRow("along Z first") << cube << "eachPixelZYX"
                                   << QStringList{"(1, 1)", "(1, 2)", "(2, 1)", "(2, 2)"};
    QTest::newRow("three directions") << QByteArray(R"({"pixelCount": [2, 2, 2]})") << "eachPixelZYX"
                                      << QStringList{"(1, 1, 1)", "(1, 1, 2)", "(1, 2, 1)", "(1, 2, 2)",
                                                     "(2, 1, 1)", "(2, 1, 2)", "(2, 2, 1)", "(2, 2, 2)"};
    const QByteArray named = R"({"pixelKeys": [[["b", null, "a"], ["C"]]]})";
    QTest::newRow("named ones by place") << named << "eachPixelXYZ" << QStringList{"b", "a", "C"};
    QTest::newRow("named ones by the alphabet") << named << "eachPixelABC" << QStringList{"a", "b", "C"};
    const QByteArray groups =
        R"({"x": {"z": 1}, "pixelGroups": {"z": ["a"], "a\"{": {"x": ["1", {"q": 2}]}, "m": "all"}})";
    QTest::newRow("groups as they are written")
        << groups << "eachPixelGroup" << QStringList{"z", "a\"{", "m"};
    QTest::newRow("no groups") << row << "eachPixelGroup" << QStringList();
    QTest::newRow("an unknown order") << row << "eachPixelQQQ" << QStringList();
    QTest::newRow("no order") << row << "pixels" << QStringList();
    QTest::newRow("no matrix") << QByteArray("{}") << "eachPixelXYZ" << QStringList();
}

void tst_PixelMatrix::pixelsComeInTheOrderAskedFor() {
    QFETCH(const QByteArray, matrix);
    QFETCH(const QString, order);
    QFETCH(const QStringList, keys);

    const PixelMatrix pixels = matrixOf(matrix);
    QCOMPARE(pixels.refusal(), QString());
    QCOMPARE(pixels.keysFor(order), keys);
}

void tst_PixelMatrix::sizesWithoutSenseAreRefused_data() {
    QTest::addColumn<QByteArray>("matrix");
    QTest::addColumn<bool>("refused");

    const auto row = [](const char* name, const char* matrix, bool refused) {
        QTest::newRow(name) << QByteArray(matrix) << refused;
    };
    row("as many as may be", R"({"pixelCount": [64, 64, 1]})", false);
    row("one row too many", R"({"pixelCount": [64, 65, 1]})", true);
    row("none", R"({"pixelCount": [0, 1, 1]})", true);
    row("less than none", R"({"pixelCount": [-1, -1, 1]})", true);
    row("a size missing", R"({"pixelCount": [4, 1]})", true);
    row("no numbers", R"({"pixelCount": ["4", 1, 1]})", true);
    row("numbers beyond all bounds", R"({"pixelCount": [2147483647, 2147483647, 2147483647]})", true);
}

void tst_PixelMatrix::sizesWithoutSenseAreRefused() {
    QFETCH(const QByteArray, matrix);
    QFETCH(const bool, refused);
    QCOMPARE(!matrixOf(matrix).refusal().isNull(), refused);
}

QTEST_APPLESS_MAIN(tst_PixelMatrix)
#include "tst_PixelMatrix.moc"
