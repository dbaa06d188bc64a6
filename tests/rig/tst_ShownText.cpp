#include "rig/ShownText.h"

#include <QTest>

class tst_ShownText : public QObject {
    Q_OBJECT

private slots:
    void aNameWiderThanAnyScreenIsCut();
    void aMenuShowsANameAsItIs();
    void ofManyNamesTheFirstAreListed_data();
    void ofManyNamesTheFirstAreListed();
};

void tst_ShownText::aNameWiderThanAnyScreenIsCut() {
    QCOMPARE(shownName("Spot"), QString("Spot"));
    QCOMPARE(shownName(QString(200, 'x')), QString(200, 'x'));
    QCOMPARE(shownName(QString(1'000'000, 'x')), QString(200, 'x') + u'…');
}

void tst_ShownText::aMenuShowsANameAsItIs() {
    QCOMPARE(menuText("Left & right\tCtrl+Q"), QString("Left && right Ctrl+Q"));
}

void tst_ShownText::ofManyNamesTheFirstAreListed_data() {
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("text");

    QTest::newRow("one") << QStringList{"A"} << "A";
    QTest::newRow("two") << QStringList{"A", "B"} << "A and B";
    QTest::newRow("three") << QStringList{"A", "B", "C"} << "A, B and C";
    QTest::newRow("as many as are read") << QStringList(10, "A") << "A, A, A, A, A, A, A, A, A and A";
    QTest::newRow("one more") << QStringList(11, "A") << "A, A, A, A, A, A, A, A, A, A and 1 more";
}

void tst_ShownText::ofManyNamesTheFirstAreListed() {
    QFETCH(const QStringList, names);
    QFETCH(const QString, text);
    QCOMPARE(listed(names), text);
}

QTEST_APPLESS_MAIN(tst_ShownText)
#include "tst_ShownText.moc"
