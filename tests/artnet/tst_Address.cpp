#include "artnet/Address.h"

#include "support/CommaLocale.h"

#include <QTest>

using namespace std::string_view_literals;

class tst_Address : public QObject {
    Q_OBJECT

private slots:
    void readsFourNumbers_data();
    void readsFourNumbers();
    void refusesEverythingElse_data();
    void refusesEverythingElse();
    void aNulEndsNothingEarly();
    void aCommaLocaleChangesNothing();
    void printsFourNumbersWithPoints_data();
    void printsFourNumbersWithPoints();
};

void tst_Address::readsFourNumbers_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<quint32>("address");

    QTest::newRow("loopback") << QByteArray("127.0.0.1") << 0x7F000001U;
    QTest::newRow("broadcast in a private network") << QByteArray("192.168.1.255") << 0xC0A801FFU;
    QTest::newRow("all zero") << QByteArray("0.0.0.0") << 0U;
    QTest::newRow("all at the upper bound") << QByteArray("255.255.255.255") << 0xFFFFFFFFU;
    QTest::newRow("a blank before and after") << QByteArray(" 10.0.0.1 ") << 0x0A000001U;
    QTest::newRow("blanks before each number") << QByteArray(" 1. 2.  3. 4") << 0x01020304U;
    QTest::newRow("every kind of white space") << QByteArray("\t\n\v\f\r 1.\t2.\n3.\r4") << 0x01020304U;
    QTest::newRow("leading zeros are not octal") << QByteArray("010.1.1.1") << 0x0A010101U;
    QTest::newRow("any number of leading zeros") << QByteArray("00000000000000000007.1.1.1") << 0x07010101U;
    QTest::newRow("letters behind") << QByteArray("1.2.3.4xyz") << 0x01020304U;
    QTest::newRow("a fifth number behind") << QByteArray("1.2.3.4.5") << 0x01020304U;
    QTest::newRow("a blank before what is behind") << QByteArray("1.2.3.4 5") << 0x01020304U;
    QTest::newRow("plus signs") << QByteArray("+1.+2.+3.+4") << 0x01020304U;
    QTest::newRow("minus zero") << QByteArray("-0.0.0.1") << 0x00000001U;
}

void tst_Address::readsFourNumbers() {
    QFETCH(const QByteArray, text);
    QFETCH(const quint32, address);

    const auto read = parseAddress(text.toStdString());
    QVERIFY(read.has_value());
    QCOMPARE(*read, address);
}

void tst_Address::refusesEverythingElse_data() {
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("blank") << QByteArray("   ");
    QTest::newRow("a name") << QByteArray("localhost");
    QTest::newRow("three numbers") << QByteArray("1.2.3");
    QTest::newRow("three numbers and a point") << QByteArray("1.2.3.");
    QTest::newRow("three numbers, a point and a blank") << QByteArray("1.2.3. ");
    QTest::newRow("nothing between two points") << QByteArray("1..2.3");
    QTest::newRow("a point first") << QByteArray(".1.2.3.4");
    QTest::newRow("a blank before a point") << QByteArray("1 .2.3.4");
    QTest::newRow("commas") << QByteArray("1,2,3,4");
    QTest::newRow("hexadecimal") << QByteArray("0x10.1.1.1");
    QTest::newRow("first number past the bound") << QByteArray("256.1.1.1");
    QTest::newRow("last number past the bound") << QByteArray("1.1.1.256");
    QTest::newRow("a negative number") << QByteArray("-1.2.3.4");
    QTest::newRow("a negative last number") << QByteArray("1.2.3.-4");
    QTest::newRow("two signs") << QByteArray("--1.2.3.4");
    QTest::newRow("a sign and a blank") << QByteArray("- 1.2.3.4");
    QTest::newRow("a sign alone") << QByteArray("-");
    QTest::newRow("would wrap to 1 in 32 bits") << QByteArray("4294967297.2.3.4");
    QTest::newRow("would wrap to 1 in 64 bits") << QByteArray("18446744073709551617.2.3.4");
    QTest::newRow("minus 2 to the 32 and 1") << QByteArray("-4294967295.2.3.4");
    QTest::newRow("a thousand digits") << QByteArray(1000, '9') + ".2.3.4";
    QTest::newRow("a no-break space before") << QByteArray("\xC2\xA0"
                                                           "1.2.3.4");
    QTest::newRow("digits of another script") << QByteArray("\xD9\xA1.2.3.4");
}

void tst_Address::refusesEverythingElse() {
    QFETCH(const QByteArray, text);

    QVERIFY(!parseAddress(text.toStdString()).has_value());
}

void tst_Address::aNulEndsNothingEarly() {
    QVERIFY(!parseAddress("1.2.3.\0004"sv).has_value());
    QCOMPARE(parseAddress("1.2.3.4\0005"sv).value_or(0), 0x01020304U);
}

void tst_Address::aCommaLocaleChangesNothing() {
    const CommaLocale locale;
    if (!locale.isSet()) {
        QSKIP("the system has no locale with a decimal comma");
    }
    QCOMPARE(parseAddress("192.168.1.255").value_or(0), 0xC0A801FFU);
    QVERIFY(!parseAddress("192,168,1,255").has_value());
    QVERIFY(!parseAddress("192.168,1.255").has_value());
    QCOMPARE(printAddress(0xC0A801FF), std::string("192.168.1.255"));
}

void tst_Address::printsFourNumbersWithPoints_data() {
    QTest::addColumn<quint32>("address");
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("all zero") << 0U << QByteArray("0.0.0.0");
    QTest::newRow("no leading zeros") << 0x0A010101U << QByteArray("10.1.1.1");
    QTest::newRow("first octet first") << 0xC0A801FFU << QByteArray("192.168.1.255");
    QTest::newRow("as long as it gets") << 0xFFFFFFFFU << QByteArray("255.255.255.255");
}

void tst_Address::printsFourNumbersWithPoints() {
    QFETCH(const quint32, address);
    QFETCH(const QByteArray, text);

    QCOMPARE(QByteArray::fromStdString(printAddress(address)), text);
}

QTEST_APPLESS_MAIN(tst_Address)
#include "tst_Address.moc"
