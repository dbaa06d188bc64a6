#include "library/ProfileWriter.h"

#include "library/ExpandedMode.h"

#include <QTest>

namespace {

FixtureMode modeOfFaders(int count) {
    FixtureMode mode{.name = "M", .channels = {}, .heads = {}, .remarks = {}};
    for (int i = 1; i <= count; ++i) {
        mode.channels.push_back({.name = QString("Fader %1").arg(i)});
    }
    return mode;
}

// Heads of a red and a green fader.
FixtureMode modeOfHeads(int count) {
    FixtureMode mode{.name = "M", .channels = {}, .heads = {}, .remarks = {}};
    for (int i = 0; i < count; ++i) {
        mode.channels.push_back({.name = QString("Red %1").arg(i + 1)});
        mode.channels.push_back({.name = QString("Green %1").arg(i + 1)});
        mode.heads.push_back({2 * i, 2 * i + 1});
    }
    return mode;
}

ImportedMode written(const FixtureMode& mode) {
    return ProfileWriter("Acme Lamp").write(mode);
}

// The rows of each column of the window.
QList<int> columnsOf(const ImportedMode& mode) {
    QList<int> columns{0};
    for (const QString& line : expanded(mode).lines) {
        if (line == "column") {
            columns.append(0);
        } else if (!line.startsWith("blank")) {
            ++columns.back();
        }
    }
    return columns;
}

} // namespace

class tst_ProfileWriter : public QObject {
    Q_OBJECT

private slots:
    void aWindowHasColumnsThatAScreenCanShow_data();
    void aWindowHasColumnsThatAScreenCanShow();
    void aHeadIsNotTornApartByAColumn();
    void headsWithoutANumberOfTheirPlaceKeepTheirNames_data();
    void headsWithoutANumberOfTheirPlaceKeepTheirNames();
    void headsThatShareASlotKeepTheirNames();
    void modesOfOneNameAreProfilesOfTwo();
    void moreSlotsThanAUniverseHasIsARemark_data();
    void moreSlotsThanAUniverseHasIsARemark();
};

void tst_ProfileWriter::aWindowHasColumnsThatAScreenCanShow_data() {
    QTest::addColumn<int>("faders");
    QTest::addColumn<QList<int>>("columns");

    QTest::newRow("one column") << 20 << QList<int>{20};
    QTest::newRow("a fader more") << 21 << QList<int>{20, 1};
    QTest::newRow("as many columns as a screen is wide")
        << 240 << QList<int>{20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20};
    QTest::newRow("then higher columns") << 300 << QList<int>{25, 25, 25, 25, 25, 25, 25, 25, 25, 25, 25, 25};
    QTest::newRow("as high as a screen")
        << 600 << QList<int>{48, 48, 48, 48, 48, 48, 48, 48, 48, 48, 48, 48, 24};
}

void tst_ProfileWriter::aWindowHasColumnsThatAScreenCanShow() {
    QFETCH(const int, faders);
    QFETCH(const QList<int>, columns);
    QCOMPARE(columnsOf(written(modeOfFaders(faders))), columns);
}

void tst_ProfileWriter::aHeadIsNotTornApartByAColumn() {
    QCOMPARE(columnsOf(written(modeOfHeads(8))), (QList<int>{18, 6}));
}

void tst_ProfileWriter::headsWithoutANumberOfTheirPlaceKeepTheirNames_data() {
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("lines");

    QTest::newRow("counted from 1") << QStringList{"Spot 1", "Spot 2"}
                                    << QStringList{"Head 1.Spot 1 1 = 0", "Head 2.Spot 2 2 = 0"};
    QTest::newRow("not counted") << QStringList{"Spot", "Spot"}
                                 << QStringList{"Head 1.Spot 1 1 = 0", "Head 2.Spot 2 2 = 0"};
    QTest::newRow("with a zero before")
        << QStringList{"Spot 01", "Spot 02"} << QStringList{"Head 1.Spot 1 1 = 0", "Head 2.Spot 2 2 = 0"};
    QTest::newRow("counted backwards")
        << QStringList{"Spot 2", "Spot 1"} << QStringList{"Spot 2 1 = 0", "Spot 1 2 = 0"};
    QTest::newRow("counted from 5") << QStringList{"Spot 5", "Spot 6"}
                                    << QStringList{"Spot 5 1 = 0", "Spot 6 2 = 0"};
    QTest::newRow("places in a matrix")
        << QStringList{"Spot (1, 1)", "Spot (1, 2)"} << QStringList{"Spot (1, 1) 1 = 0", "Spot (1, 2) 2 = 0"};
    QTest::newRow("words") << QStringList{"Left spot", "Right spot"}
                           << QStringList{"Left spot 1 = 0", "Right spot 2 = 0"};
    QTest::newRow("counted anew for another kind")
        << QStringList{"Par 1", "Par 2", "Spot 1", "Spot 2"}
        << QStringList{"Head 1.Par 1 1 = 0", "Head 2.Par 2 2 = 0", "Spot 1 3 = 0", "Spot 2 4 = 0"};
}

void tst_ProfileWriter::headsWithoutANumberOfTheirPlaceKeepTheirNames() {
    QFETCH(const QStringList, names);
    QFETCH(const QStringList, lines);

    FixtureMode mode{.name = "M", .channels = {}, .heads = {}, .remarks = {}};
    for (const QString& name : names) {
        mode.heads.push_back({static_cast<int>(mode.channels.size())});
        mode.channels.push_back({.name = name});
    }
    QCOMPARE(expanded(written(mode)).lines, lines);
}

void tst_ProfileWriter::headsThatShareASlotKeepTheirNames() {
    FixtureMode mode = modeOfFaders(2);
    mode.heads = {{0, 1}, {0, 1}, {1}, {}};
    QCOMPARE(expanded(written(mode)).lines, (QStringList{"Fader 1 1 = 0", "Fader 2 2 = 0"}));
}

void tst_ProfileWriter::modesOfOneNameAreProfilesOfTwo() {
    ProfileWriter writer("Acme Lamp");
    QCOMPARE(writer.write(modeOfFaders(1)).profileName, QString("Acme Lamp - M"));
    QCOMPARE(writer.write(modeOfHeads(2)).profiles.keys(),
             (QStringList{"Acme Lamp - M 2", "Acme Lamp - M 2, Head"}));
}

void tst_ProfileWriter::moreSlotsThanAUniverseHasIsARemark_data() {
    QTest::addColumn<int>("faders");
    QTest::addColumn<QStringList>("remarks");

    QTest::newRow("a universe") << 512 << QStringList();
    QTest::newRow("more") << 513
                          << QStringList{
                                 "it has 513 slots and a universe has 512: what lies beyond sends nothing"};
}

void tst_ProfileWriter::moreSlotsThanAUniverseHasIsARemark() {
    QFETCH(const int, faders);
    QFETCH(const QStringList, remarks);
    QCOMPARE(written(modeOfFaders(faders)).remarks, remarks);
}

QTEST_APPLESS_MAIN(tst_ProfileWriter)
#include "tst_ProfileWriter.moc"
