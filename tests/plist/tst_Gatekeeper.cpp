#include "plist/Gatekeeper.h"
#include "plist/PropertyList.h"

#include <QTest>
#include <QtEndian>

#include <limits>

namespace {

QByteArray repeated(const QByteArray& text, int times) {
    return text.repeated(times);
}

QByteArray plist(const QByteArray& value) {
    return "<plist>" + value + "</plist>";
}

QByteArray nestedXml(int depth) {
    return plist(repeated("<array>", depth) + repeated("</array>", depth));
}

QByteArray hex(const char* digits) {
    return QByteArray::fromHex(digits);
}

QByteArray bigEndian(quint64 value, int width) {
    QByteArray bytes(8, '\0');
    qToBigEndian(value, bytes.data());
    return bytes.last(width);
}

/// What stands in a binary list's trailer; by default what the objects call for.
struct Trailer {
    int offsetSize = 2;
    int referenceSize = 2;
    std::optional<quint64> count = std::nullopt;
    quint64 root = 0;
    std::optional<quint64> table = std::nullopt;
};

// A binary list of these objects, each written out with its marker; references take two bytes.
QByteArray binary(const QByteArrayList& objects, const Trailer& trailer = {}) {
    QByteArray file = "bplist00";
    QByteArray offsets;
    for (const QByteArray& object : objects) {
        offsets += bigEndian(static_cast<quint64>(file.size()), 2);
        file += object;
    }
    const auto table = trailer.table.value_or(static_cast<quint64>(file.size()));
    const auto count = trailer.count.value_or(static_cast<quint64>(objects.size()));
    return file + offsets + QByteArray(6, '\0') + static_cast<char>(trailer.offsetSize) +
           static_cast<char>(trailer.referenceSize) + bigEndian(count, 8) + bigEndian(trailer.root, 8) +
           bigEndian(table, 8);
}

QByteArray references(const QList<int>& objects) {
    QByteArray bytes;
    for (const int object : objects) {
        bytes += bigEndian(static_cast<quint64>(object), 2);
    }
    return bytes;
}

// The string "a".
const QByteArray letterA = hex("5161");

// The marker of an object that counts its contents, with the count behind it in four bytes.
QByteArray counted(char type, quint64 count) {
    return QByteArray(1, type) + '\x12' + bigEndian(count, 4);
}

QByteArray array(const QList<int>& objects) {
    return counted('\xAF', static_cast<quint64>(objects.size())) + references(objects);
}

// As many entries, all of the same key and value, which is object 0.
QByteArray dictionary(int entries) {
    return counted('\xDF', static_cast<quint64>(entries)) + references(QList<int>(qsizetype{2} * entries, 0));
}

// Arrays in a row, each of which refers to the next one `fanOut` times, and something at the end.
QByteArray fans(int levels, int fanOut, const QByteArray& last) {
    QByteArrayList objects;
    for (int level = 1; level <= levels; ++level) {
        objects += array(QList<int>(fanOut, level));
    }
    return binary(objects << last);
}

// Arrays within each other, reached from the root directly and through an array between.
QByteArray twoWays(int depth) {
    QByteArrayList objects{array({2, 1}), array({2})};
    for (int level = 1; level < depth; ++level) {
        objects += array({level + 2});
    }
    return binary(objects << "\xA0");
}

// Keys of which every two have the same hash: "Ez" and "FY" have, and so has what is put together from them.
QByteArrayList collidingKeys(int count) {
    QByteArrayList keys;
    for (int number = 0; number < count; ++number) {
        QByteArray key;
        for (int bit = 0; bit < 14; ++bit) {
            key += (number >> bit & 1) != 0 ? "Ez" : "FY";
        }
        keys += key;
    }
    return keys;
}

// Different keys, and then the last of them over and over.
QByteArrayList repeatedKeys(int different, int repetitions) {
    QByteArrayList keys;
    for (int number = 1; number <= different; ++number) {
        keys += QByteArray::number(number);
    }
    return keys + QByteArrayList(repetitions, keys.constLast());
}

QByteArray dictionaryOf(const QByteArrayList& keys) {
    return plist("<dict><key>" + keys.join("</key><true/><key>") + "</key><true/></dict>");
}

// A text of so many entities and so many bytes in the file.
QByteArray textOf(int entities, int bytes) {
    return plist("<string>" + repeated("&amp;", entities) + QByteArray(bytes - 5 * entities, ' ') +
                 "</string>");
}

const QByteArray smallXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"a.dtd\">\n"
                            "<plist version=\"1.0\"><dict><key>a&amp;b</key><array><integer>-1</integer>"
                            "<real>0.5</real><string>x<!-- c --><![CDATA[<]]></string><true/>"
                            "<data>AQID</data><date>2001-01-01T00:00:00Z</date></array></dict></plist>";

QByteArray smallBinary() {
    return binary({"\xD2" + references({1, 2, 3, 4}), letterA, QByteArray("\x61\x00\xE4", 3),
                   array({5, 6, 7}), QByteArray("\x33\0\0\0\0\0\0\0\0", 9), QByteArray("\x10\x05"),
                   QByteArray("\x43\x00\x01\x02", 4), QByteArray("\x80\x01")});
}

// Whatever the bytes are: what passes is read or refused, and what is read can be written.
void readAndWrite(const QByteArray& bytes) {
    if (const auto value = readPropertyList(bytes, largestPropertyListFile)) {
        QVERIFY(!writeXmlPropertyList(*value).isEmpty());
        QVERIFY(!writeBinaryPropertyList(*value).isEmpty());
    }
}

void breakEveryBitOf(const QByteArray& whole) {
    for (qsizetype bit = 0; bit < whole.size() * 8; ++bit) {
        QByteArray bytes = whole;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
        readAndWrite(bytes);
    }
}

} // namespace

class tst_Gatekeeper : public QObject {
    Q_OBJECT

private slots:
    void wellFormedListsPass_data();
    void wellFormedListsPass();
    void xmlThatIsNoListIsRefused_data();
    void xmlThatIsNoListIsRefused();
    void binaryThatIsNoListIsRefused_data();
    void binaryThatIsNoListIsRefused();
    void otherFormatsAreRefused_data();
    void otherFormatsAreRefused();
    void everyLimitIsTheLastThatPasses_data();
    void everyLimitIsTheLastThatPasses();
    void aFewBytesThatUnfoldToGigabytesAreRefused_data();
    void aFewBytesThatUnfoldToGigabytesAreRefused();
    void everyBeginningOfAListIsRefused_data();
    void everyBeginningOfAListIsRefused();
    void noFlippedBitDoesHarm_data();
    void noFlippedBitDoesHarm();
    void whatCostsTheParserMostIsRead_data();
    void whatCostsTheParserMostIsRead();
};

void tst_Gatekeeper::wellFormedListsPass_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("XML") << smallXml;
    QTest::newRow("XML without a head") << plist("<true/>");
    QTest::newRow("XML with blanks around") << "\n " + plist("\n<true/>\n") + " \n";
    QTest::newRow("comments around") << QByteArray(
        "<!-- < --><plist><!-- > --><true/><!----></plist><!-- -->");
    QTest::newRow("blanks in tags") << QByteArray(
        "<plist ><array ><true /><false></false ></array ></plist >");
    QTest::newRow("binary") << smallBinary();
    QTest::newRow("binary, one value") << binary({"\x09"});
    QTest::newRow("shared object") << binary({array({1, 1}), letterA});
    QTest::newRow("root in the middle") << binary({"\x09", array({0})}, {.root = 1});
    QTest::newRow("integer of 16 bytes") << binary({"\x14" + QByteArray(16, '\xFF')});
    QTest::newRow("empty containers") << binary({array({1, 2}), "\xA0", "\xD0"});
}

void tst_Gatekeeper::wellFormedListsPass() {
    QFETCH(const QByteArray, bytes);
    QVERIFY(passesGatekeeper(bytes));
    QVERIFY(readPropertyList(bytes, largestPropertyListFile));
}

void tst_Gatekeeper::xmlThatIsNoListIsRefused_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blanks") << QByteArray("  \n");
    QTest::newRow("NUL in text") << plist(QByteArray("<string>a\0b</string>", 20));
    QTest::newRow("NUL at the end") << plist("<true/>") + '\0';
    QTest::newRow("entity declaration")
        << R"(<!DOCTYPE plist [<!ENTITY a "b">]>)" + plist("<string>&a;</string>");
    QTest::newRow("empty internal subset") << "<!DOCTYPE plist []>" + plist("<true/>");
    QTest::newRow("entity declaration outside") << R"(<!ENTITY a "b">)" + plist("<true/>");
    QTest::newRow("open quote in the head") << R"(<?xml " ?>)" + plist("<true/>");
    QTest::newRow("open quote in the document type") << R"(<!DOCTYPE ">)" + plist("<true/>");
    QTest::newRow("'>' within quotes") << R"(<!DOCTYPE ">">)" + plist("<true/>");
    QTest::newRow("processing instruction within") << plist("<?x ?><true/>");
    QTest::newRow("open comment") << QByteArray("<plist><true/></plist><!-- ");
    QTest::newRow("no plist element") << QByteArray("<true/>");
    QTest::newRow("no value") << plist("");
    QTest::newRow("two values") << plist("<true/><true/>");
    QTest::newRow("value in front") << "<true/>" + plist("<true/>");
    QTest::newRow("value behind") << plist("<true/>") + "<true/>";
    QTest::newRow("plist within plist") << plist(plist("<true/>"));
    QTest::newRow("two plists") << plist("<true/>") + plist("<true/>");
    QTest::newRow("plist never closed") << QByteArray("<plist><true/>");
    QTest::newRow("text between") << plist("<array>x<true/></array>");
    QTest::newRow("CDATA between") << plist("<array><![CDATA[x]]></array>");
    QTest::newRow("array never closed") << plist("<array>");
    QTest::newRow("array closed as dict") << plist("<array></dict>");
    QTest::newRow("closed once too often") << plist("<array/></array>");
    QTest::newRow("string closed as key") << plist("<string>a</key>");
    QTest::newRow("element within text") << plist("<string>a<true/></string>");
    QTest::newRow("comment within a number") << plist("<integer>1<!-- -->2</integer>");
    QTest::newRow("attribute") << plist(R"(<string id="1">a</string>)");
    QTest::newRow("unknown element") << plist("<null/>");
    QTest::newRow("capitals") << plist("<TRUE/>");
    QTest::newRow("blank before the name") << plist("< true/>");
    QTest::newRow("blank after the slash") << plist("<true/ >");
    QTest::newRow("tag never closed") << QByteArray("<plist><true");
    QTest::newRow("key in an array") << plist("<array><key>a</key></array>");
    QTest::newRow("key as the root") << plist("<key>a</key>");
    QTest::newRow("value without a key") << plist("<dict><true/></dict>");
    QTest::newRow("key without a value") << plist("<dict><key>a</key></dict>");
    QTest::newRow("two keys") << plist("<dict><key>a</key><key>b</key></dict>");
    QTest::newRow("two values for a key") << plist("<dict><key>a</key><true/><true/></dict>");
    QTest::newRow("key of no characters, short form") << plist("<dict><key/><true/></dict>");
    QTest::newRow("29,000 levels") << nestedXml(29'000);
    QTest::newRow("a million levels, never closed") << "<plist>" + repeated("<array>", 1'000'000);
}

void tst_Gatekeeper::xmlThatIsNoListIsRefused() {
    QFETCH(const QByteArray, bytes);
    QVERIFY(!passesGatekeeper(bytes));
    QCOMPARE(readPropertyList(bytes, largestPropertyListFile), std::nullopt);
}

void tst_Gatekeeper::binaryThatIsNoListIsRefused_data() {
    constexpr quint64 huge = std::numeric_limits<quint64>::max();
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no objects") << binary({});
    QTest::newRow("header and trailer alone") << "bplist00" + QByteArray(32, '\0');
    QTest::newRow("offsets of no bytes") << binary({"\x09"}, {.offsetSize = 0});
    QTest::newRow("offsets of nine bytes")
        << binary({"\x09" + QByteArray(20, '\x09')}, {.offsetSize = 9, .table = 9});
    QTest::newRow("references of no bytes") << binary({"\x09"}, {.referenceSize = 0});
    QTest::newRow("references of nine bytes") << binary({"\x09"}, {.referenceSize = 9});
    QTest::newRow("more objects than offsets") << binary({"\x09"}, {.count = 2});
    QTest::newRow("more objects than numbers") << binary({"\x09"}, {.count = huge});
    QTest::newRow("count that wraps") << binary({"\x09"}, {.count = huge / 2 + 2});
    QTest::newRow("root beyond the objects") << binary({"\x09"}, {.root = 1});
    QTest::newRow("table in the header") << binary({"\x09"}, {.table = 7});
    QTest::newRow("table in the trailer") << binary({"\x09"}, {.table = 12});
    QTest::newRow("table beyond the file") << binary({"\x09"}, {.table = huge});
    QTest::newRow("object in the header") << binary({"\x09"}, {.offsetSize = 1, .count = 1});
    QTest::newRow("reference to no object") << binary({array({1})});
    QTest::newRow("array in itself") << binary({array({0})});
    QTest::newRow("cycle of two") << binary({array({1}), array({0})});
    QTest::newRow("cycle through a dictionary")
        << binary({"\xD1" + references({1, 2}), letterA, array({3, 0}), "\x09"});
    QTest::newRow("cycle behind a shared object") << binary({array({1, 1}), array({2}), array({1})});
    QTest::newRow("key that is a number") << binary({"\xD1" + references({1, 1}), "\x10\x05"});
    QTest::newRow("key that is an array") << binary({"\xD1" + references({1, 2}), "\xA0", "\x09"});
    QTest::newRow("null") << binary({QByteArray(1, '\0')});
    QTest::newRow("fill") << binary({"\x0F"});
    QTest::newRow("set") << binary({"\xC1" + references({1}), "\x09"});
    QTest::newRow("unknown type") << binary({hex("70")});
    QTest::newRow("integer of 32 bytes") << binary({"\x15" + QByteArray(32, '\1')});
    QTest::newRow("integer cut off") << binary({"\x13\x01"});
    QTest::newRow("real of one byte") << binary({"\x20\x01"});
    QTest::newRow("real of 16 bytes") << binary({hex("24") + QByteArray(16, '\1')});
    QTest::newRow("date of four bytes") << binary({hex("32") + QByteArray(4, '\1')});
    QTest::newRow("reference number of nine bytes") << binary({"\x88" + QByteArray(9, '\1')});
    QTest::newRow("data cut off") << binary({hex("44616263")});
    QTest::newRow("text cut off") << binary({hex("54616263")});
    QTest::newRow("wide text cut off") << binary({hex("62616263")});
    QTest::newRow("array cut off") << binary({"\xA2" + references({0})});
    QTest::newRow("dictionary cut off") << binary({"\xD1" + references({0})});
    QTest::newRow("NUL in text") << binary({QByteArray("\x53\x61\0\x62", 4)});
    QTest::newRow("NUL in wide text") << binary({QByteArray("\x62\0a\0\0", 5)});
    QTest::newRow("count that is no integer") << binary({hex("5F5161")});
    QTest::newRow("count of 16 bytes") << binary({"\x5F\x14" + bigEndian(0, 8) + bigEndian(1, 8) + "a"});
    QTest::newRow("count cut off") << binary({"\x5F\x13\x01"});
    QTest::newRow("no count") << binary({hex("5F")});
    QTest::newRow("text count that wraps") << binary({"\x6F\x13" + bigEndian(huge / 2 + 2, 8) + "ab"});
    QTest::newRow("array count that wraps") << binary({"\xAF\x13" + bigEndian(huge / 2 + 2, 8) + "ab"});
    QTest::newRow("dictionary count that wraps") << binary({"\xDF\x13" + bigEndian(huge / 4 + 2, 8) + "ab"});
    QTest::newRow("largest data count") << binary({"\x4F\x13" + bigEndian(huge, 8) + "ab"});
}

void tst_Gatekeeper::binaryThatIsNoListIsRefused() {
    QFETCH(const QByteArray, bytes);
    QVERIFY(!passesGatekeeper(bytes));
    QCOMPARE(readPropertyList(bytes, largestPropertyListFile), std::nullopt);
}

void tst_Gatekeeper::otherFormatsAreRefused_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("JSON") << QByteArray(R"({"a": [1, 2]})");
    QTest::newRow("old style") << QByteArray("{ a = (1, 2); }");
    QTest::newRow("other version") << smallBinary().replace(0, 8, "bplist15");
    QTest::newRow("byte order mark") << "\xEF\xBB\xBF" + smallXml;
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE<\0p\0l\0i\0s\0t\0>\0", 16);
    QTest::newRow("HTML") << QByteArray("<html><body></body></html>");
}

void tst_Gatekeeper::otherFormatsAreRefused() {
    QFETCH(const QByteArray, bytes);
    QVERIFY(!passesGatekeeper(bytes));
    QCOMPARE(readPropertyList(bytes, largestPropertyListFile), std::nullopt);
}

void tst_Gatekeeper::everyLimitIsTheLastThatPasses_data() {
    QTest::addColumn<QByteArray>("last");
    QTest::addColumn<QByteArray>("beyond");
    QTest::newRow("XML depth") << nestedXml(64) << nestedXml(65);
    QTest::newRow("XML depth, empty container")
        << plist(repeated("<array>", 63) + "<dict/>" + repeated("</array>", 63))
        << plist(repeated("<array>", 64) + "<dict/>" + repeated("</array>", 64));
    QTest::newRow("XML nodes") << plist("<array>" + repeated("<true/>", 999'999) + "</array>")
                               << plist("<array>" + repeated("<true/>", 1'000'000) + "</array>");
    QTest::newRow("XML keys") << dictionaryOf(repeatedKeys(1, 14'141))
                              << dictionaryOf(repeatedKeys(1, 14'142));
    const QByteArray thousandKeys = "<dict>" + repeated("<key>a</key><true/>", 1000) + "</dict>";
    QTest::newRow("XML keys together") << plist("<array>" + repeated(thousandKeys, 200) + "</array>")
                                       << plist("<array>" + repeated(thousandKeys, 201) + "</array>");
    QTest::newRow("XML bytes") << plist("<data>" + QByteArray(16'777'188, ' ') + "</data>")
                               << plist("<data>" + QByteArray(16'777'189, ' ') + "</data>");
    QTest::newRow("binary depth") << fans(63, 1, "\xA0") << fans(64, 1, "\xA0");
    QTest::newRow("binary depth on the longer way") << twoWays(62) << twoWays(63);
    QTest::newRow("binary nodes") << binary({array(QList<int>(999, 1) << 2), array(QList<int>(999, 3)),
                                             array(QList<int>(998, 3)), "\x09"})
                                  << binary({array(QList<int>(999, 1) << 2), array(QList<int>(999, 3)),
                                             array(QList<int>(999, 3)), "\x09"});
    QTest::newRow("binary keys") << binary({letterA, dictionary(14'142)}, {.root = 1})
                                 << binary({letterA, dictionary(14'143)}, {.root = 1});
    QTest::newRow("binary keys together")
        << binary({letterA, array(QList<int>(200, 2)), dictionary(1000)}, {.root = 1})
        << binary({letterA, array(QList<int>(201, 2)), dictionary(1000)}, {.root = 1});
    QTest::newRow("entities") << textOf(20'000, 1'280'000) << textOf(20'000, 1'280'256);
    const QByteArray kilobyte = counted('\x4F', 1024) + QByteArray(1024, 'x');
    QTest::newRow("binary contents") << binary({kilobyte, array(QList<int>(65'536, 0))}, {.root = 1})
                                     << binary({kilobyte, array(QList<int>(65'537, 0))}, {.root = 1});
}

void tst_Gatekeeper::everyLimitIsTheLastThatPasses() {
    QFETCH(const QByteArray, last);
    QFETCH(const QByteArray, beyond);
    QVERIFY(passesGatekeeper(last));
    QVERIFY(!passesGatekeeper(beyond));
}

void tst_Gatekeeper::aFewBytesThatUnfoldToGigabytesAreRefused_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("ten to the tenth values") << fans(10, 10, "\x09");
    QTest::newRow("two to the 63rd values") << fans(63, 2, "\x09");
    QTest::newRow("one text sixty thousand times") << binary(
        {counted('\x5F', 50'000) + QByteArray(50'000, 'x'), array(QList<int>(60'000, 0))}, {.root = 1});
}

void tst_Gatekeeper::aFewBytesThatUnfoldToGigabytesAreRefused() {
    QFETCH(const QByteArray, bytes);
    QVERIFY(!passesGatekeeper(bytes));
}

void tst_Gatekeeper::everyBeginningOfAListIsRefused_data() {
    QTest::addColumn<QByteArray>("whole");
    QTest::newRow("XML") << smallXml;
    QTest::newRow("binary") << smallBinary();
}

void tst_Gatekeeper::everyBeginningOfAListIsRefused() {
    QFETCH(const QByteArray, whole);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        QVERIFY2(!readPropertyList(whole.first(length), largestPropertyListFile),
                 qPrintable(QString::number(length)));
    }
    QVERIFY(readPropertyList(whole, largestPropertyListFile));
}

void tst_Gatekeeper::noFlippedBitDoesHarm_data() {
    everyBeginningOfAListIsRefused_data();
}

void tst_Gatekeeper::noFlippedBitDoesHarm() {
    QFETCH(const QByteArray, whole);
    breakEveryBitOf(whole);
}

void tst_Gatekeeper::whatCostsTheParserMostIsRead_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("keys that collide") << dictionaryOf(collidingKeys(14'142));
    QTest::newRow("entities") << textOf(20'000, 1'280'000);
    QTest::newRow("entities in many texts")
        << plist("<array>" + repeated("<string>" + repeated("&amp;", 600) + "</string>", 5'500) + "</array>");
    QTest::newRow("many values") << plist("<array>" + repeated("<true/>", 200'000) + "</array>");
    QTest::newRow("keys that repeat") << dictionaryOf(repeatedKeys(7'000, 7'142));
}

void tst_Gatekeeper::whatCostsTheParserMostIsRead() {
    QFETCH(const QByteArray, bytes);
    QVERIFY(readPropertyList(bytes, largestPropertyListFile));
}

QTEST_APPLESS_MAIN(tst_Gatekeeper)
#include "tst_Gatekeeper.moc"
