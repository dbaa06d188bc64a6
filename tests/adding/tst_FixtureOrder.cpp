#include "adding/FixtureOrder.h"

#include <QTest>
#include <QVariantMap>

class tst_FixtureOrder : public QObject {
    Q_OBJECT

private slots:
    void copiesAreNumbered_data();
    void copiesAreNumbered();
    void aFreeNameIsFound_data();
    void aFreeNameIsFound();
    void whatStandsInTheWayIsTold_data();
    void whatStandsInTheWayIsTold();
    void copiesArePlacedOneAfterTheOther();
};

void tst_FixtureOrder::copiesAreNumbered_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("copies");
    QTest::addColumn<QStringList>("names");

    QTest::newRow("one") << "Par" << 1 << QStringList{"Par"};
    QTest::newRow("one with a number") << "Par 4" << 1 << QStringList{"Par 4"};
    QTest::newRow("three") << "Par" << 3 << QStringList{"Par 1", "Par 2", "Par 3"};
    QTest::newRow("a number counts on") << "Par 9" << 2 << QStringList{"Par 9", "Par 10"};
    QTest::newRow("with leading zeros") << "Par 008" << 3 << QStringList{"Par 008", "Par 009", "Par 010"};
    QTest::newRow("zeros that become digits") << "Par 09" << 2 << QStringList{"Par 09", "Par 10"};
    QTest::newRow("more digits than before") << "Par 99" << 2 << QStringList{"Par 99", "Par 100"};
    QTest::newRow("a number that belongs to the name")
        << "MAC250" << 2 << QStringList{"MAC250 1", "MAC250 2"};
    QTest::newRow("too long to count on")
        << "Par 1234567" << 2 << QStringList{"Par 1234567 1", "Par 1234567 2"};
}

void tst_FixtureOrder::copiesAreNumbered() {
    QFETCH(const QString, name);
    QFETCH(const int, copies);
    QTEST(copyNames(name, copies), "names");
}

void tst_FixtureOrder::aFreeNameIsFound_data() {
    QTest::addColumn<int>("copies");
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("name");

    QTest::newRow("the first") << 1 << QStringList{"Wash"} << "Par";
    QTest::newRow("of the first copies") << 3 << QStringList{"Wash"} << "Par 1";
    QTest::newRow("beside one without a number") << 1 << QStringList{"Par"} << "Par 2";
    QTest::newRow("behind numbered ones") << 1 << QStringList{"Par 1", "Par 2"} << "Par 3";
    QTest::newRow("in a gap") << 1 << QStringList{"Par 1", "Par 3"} << "Par 2";
    QTest::newRow("no gap that is wide enough") << 2 << QStringList{"Par 1", "Par 3"} << "Par 4";
}

void tst_FixtureOrder::aFreeNameIsFound() {
    QFETCH(const int, copies);
    QFETCH(const QStringList, taken);
    QTEST(freeName("Par", copies, taken), "name");
}

void tst_FixtureOrder::whatStandsInTheWayIsTold_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("copies");
    QTest::addColumn<QString>("obstacle");

    QTest::newRow("nothing") << "Par" << 1 << 1 << QString();
    QTest::newRow("up to the last slot") << "Par" << 503 << 2 << QString();
    QTest::newRow("past the last slot")
        << "Par" << 504 << 2 << "The last slot would be 513, and a universe ends with 512.";
    QTest::newRow("no name") << " " << 1 << 1 << "A fixture needs a name.";
    QTest::newRow("a name that is taken")
        << "Wash" << 1 << 1 << "There is a fixture “Wash” already; cues could not tell them apart.";
    QTest::newRow("a copy's name that is taken")
        << "Spot" << 1 << 3 << "There is a fixture “Spot 2” already; cues could not tell them apart.";
}

void tst_FixtureOrder::whatStandsInTheWayIsTold() {
    QFETCH(const QString, name);
    QFETCH(const int, address);
    QFETCH(const int, copies);
    const FixtureOrder order{
        .profile = "Par", .name = name, .address = address, .copies = copies, .slotsEach = 5};
    QTEST(obstacleTo(order, {"Wash", "Spot 2"}), "obstacle");
}

void tst_FixtureOrder::copiesArePlacedOneAfterTheOther() {
    const FixtureOrder order{.profile = "Par",
                             .name = "Par 3",
                             .universe = 2,
                             .address = 11,
                             .layer = 4,
                             .copies = 2,
                             .slotsEach = 5};
    const QVariantList profiles{QVariantMap{{"profile", "Par"}}};
    const QVariantList expected{
        QVariantMap{
            {"name", "Par 3"}, {"universe", 2LL}, {"address", 11LL}, {"layer", 4LL}, {"profiles", profiles}},
        QVariantMap{
            {"name", "Par 4"}, {"universe", 2LL}, {"address", 16LL}, {"layer", 4LL}, {"profiles", profiles}}};
    QCOMPARE(placementsOf(order), expected);
}

QTEST_APPLESS_MAIN(tst_FixtureOrder)
#include "tst_FixtureOrder.moc"
