#include "library/ControlNames.h"

#include <QTest>

class tst_ControlNames : public QObject {
    Q_OBJECT

private slots:
    void aNameBecomesReadable_data();
    void aNameBecomesReadable();
    void aNumberIsLeftOutWithWhatStoodAroundIt_data();
    void aNumberIsLeftOutWithWhatStoodAroundIt();
    void namesAreGivenOnce();
    void manyEqualNamesAreGivenQuickly();
};

void tst_ControlNames::aNameBecomesReadable_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("readable");

    QTest::newRow("a plain one") << "Pan / Tilt (16 bit)"
                                 << "Pan / Tilt (16 bit)";
    QTest::newRow("blanks") << "  Pan \n\t fine "
                            << "Pan fine";
    QTest::newRow("a number sign before a number") << "Red #12"
                                                   << "Red 12";
    QTest::newRow("a number sign alone") << "Gobo #"
                                         << "Gobo No";
    QTest::newRow("several number signs") << "##1 #a"
                                          << "No 1 No a";
    QTest::newRow("control characters") << QString("Red\u0007\u0085x") << "Red x";
    QTest::newRow("half of a surrogate pair") << QString("Red ") + QChar(0xD800) << "Red ?";
    QTest::newRow("letters of all scripts") << QString("Z\u00fcge \u8272") << QString("Z\u00fcge \u8272");
    QTest::newRow("nothing") << ""
                             << "Channel";
    QTest::newRow("nothing that can be seen") << QString(" \u0000\u0001 ") << "Channel";
}

void tst_ControlNames::aNameBecomesReadable() {
    QFETCH(const QString, name);
    QFETCH(const QString, readable);
    QCOMPARE(readableName(name), readable);
}

void tst_ControlNames::aNumberIsLeftOutWithWhatStoodAroundIt_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("rest");

    QTest::newRow("behind") << "Red 1"
                            << "Red";
    QTest::newRow("before") << "1: Red"
                            << "Red";
    QTest::newRow("without a blank") << "R1"
                                     << "R";
    QTest::newRow("in brackets") << "Red (1)"
                                 << "Red";
    QTest::newRow("in brackets with a word") << "Red (Pixel 1)"
                                             << "Red (Pixel)";
    QTest::newRow("in the middle") << "Pixel 1 - Red"
                                   << "Pixel - Red";
    QTest::newRow("twice") << "1 Red 1"
                           << "Red";
    QTest::newRow("not within another number") << "Red 11"
                                               << "Red 11";
    QTest::newRow("alone") << "1"
                           << "";
    QTest::newRow("another one") << "Red 2"
                                 << "Red 2";
}

void tst_ControlNames::aNumberIsLeftOutWithWhatStoodAroundIt() {
    QFETCH(const QString, name);
    QFETCH(const QString, rest);
    QCOMPARE(nameWithoutNumber(name, "1"), rest);
}

void tst_ControlNames::namesAreGivenOnce() {
    UniqueNames names;
    QCOMPARE(names.take("Red"), QString("Red"));
    QCOMPARE(names.take("Red"), QString("Red 2"));
    QCOMPARE(names.take("Red 3"), QString("Red 3"));
    QCOMPARE(names.take("Red"), QString("Red 4"));
    QCOMPARE(names.take("Red 2"), QString("Red 2 2"));
    QCOMPARE(names.take("red"), QString("red"));
}

void tst_ControlNames::manyEqualNamesAreGivenQuickly() {
    UniqueNames names;
    QString last;
    for (int i = 0; i < 60'000; ++i) {
        last = names.take("Red");
    }
    QCOMPARE(last, QString("Red 60000"));
}

QTEST_APPLESS_MAIN(tst_ControlNames)
#include "tst_ControlNames.moc"
