#include "rig/ControlArchive.h"

#include "plist/PropertyList.h"

#include <QTest>

namespace {

// The keyed archive of a one-element array that holds the text 128, as another writer of property lists
// lays it out.
const QByteArray archiveOf128 =
    QByteArray::fromHex("62706c6973743030"                                   // "bplist00"
                        "d40102030405061518"                                 // 0: a dictionary of four keys
                        "59246172636869766572"                               // 1: "$archiver"
                        "58246f626a65637473"                                 // 2: "$objects"
                        "5424746f70"                                         // 3: "$top"
                        "582476657273696f6e"                                 // 4: "$version"
                        "5f100f4e534b657965644172636869766572"               // 5: "NSKeyedArchiver"
                        "a407080e0f"                                         // 6: $objects
                        "55246e756c6c"                                       // 7: "$null"
                        "d2090a0b0c"                                         // 8: the array
                        "5624636c617373"                                     // 9: "$class"
                        "5a4e532e6f626a65637473"                             // 10: "NS.objects"
                        "8003"                                               // 11: UID 3
                        "a10d"                                               // 12: its elements
                        "8002"                                               // 13: UID 2
                        "53313238"                                           // 14: "128"
                        "d210111213"                                         // 15: the class
                        "5824636c6173736573"                                 // 16: "$classes"
                        "5a24636c6173736e616d65"                             // 17: "$classname"
                        "a21314"                                             // 18: its names
                        "574e534172726179"                                   // 19: "NSArray"
                        "584e534f626a656374"                                 // 20: "NSObject"
                        "d11617"                                             // 21: $top
                        "54726f6f74"                                         // 22: "root"
                        "8001"                                               // 23: UID 1
                        "12000186a0"                                         // 24: $version 100000
                        "08111b24293244494f545b66686a6c70757e898c949da0a5a7" // where each of them begins
                        "000000000000"                                       // unused
                        "0101"               // one byte per place and per reference
                        "0000000000000019"   // 25 objects
                        "0000000000000000"   // the root is object 0
                        "00000000000000ac"); // the places begin at 172

QVariant uid(quint32 index) {
    return QVariant::fromValue(PropertyListUid{index});
}

const QVariantMap arrayClass{{"$classname", "NSArray"}, {"$classes", QVariantList{"NSArray", "NSObject"}}};

QVariantMap arrayOf(const QVariantList& elements) {
    return {{"NS.objects", elements}, {"$class", uid(3)}};
}

QVariantMap archiveOf(const QVariantList& objects, const QVariant& root = uid(1)) {
    return {{"$archiver", "NSKeyedArchiver"},
            {"$version", qlonglong{100000}},
            {"$top", QVariantMap{{"root", root}}},
            {"$objects", objects}};
}

// An archive of an array of one element.
QVariantMap archiveOfElement(const QVariant& element) {
    return archiveOf({"$null", arrayOf({uid(2)}), element, arrayClass});
}

QVariantMap with(QVariantMap archive, const QString& key, const QVariant& value) {
    archive[key] = value;
    return archive;
}

QVariantMap without(QVariantMap archive, const QString& key) {
    archive.remove(key);
    return archive;
}

} // namespace

class tst_ControlArchive : public QObject {
    Q_OBJECT

private slots:
    void aLevelIsArchivedAsAnArrayOfItsText_data();
    void aLevelIsArchivedAsAnArrayOfItsText();
    void anArchiveIsABinaryPropertyList();
    void anArchiveOfAnotherWriterIsRead();
    void anArchiveInXmlIsRead();
    void theFirstElementIsReadAsAnInteger_data();
    void theFirstElementIsReadAsAnInteger();
    void onlyTheFirstElementCounts();
    void anArrayThatCanChangeIsAnArrayToo();
    void whatIsNoArchiveOfAnArrayOfTextReadsAsNothing_data();
    void whatIsNoArchiveOfAnArrayOfTextReadsAsNothing();
    void hostileBytesReadAsNothing_data();
    void hostileBytesReadAsNothing();
    void anArchiveCutShortReadsAsNothing();
    void aDamagedByteDoesNoHarm();
};

void tst_ControlArchive::aLevelIsArchivedAsAnArrayOfItsText_data() {
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("text");

    QTest::newRow("0") << 0 << "0";
    QTest::newRow("128") << 128 << "128";
    QTest::newRow("65535") << 65535 << "65535";
    QTest::newRow("a level beyond the sign") << -7 << "-7";
}

void tst_ControlArchive::aLevelIsArchivedAsAnArrayOfItsText() {
    QFETCH(const int, level);
    QFETCH(const QString, text);
    const auto archive = readPropertyList(archiveLevel(level), 65536);
    QVERIFY(archive);
    QCOMPARE(archive->toMap(), archiveOfElement(text));
    QCOMPARE(unarchiveLevel(archiveLevel(level)), std::optional(level));
}

void tst_ControlArchive::anArchiveIsABinaryPropertyList() {
    QCOMPARE(archiveLevel(128).first(8), QByteArray("bplist00"));
}

void tst_ControlArchive::anArchiveOfAnotherWriterIsRead() {
    QCOMPARE(unarchiveLevel(archiveOf128), std::optional(128));
}

void tst_ControlArchive::anArchiveInXmlIsRead() {
    const QByteArray xml = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
<key>$archiver</key><string>NSKeyedArchiver</string>
<key>$version</key><integer>100000</integer>
<key>$top</key><dict><key>root</key><dict><key>CF$UID</key><integer>1</integer></dict></dict>
<key>$objects</key><array>
<string>$null</string>
<dict><key>NS.objects</key><array><dict><key>CF$UID</key><integer>2</integer></dict></array>
<key>$class</key><dict><key>CF$UID</key><integer>3</integer></dict></dict>
<string>77</string>
<dict><key>$classname</key><string>NSArray</string>
<key>$classes</key><array><string>NSArray</string><string>NSObject</string></array></dict>
</array></dict></plist>)";
    QCOMPARE(unarchiveLevel(xml), std::optional(77));
}

void tst_ControlArchive::theFirstElementIsReadAsAnInteger_data() {
    QTest::addColumn<QVariant>("element");
    QTest::addColumn<int>("level");

    QTest::newRow("text") << QVariant("128") << 128;
    QTest::newRow("text that begins with a number") << QVariant("5abc") << 5;
    QTest::newRow("text without a number") << QVariant("abc") << 0;
    QTest::newRow("empty text") << QVariant(QString("")) << 0;
    QTest::newRow("negative text") << QVariant("-3") << -3;
    QTest::newRow("text beyond 32 bits") << QVariant("99999999999999999999") << 2147483647;
    QTest::newRow("integer") << QVariant(qlonglong{200}) << 200;
    QTest::newRow("real") << QVariant(12.9) << 12;
}

void tst_ControlArchive::theFirstElementIsReadAsAnInteger() {
    QFETCH(const QVariant, element);
    QFETCH(const int, level);
    QCOMPARE(unarchiveLevel(writeBinaryPropertyList(archiveOfElement(element))), std::optional(level));
}

void tst_ControlArchive::onlyTheFirstElementCounts() {
    const QVariantMap archive =
        archiveOf({"$null", arrayOf({uid(4), uid(2), uid(99)}), "5", arrayClass, "6"});
    QCOMPARE(unarchiveLevel(writeBinaryPropertyList(archive)), std::optional(6));
}

void tst_ControlArchive::anArrayThatCanChangeIsAnArrayToo() {
    const QVariantMap mutableClass{{"$classname", "NSMutableArray"},
                                   {"$classes", QVariantList{"NSMutableArray", "NSArray", "NSObject"}}};
    const QVariantMap archive = archiveOf({"$null", arrayOf({uid(2)}), "9", mutableClass});
    QCOMPARE(unarchiveLevel(writeBinaryPropertyList(archive)), std::optional(9));
}

void tst_ControlArchive::whatIsNoArchiveOfAnArrayOfTextReadsAsNothing_data() {
    QTest::addColumn<QVariant>("list");

    const QVariantMap good = archiveOfElement("128");
    QTest::newRow("a string") << QVariant("128");
    QTest::newRow("an integer") << QVariant(qlonglong{128});
    QTest::newRow("an array") << QVariant(QVariantList{"128"});
    QTest::newRow("an empty dictionary") << QVariant(QVariantMap());
    QTest::newRow("no archiver") << QVariant(without(good, "$archiver"));
    QTest::newRow("another archiver") << QVariant(with(good, "$archiver", "Archiver"));
    QTest::newRow("an archiver that is a number") << QVariant(with(good, "$archiver", qlonglong{1}));
    QTest::newRow("no top") << QVariant(without(good, "$top"));
    QTest::newRow("a top that is an array") << QVariant(with(good, "$top", QVariantList{uid(1)}));
    QTest::newRow("a top without a root") << QVariant(with(good, "$top", QVariantMap()));
    QTest::newRow("no objects") << QVariant(without(good, "$objects"));
    QTest::newRow("objects that are a dictionary") << QVariant(with(good, "$objects", QVariantMap()));
    QTest::newRow("empty objects") << QVariant(with(good, "$objects", QVariantList()));

    const QVariantList objects = good.value("$objects").toList();
    QTest::newRow("a root that is no reference") << QVariant(archiveOf(objects, qlonglong{1}));
    QTest::newRow("a root just outside") << QVariant(archiveOf(objects, uid(4)));
    QTest::newRow("a root far outside") << QVariant(archiveOf(objects, uid(4294967295)));
    QTest::newRow("a root that is $null") << QVariant(archiveOf(objects, uid(0)));
    QTest::newRow("a root that is a text") << QVariant(archiveOf(objects, uid(2)));
    QTest::newRow("a root that is a class") << QVariant(archiveOf(objects, uid(3)));

    const auto rootIs = [](const QVariant& root) {
        return QVariant(archiveOf({"$null", root, "128", arrayClass}));
    };
    QTest::newRow("an empty array") << rootIs(arrayOf({}));
    QTest::newRow("elements that are a text") << rootIs(with(arrayOf({}), "NS.objects", "128"));
    QTest::newRow("an element that is no reference") << rootIs(arrayOf({"128"}));
    QTest::newRow("an element outside") << rootIs(arrayOf({uid(4)}));
    QTest::newRow("an element far outside") << rootIs(arrayOf({uid(4294967295)}));
    QTest::newRow("an element that is $null") << rootIs(arrayOf({uid(0)}));
    QTest::newRow("an element that is the array itself") << rootIs(arrayOf({uid(1)}));
    QTest::newRow("no class") << rootIs(without(arrayOf({uid(2)}), "$class"));
    QTest::newRow("a class outside") << rootIs(with(arrayOf({uid(2)}), "$class", uid(9)));
    QTest::newRow("a class that is the array itself") << rootIs(with(arrayOf({uid(2)}), "$class", uid(1)));
    QTest::newRow("a class that is a text") << rootIs(with(arrayOf({uid(2)}), "$class", "NSArray"));

    QTest::newRow("another class") << QVariant(archiveOf(
        {"$null", arrayOf({uid(2)}), "128", QVariantMap{{"$classes", QVariantList{"NSSet", "NSObject"}}}}));
    QTest::newRow("an element that is a dictionary") << QVariant(archiveOfElement(QVariantMap()));
    QTest::newRow("an element that is an array") << QVariant(archiveOfElement(QVariantList{"128"}));
    QTest::newRow("an element that is data") << QVariant(archiveOfElement(QByteArray("128")));
    QTest::newRow("an element that leads on") << QVariant(archiveOfElement(uid(2)));
}

void tst_ControlArchive::whatIsNoArchiveOfAnArrayOfTextReadsAsNothing() {
    QFETCH(const QVariant, list);
    QCOMPARE(unarchiveLevel(writeBinaryPropertyList(list)), std::nullopt);
    QCOMPARE(unarchiveLevel(writeXmlPropertyList(list)), std::nullopt);
}

void tst_ControlArchive::hostileBytesReadAsNothing_data() {
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("plain text") << QByteArray("128");
    QTest::newRow("the first bytes alone") << QByteArray("bplist00");
    QTest::newRow("first bytes and zeros") << "bplist00" + QByteArray(64, '\0');
    QTest::newRow("ones") << QByteArray(256, '\xFF');
    // $objects is a list that holds itself.
    QByteArray cycle = archiveOf128;
    cycle.replace(QByteArray::fromHex("a407080e0f"), QByteArray::fromHex("a406080e0f"));
    QTest::newRow("a list that holds itself") << cycle;
    QByteArray outside = archiveOf128;
    outside.replace(QByteArray::fromHex("a407080e0f"), QByteArray::fromHex("a4fe080e0f"));
    QTest::newRow("a list that holds what is not there") << outside;
    QTest::newRow("more than 64 KiB") << writeBinaryPropertyList(
        with(archiveOfElement("128"), "more", QByteArray(qsizetype{64} * 1024, 'x')));
}

void tst_ControlArchive::hostileBytesReadAsNothing() {
    QFETCH(const QByteArray, bytes);
    QVERIFY(bytes != archiveOf128);
    QCOMPARE(unarchiveLevel(bytes), std::nullopt);
}

void tst_ControlArchive::anArchiveCutShortReadsAsNothing() {
    for (qsizetype length = 0; length < archiveOf128.size(); ++length) {
        QCOMPARE(unarchiveLevel(archiveOf128.first(length)), std::nullopt);
    }
}

// Whatever it reads as: reading it stays inside memory, which the sanitizers watch, and comes to an end.
void tst_ControlArchive::aDamagedByteDoesNoHarm() {
    int unread = 0;
    for (qsizetype at = 0; at < archiveOf128.size(); ++at) {
        for (int damage = 1; damage < 256; damage += 2) {
            QByteArray damaged = archiveOf128;
            damaged[at] = static_cast<char>(damaged[at] ^ damage);
            unread += unarchiveLevel(damaged) ? 0 : 1;
        }
    }
    QVERIFY(unread > 20'000); // of 29,312; what is read had its damage in the text or in a class's name
}

QTEST_APPLESS_MAIN(tst_ControlArchive)
#include "tst_ControlArchive.moc"
