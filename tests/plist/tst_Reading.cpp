#include "plist/PropertyList.h"
#include "plist/Reading.h"
#include "support/CommaLocale.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr int lowest = -2147483647 - 1;
constexpr int highest = 2147483647;
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class tst_Reading : public QObject {
    Q_OBJECT

private slots:
    void aTextReadsAsTheIntegerItBeginsWith_data();
    void aTextReadsAsTheIntegerItBeginsWith();
    void aTextReadsAsTheDecimalItBeginsWith_data();
    void aTextReadsAsTheDecimalItBeginsWith();
    void aTextWithoutANumberHasNoDecimal_data();
    void aTextWithoutANumberHasNoDecimal();
    void anIntegerIsReadFromAnyNumberOrText_data();
    void anIntegerIsReadFromAnyNumberOrText();
    void aFloatIsReadFromAnyNumberOrText_data();
    void aFloatIsReadFromAnyNumberOrText();
    void aBooleanIsReadFromAnyNumberOrText_data();
    void aBooleanIsReadFromAnyNumberOrText();
    void textsListsAndDictionariesAreOnlyWhatTheyAre_data();
    void textsListsAndDictionariesAreOnlyWhatTheyAre();
    void anEmptyTextIsNotNull();
    void thePointIsTheDecimalSignUnderACommaLocale();
};

void tst_Reading::aTextReadsAsTheIntegerItBeginsWith_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("digits") << "128" << 128;
    QTest::newRow("text behind") << "12abc" << 12;
    QTest::newRow("one digit") << "5abc" << 5;
    QTest::newRow("text before") << "a5" << 0;
    QTest::newRow("white space before") << " \t\n 7" << 7;
    QTest::newRow("only white space") << "  " << 0;
    QTest::newRow("minus") << "-3" << -3;
    QTest::newRow("plus") << "+3" << 3;
    QTest::newRow("two signs") << "--3" << 0;
    QTest::newRow("only a sign") << "-" << 0;
    QTest::newRow("blank after the sign") << "- 3" << 0;
    QTest::newRow("decimal") << "2.9" << 2;
    QTest::newRow("leading zeros") << "010" << 10;
    QTest::newRow("hexadecimal") << "0x10" << 0;
    QTest::newRow("digits of another script") << QString::fromUtf8("٣") << 0;
    QTest::newRow("largest") << "2147483647" << highest;
    QTest::newRow("beyond the largest") << "2147483648" << highest;
    QTest::newRow("smallest") << "-2147483648" << lowest;
    QTest::newRow("beyond the smallest") << "-2147483649" << lowest;
    QTest::newRow("very long") << QString(1000, u'9') << highest;
    QTest::newRow("very long, negative") << "-" + QString(1000, u'9') << lowest;
}

void tst_Reading::aTextReadsAsTheIntegerItBeginsWith() {
    QFETCH(const QString, text);
    QFETCH(const int, expected);
    QCOMPARE(leadingInteger(text), expected);
    QCOMPARE(integerValue(text), expected);
}

void tst_Reading::aTextReadsAsTheDecimalItBeginsWith_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("expected");
    QTest::newRow("integer") << "12" << 12.0;
    QTest::newRow("decimal") << "2.5" << 2.5;
    QTest::newRow("two points") << "1.2.3" << 1.2;
    QTest::newRow("point first") << ".5" << 0.5;
    QTest::newRow("point last") << "5." << 5.0;
    QTest::newRow("negative") << "-.25" << -0.25;
    QTest::newRow("plus") << "+1.5" << 1.5;
    QTest::newRow("white space before") << " \t 1.5" << 1.5;
    QTest::newRow("text behind") << "1.5s" << 1.5;
    QTest::newRow("comma") << "1,5" << 1.0;
    QTest::newRow("exponent") << "1e3" << 1000.0;
    QTest::newRow("signed exponent") << "25E-1" << 2.5;
    QTest::newRow("exponent after a point") << "1.e2" << 100.0;
    QTest::newRow("exponent without digits") << "2e" << 2.0;
    QTest::newRow("exponent with a sign alone") << "2e+" << 2.0;
    QTest::newRow("exponent and text") << "2e1x" << 20.0;
    QTest::newRow("leading zeros") << "007.5" << 7.5;
    QTest::newRow("hexadecimal") << "0x10" << 0.0;
    QTest::newRow("too large") << "1e400" << infinite;
    QTest::newRow("too small") << "1e-400" << 0.0;
}

void tst_Reading::aTextReadsAsTheDecimalItBeginsWith() {
    QFETCH(const QString, text);
    QFETCH(const double, expected);
    QCOMPARE(leadingNumber(text), std::optional(expected));
    QCOMPARE(floatValue(text), static_cast<float>(expected));
}

void tst_Reading::aTextWithoutANumberHasNoDecimal_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("white space") << "  ";
    QTest::newRow("point") << ".";
    QTest::newRow("sign") << "-";
    QTest::newRow("sign and point") << "-.";
    QTest::newRow("exponent alone") << "e5";
    QTest::newRow("point and exponent") << ".e5";
    QTest::newRow("text") << "abc";
    QTest::newRow("infinity") << "inf";
    QTest::newRow("not a number") << "nan";
}

void tst_Reading::aTextWithoutANumberHasNoDecimal() {
    QFETCH(const QString, text);
    QCOMPARE(leadingNumber(text), std::nullopt);
    QCOMPARE(floatValue(text), 0.0F);
}

void tst_Reading::anIntegerIsReadFromAnyNumberOrText_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("expected");
    QTest::newRow("nothing") << QVariant() << 0;
    QTest::newRow("true") << QVariant(true) << 1;
    QTest::newRow("int") << QVariant(-7) << -7;
    QTest::newRow("largest") << QVariant(qlonglong{2147483647}) << highest;
    QTest::newRow("beyond the largest") << QVariant(qlonglong{2147483648}) << highest;
    QTest::newRow("smallest") << QVariant(qlonglong{-2147483648}) << lowest;
    QTest::newRow("beyond the smallest") << QVariant(qlonglong{-2147483649}) << lowest;
    QTest::newRow("unsigned") << QVariant(4294967295U) << highest;
    QTest::newRow("64 bits unsigned") << QVariant(qulonglong{18446744073709551615U}) << highest;
    QTest::newRow("real") << QVariant(2.9) << 2;
    QTest::newRow("negative real") << QVariant(-2.9) << -2;
    QTest::newRow("single precision") << QVariant(1.5F) << 1;
    QTest::newRow("large real") << QVariant(1e10) << highest;
    QTest::newRow("large negative real") << QVariant(-1e10) << lowest;
    QTest::newRow("infinite") << QVariant(infinite) << highest;
    QTest::newRow("minus infinite") << QVariant(-infinite) << lowest;
    QTest::newRow("not a number") << QVariant(notANumber) << 0;
    QTest::newRow("data") << QVariant(QByteArray("5")) << 0;
    QTest::newRow("array") << QVariant(QVariantList{5}) << 0;
    QTest::newRow("dictionary") << QVariant(QVariantMap{{"5", 5}}) << 0;
    QTest::newRow("date") << QVariant::fromValue(PropertyListDate{5}) << 0;
}

void tst_Reading::anIntegerIsReadFromAnyNumberOrText() {
    QFETCH(const QVariant, value);
    QFETCH(const int, expected);
    QCOMPARE(integerValue(value), expected);
}

void tst_Reading::aFloatIsReadFromAnyNumberOrText_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<float>("expected");
    QTest::newRow("nothing") << QVariant() << 0.0F;
    QTest::newRow("true") << QVariant(true) << 1.0F;
    QTest::newRow("integer") << QVariant(qlonglong{-3}) << -3.0F;
    QTest::newRow("64 bits unsigned")
        << QVariant(qulonglong{18446744073709551615U}) << 18446744073709551616.0F;
    QTest::newRow("real") << QVariant(2.5) << 2.5F;
    QTest::newRow("single precision") << QVariant(0.1F) << 0.1F;
    QTest::newRow("too large") << QVariant(1e300) << std::numeric_limits<float>::infinity();
    QTest::newRow("not a number") << QVariant(notANumber) << 0.0F;
    QTest::newRow("data") << QVariant(QByteArray("5")) << 0.0F;
    QTest::newRow("array") << QVariant(QVariantList{5}) << 0.0F;
}

void tst_Reading::aFloatIsReadFromAnyNumberOrText() {
    QFETCH(const QVariant, value);
    QFETCH(const float, expected);
    QCOMPARE(floatValue(value), expected);
}

void tst_Reading::aBooleanIsReadFromAnyNumberOrText_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("expected");
    QTest::newRow("nothing") << QVariant() << false;
    QTest::newRow("false") << QVariant(false) << false;
    QTest::newRow("true") << QVariant(true) << true;
    QTest::newRow("0") << QVariant(qlonglong{0}) << false;
    QTest::newRow("-1") << QVariant(qlonglong{-1}) << true;
    QTest::newRow("beyond 32 bits") << QVariant(qlonglong{4294967296}) << true;
    QTest::newRow("0.0") << QVariant(0.0) << false;
    QTest::newRow("0.5") << QVariant(0.5) << true;
    QTest::newRow("empty text") << QVariant("") << false;
    QTest::newRow("YES") << QVariant("YES") << true;
    QTest::newRow("yes") << QVariant("yes") << true;
    QTest::newRow("True") << QVariant("True") << true;
    QTest::newRow("t") << QVariant("t") << true;
    QTest::newRow("blank before") << QVariant(" y") << true;
    QTest::newRow("NO") << QVariant("NO") << false;
    QTest::newRow("text 0") << QVariant("0") << false;
    QTest::newRow("text 1") << QVariant("1") << true;
    QTest::newRow("text -2x") << QVariant("-2x") << true;
    QTest::newRow("text 00") << QVariant("00") << false;
    QTest::newRow("text 0.5") << QVariant("0.5") << false;
    QTest::newRow("data") << QVariant(QByteArray("1")) << false;
    QTest::newRow("array") << QVariant(QVariantList{true}) << false;
}

void tst_Reading::aBooleanIsReadFromAnyNumberOrText() {
    QFETCH(const QVariant, value);
    QFETCH(const bool, expected);
    QCOMPARE(booleanValue(value), expected);
}

void tst_Reading::textsListsAndDictionariesAreOnlyWhatTheyAre_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariantList>("list");
    QTest::addColumn<QVariantMap>("dictionary");
    const QString none;
    const QVariantList list{"a", qlonglong{1}};
    const QVariantMap dictionary{{"a", qlonglong{1}}};
    QTest::newRow("nothing") << QVariant() << none << QVariantList() << QVariantMap();
    QTest::newRow("text") << QVariant("abc") << "abc" << QVariantList() << QVariantMap();
    QTest::newRow("array") << QVariant(list) << none << list << QVariantMap();
    QTest::newRow("dictionary") << QVariant(dictionary) << none << QVariantList() << dictionary;
    QTest::newRow("integer") << QVariant(qlonglong{7}) << none << QVariantList() << QVariantMap();
    QTest::newRow("real") << QVariant(0.5) << none << QVariantList() << QVariantMap();
    QTest::newRow("boolean") << QVariant(true) << none << QVariantList() << QVariantMap();
    QTest::newRow("data") << QVariant(QByteArray("abc")) << none << QVariantList() << QVariantMap();
}

void tst_Reading::textsListsAndDictionariesAreOnlyWhatTheyAre() {
    QFETCH(const QVariant, value);
    QTEST(stringValue(value), "text");
    QTEST(listValue(value), "list");
    QTEST(mapValue(value), "dictionary");
}

void tst_Reading::anEmptyTextIsNotNull() {
    QVERIFY(!stringValue(QVariant("")).isNull());
    QVERIFY(stringValue(QVariant(qlonglong{0})).isNull());
}

void tst_Reading::thePointIsTheDecimalSignUnderACommaLocale() {
    const CommaLocale locale;
    if (!locale.isSet()) {
        QSKIP("the system has no locale with a decimal comma");
    }
    QCOMPARE(leadingNumber(u"2.5"), std::optional(2.5));
    QCOMPARE(leadingNumber(u"2,5"), std::optional(2.0));
}

QTEST_APPLESS_MAIN(tst_Reading)
#include "tst_Reading.moc"
