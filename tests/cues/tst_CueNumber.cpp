#include "cues/CueNumber.h"

#include <QStringList>
#include <QTest>

#include <algorithm>
#include <random>

class tst_CueNumber : public QObject {
    Q_OBJECT

private slots:
    void oneComesBeforeTheOther_data();
    void oneComesBeforeTheOther();
    void onlyTheSameTextIsEqual_data();
    void onlyTheSameTextIsEqual();
    void theContextMakesNoDifference();
    void anyOrderSortsToTheSameList();
};

void tst_CueNumber::oneComesBeforeTheOther_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");

    QTest::newRow("as numbers, not as text") << "2"
                                             << "10";
    QTest::newRow("second component as a number") << "1.5"
                                                  << "1.10";
    QTest::newRow("fewer components") << "1"
                                      << "1.1";
    QTest::newRow("still fewer components") << "1.1"
                                            << "1.1.1";
    QTest::newRow("an earlier component decides") << "1.1.1"
                                                  << "1.2";
    QTest::newRow("the first component decides") << "1.9"
                                                 << "2";
    QTest::newRow("leading zero in a component") << "1.05"
                                                 << "1.5";
    QTest::newRow("leading zero") << "01"
                                  << "1";
    QTest::newRow("letters are 0, after the digit") << "1.0"
                                                    << "1.a";
    QTest::newRow("letters are 0, before 1") << "1.a"
                                             << "1.1";
    QTest::newRow("a negative number") << "-1"
                                       << "0";
    QTest::newRow("a more negative number") << "-2"
                                            << "-1";
    QTest::newRow("a negative component") << "1.-1"
                                          << "1.0";
    QTest::newRow("a point and nothing") << "3"
                                         << "3.0";
    QTest::newRow("a letter alone is 0") << "0"
                                         << "x";
    QTest::newRow("an empty last component") << "1"
                                             << "1.";
    QTest::newRow("an empty component is 0") << "1."
                                             << "1.0";
    QTest::newRow("an empty component before 1") << "1."
                                                 << "1.1";
    QTest::newRow("an empty first component") << ".5"
                                              << "0.5";
    QTest::newRow("an empty component in the middle") << "1..2"
                                                      << "1.0.2";
    QTest::newRow("two empty components") << "."
                                          << "..";
    QTest::newRow("nothing at all") << ""
                                    << "0";
    QTest::newRow("nothing at all and a point") << ""
                                                << ".";
    QTest::newRow("a blank before is no part of the number") << " 2"
                                                             << "2";
    QTest::newRow("a blank before does not hide the number") << "2"
                                                             << " 10";
    QTest::newRow("a blank behind") << "2"
                                    << "2 ";
    QTest::newRow("a tab before") << "\t1"
                                  << "2";
    QTest::newRow("a plus sign") << "+2"
                                 << "2";
    QTest::newRow("a sign alone is 0") << "-"
                                       << "1";
    QTest::newRow("two signs are 0") << "--5"
                                     << "1";
    QTest::newRow("letters behind the digits") << "2"
                                               << "2a";
    QTest::newRow("letters behind do not hide the number") << "2b"
                                                           << "10a";
    QTest::newRow("capitals first") << "B"
                                    << "a";
    QTest::newRow("the highest number") << "2147483646"
                                        << "2147483647";
    QTest::newRow("past the highest, by text") << "2147483647"
                                               << "2147483648";
    QTest::newRow("past the highest, by text again") << "2147483647"
                                                     << "99999999999999999999";
    QTest::newRow("past the highest, the shorter is no less") << "10000000000"
                                                              << "9999999999";
    QTest::newRow("the lowest number") << "-2147483648"
                                       << "-2147483647";
    QTest::newRow("past the lowest, by text") << "-2147483648"
                                              << "-99999999999";
    QTest::newRow("highest and lowest do not overflow") << "-99999999999"
                                                        << "99999999999";
    QTest::newRow("digits of another script are no digits") << "1" << QString::fromUtf8("1.٣");
    QTest::newRow("an exponent is text") << "1e9"
                                         << "2";
    QTest::newRow("a hexadecimal number is 0") << "0x10"
                                               << "1";
    QTest::newRow("a comma is no point") << "1,9"
                                         << "1.0";
}

void tst_CueNumber::oneComesBeforeTheOther() {
    QFETCH(const QString, before);
    QFETCH(const QString, after);

    QCOMPARE(compareCueNumbers(before, after), -1);
    QCOMPARE(compareCueNumbers(after, before), 1);
}

void tst_CueNumber::onlyTheSameTextIsEqual_data() {
    QTest::addColumn<QString>("number");

    QTest::newRow("an integer") << "3";
    QTest::newRow("several components") << "10.1.3";
    QTest::newRow("empty components") << "1..";
    QTest::newRow("nothing") << "";
    QTest::newRow("text") << "Intermission & bar";
}

void tst_CueNumber::onlyTheSameTextIsEqual() {
    QFETCH(const QString, number);

    QCOMPARE(compareCueNumbers(number, QString(number)), 0);
}

void tst_CueNumber::theContextMakesNoDifference() {
    const int context = 1;
    QCOMPARE(compareCueNumbers("2", "10", &context), -1);
    QCOMPARE(compareCueNumbers("2", "10", nullptr), -1);
}

void tst_CueNumber::anyOrderSortsToTheSameList() {
    const QStringList sorted{"-99999999999", "-1",    "",    ".",    "1",   "01.a",  "1.",   "1.0", "1.a",
                             "1.1",          "1.1.1", "1.2", "1.05", "1.5", "1.9x9", "1.10", "2",   "10"};
    QStringList numbers = sorted;
    std::mt19937 random(1); // NOLINT(*-msc51-cpp): the same shuffles in every run
    for (int round = 0; round < 100; ++round) {
        std::ranges::shuffle(numbers, random);
        std::ranges::sort(numbers,
                          [](const QString& a, const QString& b) { return compareCueNumbers(a, b) < 0; });
        QCOMPARE(numbers, sorted);
    }
}

QTEST_APPLESS_MAIN(tst_CueNumber)
#include "tst_CueNumber.moc"
