#include "check/Report.h"

#include <QTest>

class tst_Report : public QObject {
    Q_OBJECT

private slots:
    void aProblemIsOneLine();
    void whatATerminalTakesForCommandsIsReplaced();
    void aNameOfNoReadableLengthIsCut();
};

void tst_Report::aProblemIsOneLine() {
    Report report("/srv/rig.plist");
    QCOMPARE(report.lines(), QStringList());
    report.add("fixture 1", "is 5", "make it a dictionary");
    report.add({}, "is missing", "put it there");
    const QStringList expected{"/srv/rig.plist: fixture 1: is 5; make it a dictionary",
                               "/srv/rig.plist: is missing; put it there"};
    QCOMPARE(report.lines(), expected);
}

void tst_Report::whatATerminalTakesForCommandsIsReplaced() {
    Report report("a\nb");
    report.add("c\033[31m", QString("d%1e%2f").arg(QChar(0x2028)).arg(QChar(0x202e)), "B\u00fchne");
    QCOMPARE(report.lines(), QStringList{QString("a\ufffdb: c\ufffd[31m: d\ufffde\ufffdf; B\u00fchne")});
}

void tst_Report::aNameOfNoReadableLengthIsCut() {
    QCOMPARE(quoted("Spot"), QString("'Spot'"));
    QCOMPARE(quoted(QString(1'000'000, 'x')).size(), 203);
}

QTEST_APPLESS_MAIN(tst_Report)
#include "tst_Report.moc"
