#include "plist/PropertyList.h"
#include "support/CommaLocale.h"

#include <QTest>

#include <bit>
#include <clocale>
#include <limits>

namespace {

constexpr std::size_t limit = 1'000'000;

QVariant date(double secondsSince2001) {
    return QVariant::fromValue(PropertyListDate{secondsSince2001});
}

QVariant uid(quint32 value) {
    return QVariant::fromValue(PropertyListUid{value});
}

QByteArray xml(const QByteArray& value) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n" +
           value + "\n</plist>\n";
}

QVariant nestedArrays(int depth) {
    QVariant value = QVariantList();
    for (int level = 1; level < depth; ++level) {
        value = QVariantList{value};
    }
    return value;
}

struct Steps {
    int from = 0;
    int to = 0;
};

} // namespace

Q_DECLARE_METATYPE(Steps)

class tst_PropertyList : public QObject {
    Q_OBJECT

private slots:
    void aValueComesBackAsTheTypeItWas_data();
    void aValueComesBackAsTheTypeItWas();
    void aRealComesBackBitByBit_data();
    void aRealComesBackBitByBit();
    void dataOfEveryLengthComesBackAtEveryDepth();
    void otherNumberTypesAreWrittenAsTheirWidest_data();
    void otherNumberTypesAreWrittenAsTheirWidest();
    void whatHasNoPropertyListTypeMakesTheResultEmpty_data();
    void whatHasNoPropertyListTypeMakesTheResultEmpty();
    void aTypeThatConvertsToAListIsWrittenAsOne();
    void whatNoTextCanCarryIsReplaced();
    void xmlIsReadFromItsBytes_data();
    void xmlIsReadFromItsBytes();
    void xmlIsWrittenToTheseBytes();
    void binaryIsReadFromItsBytes();
    void fractionsOfASecondSurviveInBinaryOnly();
    void damagedTextReadsAsNothing_data();
    void damagedTextReadsAsNothing();
    void theSizeLimitIsTheLastSizeThatIsRead();
    void sixtyFourLevelsAreWrittenAndOneMoreIsNot();
    void realsAreTheSameUnderACommaLocale();
};

void tst_PropertyList::aValueComesBackAsTheTypeItWas_data() {
    QTest::addColumn<QVariant>("value");
    QTest::newRow("true") << QVariant(true);
    QTest::newRow("false") << QVariant(false);
    QTest::newRow("0") << QVariant(qlonglong{0});
    QTest::newRow("1") << QVariant(qlonglong{1});
    QTest::newRow("-1") << QVariant(qlonglong{-1});
    QTest::newRow("255") << QVariant(qlonglong{255});
    QTest::newRow("65536") << QVariant(qlonglong{65536});
    QTest::newRow("2^53 + 1") << QVariant(qlonglong{9007199254740993});
    QTest::newRow("largest integer") << QVariant(std::numeric_limits<qlonglong>::max());
    QTest::newRow("smallest integer") << QVariant(std::numeric_limits<qlonglong>::min());
    QTest::newRow("whole real") << QVariant(2.0);
    QTest::newRow("huge whole real") << QVariant(1e300);
    QTest::newRow("real") << QVariant(0.1);
    QTest::newRow("negative real") << QVariant(-0.0333);
    QTest::newRow("zero real") << QVariant(0.0);
    QTest::newRow("empty text") << QVariant(QString(""));
    QTest::newRow("text") << QVariant(QStringLiteral("Wash 1"));
    QTest::newRow("blanks around") << QVariant(QStringLiteral(" \t\n a \n "));
    QTest::newRow("markup") << QVariant(QStringLiteral("<a href=\"x\">&amp; 'y' ]]></a>"));
    QTest::newRow("umlauts") << QVariant(QString::fromUtf8("Bühne größer"));
    QTest::newRow("beyond 16 bits") << QVariant(QString::fromUtf8("\U0001F4A1 \U0010FFFD"));
    QTest::newRow("byte order mark") << QVariant(QString(QChar(0xFEFF)) + "a");
    QTest::newRow("control characters") << QVariant(QStringLiteral("\u0001\u0008\r\u001f\u007f"));
    QTest::newRow("looks like a number") << QVariant(QStringLiteral("12"));
    QTest::newRow("empty data") << QVariant(QByteArray(""));
    QTest::newRow("data") << QVariant(QByteArray("\0\xff<&>\n", 6));
    QTest::newRow("date") << date(700'000'000);
    QTest::newRow("date before 2001") << date(-1);
    QTest::newRow("distant past") << date(-63'114'076'800);
    QTest::newRow("distant future") << date(252'423'993'599);
    QTest::newRow("smallest reference") << uid(0);
    QTest::newRow("reference of three bytes") << uid(0x123456);
    QTest::newRow("largest reference") << uid(0xFFFFFFFF);
    QTest::newRow("empty array") << QVariant(QVariantList());
    QTest::newRow("array") << QVariant(QVariantList{true, qlonglong{1}, 1.0, "1", QByteArray("1")});
    QTest::newRow("empty dictionary") << QVariant(QVariantMap());
    QTest::newRow("dictionary") << QVariant(QVariantMap{{"", qlonglong{1}},
                                                        {"saved_state: Große <Bühne>", QVariantList{1.5}},
                                                        {"nested", QVariantMap{{"when", date(5)}}}});
}

void tst_PropertyList::aValueComesBackAsTheTypeItWas() {
    QFETCH(const QVariant, value);
    for (const QByteArray& bytes : {writeXmlPropertyList(value), writeBinaryPropertyList(value)}) {
        const std::optional<QVariant> read = readPropertyList(bytes, limit);
        QVERIFY(read);
        QCOMPARE(read->typeId(), value.typeId());
        QCOMPARE(*read, value);
        QCOMPARE(writeXmlPropertyList(*read), writeXmlPropertyList(value));
    }
}

void tst_PropertyList::aRealComesBackBitByBit_data() {
    QTest::addColumn<double>("value");
    QTest::newRow("a third") << 1.0 / 3;
    QTest::newRow("next after 1") << 1.0000000000000002;
    QTest::newRow("largest") << std::numeric_limits<double>::max();
    QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min();
    QTest::newRow("single precision") << static_cast<double>(0.1F);
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity();
    QTest::newRow("minus infinity") << -std::numeric_limits<double>::infinity();
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN();
}

void tst_PropertyList::aRealComesBackBitByBit() {
    QFETCH(const double, value);
    for (const QByteArray& bytes : {writeXmlPropertyList(value), writeBinaryPropertyList(value)}) {
        const std::optional<QVariant> read = readPropertyList(bytes, limit);
        QVERIFY(read && read->typeId() == QMetaType::Double);
        QCOMPARE(std::bit_cast<quint64>(read->toDouble()), std::bit_cast<quint64>(value));
    }
}

void tst_PropertyList::dataOfEveryLengthComesBackAtEveryDepth() {
    for (int depth = 0; depth < 12; ++depth) {
        for (int length = 0; length < 130; ++length) {
            QVariant value = QByteArray(length, '\xA5');
            for (int level = 0; level < depth; ++level) {
                value = QVariantList{value};
            }
            QCOMPARE(readPropertyList(writeXmlPropertyList(value), limit), std::optional(value));
        }
    }
}

void tst_PropertyList::otherNumberTypesAreWrittenAsTheirWidest_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("int") << QVariant(-5) << QVariant(qlonglong{-5});
    QTest::newRow("uint") << QVariant(4294967295U) << QVariant(qlonglong{4294967295});
    QTest::newRow("ulonglong") << QVariant(qulonglong{9223372036854775807U})
                               << QVariant(qlonglong{9223372036854775807});
    QTest::newRow("float") << QVariant(0.5F) << QVariant(0.5);
    QTest::newRow("strings") << QVariant(QStringList{"a", "b"}) << QVariant(QVariantList{"a", "b"});
}

void tst_PropertyList::otherNumberTypesAreWrittenAsTheirWidest() {
    QFETCH(const QVariant, value);
    QFETCH(const QVariant, expected);
    for (const QByteArray& bytes : {writeXmlPropertyList(value), writeBinaryPropertyList(value)}) {
        const std::optional<QVariant> read = readPropertyList(bytes, limit);
        QVERIFY(read);
        QCOMPARE(read->typeId(), expected.typeId());
        QCOMPARE(*read, expected);
    }
}

void tst_PropertyList::whatHasNoPropertyListTypeMakesTheResultEmpty_data() {
    QTest::addColumn<QVariant>("value");
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("a size") << QVariant(QSize(1, 2));
    QTest::newRow("in an array") << QVariant(QVariantList{1, QVariant()});
    QTest::newRow("in a dictionary") << QVariant(QVariantMap{{"a", 1}, {"b", QSize(1, 2)}});
    QTest::newRow("beyond 63 bits") << QVariant(qulonglong{9223372036854775808U});
    QTest::newRow("date before year 1") << date(-63'114'076'801);
    QTest::newRow("date after year 9999") << date(252'423'993'600);
    QTest::newRow("date that is no number") << date(std::numeric_limits<double>::quiet_NaN());
}

void tst_PropertyList::whatHasNoPropertyListTypeMakesTheResultEmpty() {
    QFETCH(const QVariant, value);
    QVERIFY(writeXmlPropertyList(value).isEmpty());
    QVERIFY(writeBinaryPropertyList(value).isEmpty());
}

void tst_PropertyList::aTypeThatConvertsToAListIsWrittenAsOne() {
    QMetaType::registerConverter<Steps, QVariantList>([](const Steps& steps) {
        return QVariantList{qlonglong{steps.from}, qlonglong{steps.to}};
    });
    const QVariant value = QVariantMap{{"steps", QVariant::fromValue(Steps{2, 5})}};
    const QVariant expected = QVariantMap{{"steps", QVariantList{2LL, 5LL}}};
    QCOMPARE(readPropertyList(writeXmlPropertyList(value), limit), std::optional(expected));
    QCOMPARE(readPropertyList(writeBinaryPropertyList(value), limit), std::optional(expected));
}

void tst_PropertyList::whatNoTextCanCarryIsReplaced() {
    const QString nul = QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    const QString halfPair = QStringLiteral("c") + QChar(0xD83D) + QStringLiteral("d");
    const QVariant value = QVariantMap{{nul, halfPair}};
    const QVariant expected = QVariantMap{{QString::fromUtf8("a\uFFFDb"), QString::fromUtf8("c?d")}};
    QCOMPARE(readPropertyList(writeXmlPropertyList(value), limit), std::optional(expected));
    QCOMPARE(readPropertyList(writeBinaryPropertyList(value), limit), std::optional(expected));
}

void tst_PropertyList::xmlIsReadFromItsBytes_data() {
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("entities") << QByteArray("<string>&lt;&gt;&amp;&quot;&apos;</string>")
                              << QVariant("<>&\"'");
    QTest::newRow("numbered characters")
        << QByteArray("<string>&#65;&#xe4;&#x1F4A1;</string>") << QVariant(QString::fromUtf8("Aä\U0001F4A1"));
    QTest::newRow("CDATA") << QByteArray("<string>a<![CDATA[<&>]]>b</string>") << QVariant("a<&>b");
    QTest::newRow("comment in text") << QByteArray("<string>a<!-- <x> -->b</string>") << QVariant("ab");
    QTest::newRow("comment before") << QByteArray("<!-- <array> --><true/>") << QVariant(true);
    QTest::newRow("blank in a tag") << QByteArray("<false />") << QVariant(false);
    QTest::newRow("open and closed") << QByteArray("<true></true>") << QVariant(true);
    QTest::newRow("empty integer") << QByteArray("<integer/>") << QVariant(qlonglong{0});
    QTest::newRow("empty text") << QByteArray("<string/>") << QVariant(QString(""));
    QTest::newRow("blanks around a number")
        << QByteArray("<integer> 42 </integer>") << QVariant(qlonglong{42});
    QTest::newRow("hexadecimal") << QByteArray("<integer>0x1F</integer>") << QVariant(qlonglong{31});
    QTest::newRow("signed") << QByteArray("<integer>+7</integer>") << QVariant(qlonglong{7});
    QTest::newRow("whole real") << QByteArray("<real>3</real>") << QVariant(3.0);
    QTest::newRow("exponent") << QByteArray("<real>-1.5E3</real>") << QVariant(-1500.0);
    QTest::newRow("data in lines") << QByteArray("<data>\n\tAQ\n\tID\n</data>")
                                   << QVariant(QByteArray("\1\2\3"));
    QTest::newRow("date") << QByteArray("<date>2001-01-02T00:00:01Z</date>") << date(86401);
    QTest::newRow("key given twice") << QByteArray("<dict><key>a</key><true/><key>a</key><false/></dict>")
                                     << QVariant(QVariantMap{{"a", false}});
    QTest::newRow("reference") << QByteArray("<dict><key>CF$UID</key><integer>3</integer></dict>") << uid(3);
    QTest::newRow("no reference: text") << QByteArray("<dict><key>CF$UID</key><string>3</string></dict>")
                                        << QVariant(QVariantMap{{"CF$UID", "3"}});
    QTest::newRow("no reference: negative")
        << QByteArray("<dict><key>CF$UID</key><integer>-1</integer></dict>")
        << QVariant(QVariantMap{{"CF$UID", qlonglong{-1}}});
}

void tst_PropertyList::xmlIsReadFromItsBytes() {
    QFETCH(const QByteArray, element);
    QFETCH(const QVariant, expected);
    const std::optional<QVariant> read = readPropertyList(xml(element), limit);
    QVERIFY(read);
    QCOMPARE(read->typeId(), expected.typeId());
    QCOMPARE(*read, expected);
}

void tst_PropertyList::xmlIsWrittenToTheseBytes() {
    const QVariant value = QVariantMap{{"time", 0.5}, {"value", 128}, {"views", QVariantList{"a&b", true}}};
    QCOMPARE(writeXmlPropertyList(value), xml("<dict>\n"
                                              "\t<key>time</key>\n"
                                              "\t<real>0.5</real>\n"
                                              "\t<key>value</key>\n"
                                              "\t<integer>128</integer>\n"
                                              "\t<key>views</key>\n"
                                              "\t<array>\n"
                                              "\t\t<string>a&amp;b</string>\n"
                                              "\t\t<true/>\n"
                                              "\t</array>\n"
                                              "</dict>"));
}

void tst_PropertyList::binaryIsReadFromItsBytes() {
    const QByteArray bytes("bplist00"
                           "\xD1\x01\x02"                           // 8: {object 1: object 2}
                           "\x51k"                                  // 11: "k"
                           "\xA4\x03\x04\x05\x06"                   // 13: array of four
                           "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE"   // 18: -2
                           "\x22\x3F\x00\x00\x00"                   // 27: 0.5 in single precision
                           "\x61\x00\xE4"                           // 32: "ä"
                           "\x80\x07"                               // 35: reference 7
                           "\x08\x0B\x0D\x12\x1B\x20\x23"           // 37: offset table
                           "\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x07" // widths, 7 objects
                           "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x25",    // root 0, table at 37
                           76);
    const QVariant expected =
        QVariantMap{{"k", QVariantList{qlonglong{-2}, 0.5, QString::fromUtf8("ä"), uid(7)}}};
    QCOMPARE(readPropertyList(bytes, limit), std::optional(expected));
}

void tst_PropertyList::fractionsOfASecondSurviveInBinaryOnly() {
    for (const double seconds : {700'000'000.123456, -1.25, -0.5, 0.29}) {
        QCOMPARE(readPropertyList(writeBinaryPropertyList(date(seconds)), limit),
                 std::optional(date(seconds)));
    }
    QCOMPARE(readPropertyList(writeXmlPropertyList(date(5.75)), limit), std::optional(date(5)));
}

void tst_PropertyList::damagedTextReadsAsNothing_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no UTF-8") << xml("<string>Gr\xF6\xDF"
                                     "e</string>");
    QTest::newRow("no UTF-8 in a key") << xml("<dict><key>\xF6</key><true/></dict>");
    QTest::newRow("half a surrogate pair") << xml("<string>&#xD83D;</string>");
    QTest::newRow("unknown entity") << xml("<string>a&b;c</string>");
    QTest::newRow("character 0") << xml("<string>a&#0;c</string>");
}

void tst_PropertyList::damagedTextReadsAsNothing() {
    QFETCH(const QByteArray, bytes);
    QCOMPARE(readPropertyList(bytes, limit), std::nullopt);
}

void tst_PropertyList::theSizeLimitIsTheLastSizeThatIsRead() {
    const QByteArray bytes = xml("<true/>");
    const auto size = static_cast<std::size_t>(bytes.size());
    QCOMPARE(readPropertyList(bytes, size), std::optional(QVariant(true)));
    QCOMPARE(readPropertyList(bytes, size - 1), std::nullopt);
}

void tst_PropertyList::sixtyFourLevelsAreWrittenAndOneMoreIsNot() {
    const QVariant deepest = nestedArrays(64);
    QCOMPARE(readPropertyList(writeXmlPropertyList(deepest), limit), std::optional(deepest));
    QCOMPARE(readPropertyList(writeBinaryPropertyList(deepest), limit), std::optional(deepest));
    QVERIFY(writeXmlPropertyList(nestedArrays(65)).isEmpty());
    QVERIFY(writeBinaryPropertyList(nestedArrays(65)).isEmpty());
}

void tst_PropertyList::realsAreTheSameUnderACommaLocale() {
    const CommaLocale locale;
    if (!locale.isSet()) {
        QSKIP("the system has no locale with a decimal comma");
    }
    QCOMPARE(QByteArray(std::localeconv()->decimal_point), QByteArray(","));
    QCOMPARE(readPropertyList(xml("<real>0.5</real>"), limit), std::optional(QVariant(0.5)));
    QCOMPARE(writeXmlPropertyList(0.5), xml("<real>0.5</real>"));
    QCOMPARE(QByteArray(std::localeconv()->decimal_point), QByteArray(","));
}

QTEST_APPLESS_MAIN(tst_PropertyList)
#include "tst_PropertyList.moc"
