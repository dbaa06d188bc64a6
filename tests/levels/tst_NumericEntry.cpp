#include "levels/NumericEntry.h"

#include "support/CommaLocale.h"

#include <QLocale>
#include <QTest>

namespace {

constexpr std::uint32_t max8 = 255;
constexpr std::uint32_t max16 = 65535;

NumericEntry typed(const char* characters) {
    NumericEntry entry;
    for (const char* character = characters; *character; ++character) {
        entry.append(*character);
    }
    return entry;
}

} // namespace

class tst_NumericEntry : public QObject {
    Q_OBJECT

private slots:
    void atMostSixCharactersAreTaken();
    void aLevelIsRoundedAndLimited_data();
    void aLevelIsRoundedAndLimited();
    void fewerThanOneOrMoreThanFiveCharactersAskForNothing_data();
    void fewerThanOneOrMoreThanFiveCharactersAskForNothing();
    void aTimeKeepsItsFraction_data();
    void aTimeKeepsItsFraction();
    void aPointAloneIsNoTimeAndEndsTheTimeMode();
    void withNothingTypedTheTimeModeStays();
    void sixCharactersLeaveTheTimeMode();
    void clearingLeavesTheTimeMode();
    void deleteTakesTheLastCharacter();
    void theCharactersStayUntilTheyAreCleared();
    void aCommaLocaleChangesNothing();
    void aCommaLocaleOfTheToolkitChangesNothing();
};

void tst_NumericEntry::atMostSixCharactersAreTaken() {
    NumericEntry entry = typed("123456789");
    QVERIFY(entry.text() == "123456");
    entry.removeLast();
    entry.append('0');
    entry.append('1');
    QVERIFY(entry.text() == "123450");
}

void tst_NumericEntry::aLevelIsRoundedAndLimited_data() {
    QTest::addColumn<QByteArray>("characters");
    QTest::addColumn<quint32>("max");
    QTest::addColumn<quint32>("level");

    QTest::newRow("128") << QByteArray("128") << max8 << 128U;
    QTest::newRow("0") << QByteArray("0") << max8 << 0U;
    QTest::newRow("255") << QByteArray("255") << max8 << 255U;
    QTest::newRow("256") << QByteArray("256") << max8 << 255U;
    QTest::newRow("300") << QByteArray("300") << max8 << 255U;
    QTest::newRow("five digits") << QByteArray("99999") << max8 << 255U;
    QTest::newRow("16 bit, highest") << QByteArray("65535") << max16 << 65535U;
    QTest::newRow("16 bit, beyond") << QByteArray("65536") << max16 << 65535U;
    QTest::newRow("16 bit, five digits") << QByteArray("99999") << max16 << 65535U;
    QTest::newRow("leading zeros") << QByteArray("00012") << max8 << 12U;
    QTest::newRow("down") << QByteArray("127.4") << max8 << 127U;
    QTest::newRow("half is up") << QByteArray("127.5") << max8 << 128U;
    QTest::newRow("up to the limit") << QByteArray("254.5") << max8 << 255U;
    QTest::newRow("up beyond the limit") << QByteArray("255.5") << max8 << 255U;
    QTest::newRow("point first") << QByteArray(".5") << max8 << 1U;
    QTest::newRow("less than half") << QByteArray(".4999") << max8 << 0U;
    QTest::newRow("point last") << QByteArray("12.") << max8 << 12U;
    QTest::newRow("a point alone") << QByteArray(".") << max8 << 0U;
    QTest::newRow("points alone") << QByteArray(".....") << max8 << 0U;
    QTest::newRow("a second point ends the number") << QByteArray("1.6.9") << max8 << 2U;
    QTest::newRow("two points before digits") << QByteArray("..12") << max8 << 0U;
}

void tst_NumericEntry::aLevelIsRoundedAndLimited() {
    QFETCH(const QByteArray, characters);
    QFETCH(const quint32, max);
    QFETCH(const quint32, level);
    const NumericEntry::Outcome outcome = typed(characters.constData()).finish(max);
    QVERIFY(!outcome.time);
    QVERIFY(outcome.value);
    QCOMPARE(*outcome.value, level);
}

void tst_NumericEntry::fewerThanOneOrMoreThanFiveCharactersAskForNothing_data() {
    QTest::addColumn<QByteArray>("characters");
    QTest::newRow("nothing") << QByteArray("");
    QTest::newRow("six digits") << QByteArray("123456");
    QTest::newRow("six zeros") << QByteArray("000000");
    QTest::newRow("six with a point") << QByteArray("12.500");
    QTest::newRow("seven") << QByteArray("1234567");
}

void tst_NumericEntry::fewerThanOneOrMoreThanFiveCharactersAskForNothing() {
    QFETCH(const QByteArray, characters);
    const NumericEntry::Outcome outcome = typed(characters.constData()).finish(max16);
    QVERIFY(!outcome.value);
    QVERIFY(!outcome.time);
}

void tst_NumericEntry::aTimeKeepsItsFraction_data() {
    QTest::addColumn<QByteArray>("characters");
    QTest::addColumn<float>("seconds");

    QTest::newRow("2.5") << QByteArray("2.5") << 2.5F;
    QTest::newRow("0") << QByteArray("0") << 0.0F;
    QTest::newRow(".25") << QByteArray(".25") << 0.25F;
    QTest::newRow("300, beyond every level") << QByteArray("300") << 300.0F;
    QTest::newRow("five digits") << QByteArray("99999") << 99999.0F;
    QTest::newRow("a second point ends the number") << QByteArray("1.5.9") << 1.5F;
}

void tst_NumericEntry::aTimeKeepsItsFraction() {
    QFETCH(const QByteArray, characters);
    QFETCH(const float, seconds);
    NumericEntry entry = typed(characters.constData());
    entry.setTimeMode();
    const NumericEntry::Outcome outcome = entry.finish(max8);
    QVERIFY(!outcome.value);
    QVERIFY(outcome.time);
    QCOMPARE(*outcome.time, seconds);
}

void tst_NumericEntry::aPointAloneIsNoTimeAndEndsTheTimeMode() {
    NumericEntry entry = typed(".");
    entry.setTimeMode();
    const NumericEntry::Outcome outcome = entry.finish(max8);
    QVERIFY(!outcome.value);
    QVERIFY(!outcome.time);
    const NumericEntry::Outcome next = entry.finish(max8);
    QVERIFY(next.value);
    QCOMPARE(*next.value, 0U);
}

void tst_NumericEntry::withNothingTypedTheTimeModeStays() {
    NumericEntry entry;
    entry.setTimeMode();
    QVERIFY(!entry.finish(max8).time);
    entry.append('7');
    const NumericEntry::Outcome outcome = entry.finish(max8);
    QVERIFY(outcome.time && !outcome.value);
    QCOMPARE(*outcome.time, 7.0F);
    const NumericEntry::Outcome next = entry.finish(max8);
    QVERIFY(next.value && !next.time);
    QCOMPARE(*next.value, 7U);
}

void tst_NumericEntry::sixCharactersLeaveTheTimeMode() {
    NumericEntry entry = typed("123456");
    entry.setTimeMode();
    QVERIFY(!entry.finish(max8).time);
    entry.removeLast();
    const NumericEntry::Outcome outcome = entry.finish(max8);
    QVERIFY(outcome.time);
    QCOMPARE(*outcome.time, 12345.0F);
}

void tst_NumericEntry::clearingLeavesTheTimeMode() {
    NumericEntry entry = typed("12");
    entry.setTimeMode();
    entry.clear();
    QVERIFY(entry.empty());
    entry.append('3');
    QVERIFY(entry.finish(max8).time);
}

void tst_NumericEntry::deleteTakesTheLastCharacter() {
    NumericEntry entry = typed("12");
    entry.removeLast();
    QVERIFY(entry.text() == "1");
    entry.removeLast();
    QVERIFY(entry.empty());
    entry.removeLast();
    QVERIFY(entry.empty());
    entry.append('5');
    QVERIFY(entry.text() == "5");
}

void tst_NumericEntry::theCharactersStayUntilTheyAreCleared() {
    NumericEntry entry = typed("12");
    entry.finish(max8);
    QVERIFY(entry.text() == "12");
    entry.clear();
    QVERIFY(entry.empty());
    QVERIFY(entry.text().empty());
}

void tst_NumericEntry::aCommaLocaleChangesNothing() {
    const CommaLocale locale;
    if (!locale.isSet()) {
        QSKIP("the system has no locale with a decimal comma");
    }
    QCOMPARE(typed("12.6").finish(max8).value, std::optional(13U));
    NumericEntry time = typed("2.5");
    time.setTimeMode();
    QCOMPARE(time.finish(max8).time, std::optional(2.5F));
}

void tst_NumericEntry::aCommaLocaleOfTheToolkitChangesNothing() {
    QLocale::setDefault(QLocale(QLocale::German));
    const NumericEntry::Outcome outcome = typed("2.6").finish(max8);
    QLocale::setDefault(QLocale::c());
    QVERIFY(outcome.value);
    QCOMPARE(*outcome.value, 3U);
}

QTEST_APPLESS_MAIN(tst_NumericEntry)
#include "tst_NumericEntry.moc"
