#include "cues/CueRecords.h"

#include "support/AsWritten.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

QVariantMap record(const QString& key, const QVariant& value, const QVariant& time) {
    return {{"key", key}, {"value", value}, {"time", time}};
}

} // namespace

class tst_CueRecords : public QObject {
    Q_OBJECT

private slots:
    void anEntryIsWrittenAsAListOfDictionaries();
    void anEntryIsAListToWhoeverAsks();
    void recordsComeInTheOrderOfTheirKeys_data();
    void recordsComeInTheOrderOfTheirKeys();
    void recordsAreReadAsNumbers();
    void whatIsNoListHasNoRecords_data();
    void whatIsNoListHasNoRecords();
    void aPlainEntryIsCompactedAndWrittenAsItWas();
    void whatIsNotPlainStaysAsItIs_data();
    void whatIsNotPlainStaysAsItIs();
};

void tst_CueRecords::anEntryIsWrittenAsAListOfDictionaries() {
    const QVariant entry = cueEntry({{"Spot.Pan", 0x80000000U, 2.5F}, {"Spot.Dimmer", 255, 0}});
    const QVariantList expected{record("Spot.Pan", -2147483648LL, 2.5), record("Spot.Dimmer", 255LL, 0.0)};
    QCOMPARE(asWritten(entry), QVariant(expected));
    QCOMPARE(asWritten(cueEntry({})), QVariant(QVariantList()));
}

void tst_CueRecords::anEntryIsAListToWhoeverAsks() {
    const QVariantList list = cueEntry({{"Spot.Dimmer", 200, 1.5F}}).toList();
    QCOMPARE(list, QVariantList{record("Spot.Dimmer", 200LL, 1.5)});
    const QVariantMap dictionary = list.at(0).toMap();
    QCOMPARE(dictionary.value("value").typeId(), int{QMetaType::LongLong});
    QCOMPARE(dictionary.value("time").typeId(), int{QMetaType::Double});
}

void tst_CueRecords::recordsComeInTheOrderOfTheirKeys_data() {
    QTest::addColumn<QVariant>("entry");

    const QVariantList sorted{record("A", 1, 1), record("B", 2, 0), record("C", 3, 0)};
    const QVariantList unsorted{record("C", 3, 0), record("A", 1, 1), record("B", 2, 0)};
    const QVariantList repeated{record("C", 9, 9), record("A", 1, 1), record("C", 3, 0),
                                record("B", 9, 0), record("B", 8, 0), record("B", 2, 0)};
    const QVariantList repeatedInOrder{record("A", 1, 1), record("B", 7, 0), record("B", 2, 0),
                                       record("C", 3, 0)};
    QTest::newRow("as they are") << QVariant(sorted);
    QTest::newRow("out of order") << QVariant(unsorted);
    QTest::newRow("of several, the last counts") << QVariant(repeated);
    QTest::newRow("of neighbours, the last counts") << QVariant(repeatedInOrder);
    QTest::newRow("compact") << cueEntry({{"A", 1, 1}, {"B", 2, 0}, {"C", 3, 0}});
    QTest::newRow("compact, out of order") << cueEntry({{"B", 9, 9}, {"C", 3, 0}, {"B", 2, 0}, {"A", 1, 1}});
}

void tst_CueRecords::recordsComeInTheOrderOfTheirKeys() {
    QFETCH(const QVariant, entry);

    const CueRecords expected{{"A", 1, 1}, {"B", 2, 0}, {"C", 3, 0}};
    QVERIFY(recordsByKey(entry) == std::optional(expected));
}

void tst_CueRecords::recordsAreReadAsNumbers() {
    const QVariantList entry{record("A", "12abc", "1.5"),  record("B", -1, true),
                             record("C", 3.9, QVariant()), QVariantMap{{"key", "D"}},
                             QVariantMap{{"value", 5}},    "no dictionary"};
    const CueRecords expected{{"", 0, 0}, {"A", 12, 1.5F}, {"B", 0xFFFFFFFFU, 1}, {"C", 3, 0}, {"D", 0, 0}};
    QVERIFY(recordsByKey(entry) == std::optional(expected));
}

void tst_CueRecords::whatIsNoListHasNoRecords_data() {
    QTest::addColumn<QVariant>("entry");

    QTest::newRow("nothing") << QVariant();
    QTest::newRow("the placeholder") << QVariant("cue data goes here");
    QTest::newRow("a dictionary") << QVariant(QVariantMap{{"key", "A"}});
}

void tst_CueRecords::whatIsNoListHasNoRecords() {
    QFETCH(const QVariant, entry);
    QVERIFY(!recordsByKey(entry));
}

void tst_CueRecords::aPlainEntryIsCompactedAndWrittenAsItWas() {
    constexpr double tenth = 0.1F;
    constexpr double large = 1e30F;
    const QVariantList list{record("B", 2147483647LL, tenth), record("A", -2147483648LL, -0.0),
                            record("B", 0LL, large),
                            record("", 1LL, std::numeric_limits<double>::infinity())};
    const QVariant compact = compactCueEntry(list);
    const CueRecords expected{{"B", 2147483647U, 0.1F},
                              {"A", 0x80000000U, -0.0F},
                              {"B", 0, 1e30F},
                              {"", 1, std::numeric_limits<float>::infinity()}};
    QCOMPARE(compact.value<CueRecords>(), expected);
    QCOMPARE(compact.toList(), list);
    QVERIFY(std::signbit(compact.toList().at(1).toMap().value("time").toDouble()));
}

void tst_CueRecords::whatIsNotPlainStaysAsItIs_data() {
    QTest::addColumn<QVariant>("entry");

    const auto withPlainOne = [](const QVariantMap& other) {
        return QVariant(QVariantList{record("A", 1LL, 0.0), other});
    };
    QTest::newRow("a placeholder") << QVariant("cue data goes here");
    QTest::newRow("no record") << QVariant(QVariantList());
    QTest::newRow("no dictionary") << QVariant(QVariantList{"A"});
    QTest::newRow("a time that is an integer") << withPlainOne(record("B", 1LL, 0LL));
    QTest::newRow("a value that is a real") << withPlainOne(record("B", 1.0, 0.0));
    QTest::newRow("a value that is a boolean") << withPlainOne(record("B", true, 0.0));
    QTest::newRow("a value that is a text") << withPlainOne(record("B", "1", 0.0));
    QTest::newRow("a value beyond 32 bits") << withPlainOne(record("B", 2147483648LL, 0.0));
    QTest::newRow("a value below 32 bits") << withPlainOne(record("B", -2147483649LL, 0.0));
    QTest::newRow("a time finer than a float") << withPlainOne(record("B", 1LL, 0.1));
    QTest::newRow("a time beyond a float") << withPlainOne(record("B", 1LL, 1e39));
    QTest::newRow("no time") << withPlainOne({{"key", "B"}, {"value", 1LL}});
    QTest::newRow("a key of its own")
        << withPlainOne({{"key", "B"}, {"value", 1LL}, {"time", 0.0}, {"note", "slow"}});
    QTest::newRow("another key in the place of one")
        << withPlainOne({{"key", "B"}, {"value", 1LL}, {"x", 0.0}});
    QTest::newRow("a key that is no text")
        << withPlainOne({{"key", QVariantList()}, {"value", 1LL}, {"time", 0.0}});
}

void tst_CueRecords::whatIsNotPlainStaysAsItIs() {
    QFETCH(const QVariant, entry);

    const QVariant same = compactCueEntry(entry);
    QCOMPARE(same.typeId(), entry.typeId());
    QCOMPARE(same, entry);
}

QTEST_APPLESS_MAIN(tst_CueRecords)
#include "tst_CueRecords.moc"
