#include "rig/NameStack.h"

#include <QTest>

class tst_NameStack : public QObject {
    Q_OBJECT

private slots:
    void aKeyIsTheNamesJoinedWithPoints();
    void aStackStartsAnewWithTheFixturesName();
    void theFirstHashIsTheLayerNumber_data();
    void theFirstHashIsTheLayerNumber();
    void aMissingNameStaysMissing();
    void theNumberIsTheLayersOfThatMoment();
};

void tst_NameStack::aKeyIsTheNamesJoinedWithPoints() {
    NameStack names;
    QCOMPARE(names.key(), "");
    names.startWith("Wash");
    QCOMPARE(names.key(), "Wash");
    names.push("Cell 2");
    names.push("");
    names.push("Red");
    QCOMPARE(names.key(), "Wash.Cell 2..Red");
    names.pop();
    names.pop();
    QCOMPARE(names.key(), "Wash.Cell 2");
    names.pop();
    QCOMPARE(names.key(), "Wash");
}

void tst_NameStack::aStackStartsAnewWithTheFixturesName() {
    NameStack names;
    names.startWith("Wash");
    names.push("Cell");
    names.startWith("Spot");
    QCOMPARE(names.key(), "Spot");
}

void tst_NameStack::theFirstHashIsTheLayerNumber_data() {
    QTest::addColumn<quint32>("layerNum");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("resolved");

    QTest::newRow("at the end") << 2U << "Dimmer #"
                                << "Dimmer 2";
    QTest::newRow("two of them") << 3U << "A#B#"
                                 << "A3B#";
    QTest::newRow("alone") << 10U << "#"
                           << "10";
    QTest::newRow("at the beginning") << 0U << "# Dimmer"
                                      << "0 Dimmer";
    QTest::newRow("none") << 5U << "Dimmer"
                          << "Dimmer";
    QTest::newRow("empty") << 5U << ""
                           << "";
    QTest::newRow("beside characters beyond 16 bits")
        << 7U << QString::fromUtf8("\U0001F4A1#ü") << QString::fromUtf8("\U0001F4A17ü");
    QTest::newRow("a name like a format") << 1U << "%1 %d #"
                                          << "%1 %d 1";
    QTest::newRow("a negative layer") << 4294967295U << "L#"
                                      << "L-1";
}

void tst_NameStack::theFirstHashIsTheLayerNumber() {
    QFETCH(const quint32, layerNum);
    QFETCH(const QString, name);
    NameStack names;
    names.setLayerNum(layerNum);
    QTEST(names.resolvedName(name), "resolved");
}

void tst_NameStack::aMissingNameStaysMissing() {
    NameStack names;
    names.setLayerNum(1);
    QVERIFY(names.resolvedName(QString()).isNull());
    QVERIFY(!names.resolvedName(QString("")).isNull());
}

void tst_NameStack::theNumberIsTheLayersOfThatMoment() {
    NameStack names;
    names.setLayerNum(1);
    QCOMPARE(names.resolvedName("Dimmer #"), "Dimmer 1");
    names.setLayerNum(names.layerNum() + 1);
    QCOMPARE(names.resolvedName("Dimmer #"), "Dimmer 2");
}

QTEST_APPLESS_MAIN(tst_NameStack)
#include "tst_NameStack.moc"
