#include "plist/DictionaryFile.h"
#include "plist/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

namespace {

const QVariantMap rig{{"configName", "Bühne"}, {"level", 0.5}, {"universe", qlonglong{3}}};

void put(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be opened");
}

} // namespace

class tst_DictionaryFile : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { folder_.reset(); }

    void aDictionaryComesBack();
    void aBinaryFileIsReadToo();
    void aMissingFileReadsAsNothing();
    void anUnreadableFileReadsAsNothing_data();
    void anUnreadableFileReadsAsNothing();
    void anUnreadableFileIsMovedAsideBeforeItIsWrittenOver_data();
    void anUnreadableFileIsMovedAsideBeforeItIsWrittenOver();
    void unreadableFilesOfOneSecondAreAllKept();
    void aFileThatWasReadAndThenDamagedIsMovedAside();
    void aReadableFileIsReplacedAndKeptAsPrevious();
    void theFileBehindALinkIsMovedAside();
    void whatCannotBeReadAgainIsNotWritten_data();
    void whatCannotBeReadAgainIsNotWritten();
    void whatIsNoFileStaysWhereItIs();

private:
    QString at(const QString& name) const { return folder_->filePath(name); }
    QStringList entries() const {
        return QDir(folder_->path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> folder_;
};

void tst_DictionaryFile::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

void tst_DictionaryFile::aDictionaryComesBack() {
    const DictionaryFile file(at("new folder/file.plist"));
    QVERIFY(file.write(rig));
    QCOMPARE(file.read(), std::optional(rig));
    QVERIFY(contentOf(file.path()).startsWith("<?xml "));
}

void tst_DictionaryFile::aBinaryFileIsReadToo() {
    put(at("file.plist"), writeBinaryPropertyList(rig));
    QCOMPARE(DictionaryFile(at("file.plist")).read(), std::optional(rig));
}

void tst_DictionaryFile::aMissingFileReadsAsNothing() {
    QCOMPARE(DictionaryFile(at("file.plist")).read(), std::nullopt);
}

void tst_DictionaryFile::anUnreadableFileReadsAsNothing_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("something else") << QByteArray("views = ();");
    QTest::newRow("cut off") << writeXmlPropertyList(rig).chopped(10);
    QTest::newRow("an array") << writeXmlPropertyList(QVariantList{1});
    QTest::newRow("a text") << writeBinaryPropertyList("rig");
    QTest::newRow("larger than 16 MiB")
        << "<plist><dict></dict></plist>" + QByteArray(16 * 1024 * 1024 - 27, ' ');
}

void tst_DictionaryFile::anUnreadableFileReadsAsNothing() {
    QFETCH(const QByteArray, bytes);
    put(at("file.plist"), bytes);
    QCOMPARE(DictionaryFile(at("file.plist")).read(), std::nullopt);
}

void tst_DictionaryFile::anUnreadableFileIsMovedAsideBeforeItIsWrittenOver_data() {
    anUnreadableFileReadsAsNothing_data();
}

void tst_DictionaryFile::anUnreadableFileIsMovedAsideBeforeItIsWrittenOver() {
    QFETCH(const QByteArray, bytes);
    put(at("file.plist"), bytes);
    const DictionaryFile file(at("file.plist"));
    QVERIFY(file.write(rig));
    QCOMPARE(file.read(), std::optional(rig));
    QCOMPARE(entries().size(), 2);
    QCOMPARE(entries().constFirst(), QStringLiteral("file.plist"));
    const QString aside = entries().constLast();
    static const QRegularExpression pattern("^file\\.plist\\.unreadable-20[0-9]{6}-[0-9]{6}$");
    QVERIFY2(pattern.match(aside).hasMatch(), qPrintable(aside));
    QVERIFY(contentOf(at(aside)) == bytes);
}

void tst_DictionaryFile::unreadableFilesOfOneSecondAreAllKept() {
    const DictionaryFile file(at("file.plist"));
    const QByteArrayList broken{"one", "two", "three"};
    for (const QByteArray& bytes : broken) {
        put(at("file.plist"), bytes);
        QVERIFY(file.write(rig));
    }
    QStringList names = entries();
    QCOMPARE(names.takeFirst(), QStringLiteral("file.plist"));
    QByteArrayList kept;
    for (const QString& name : names) {
        kept.append(contentOf(at(name)));
    }
    std::sort(kept.begin(), kept.end());
    QCOMPARE(kept, (QByteArrayList{"one", "three", "two"}));
}

void tst_DictionaryFile::aFileThatWasReadAndThenDamagedIsMovedAside() {
    put(at("file.plist"), writeXmlPropertyList(QVariantMap{{"old", true}}));
    const DictionaryFile file(at("file.plist"));
    QVERIFY(file.read());
    put(at("file.plist"), "damaged");
    QVERIFY(file.write(rig));
    QCOMPARE(file.read(), std::optional(rig));
    QCOMPARE(entries().size(), 2);
    QCOMPARE(contentOf(at(entries().constLast())), QByteArray("damaged"));
}

void tst_DictionaryFile::aReadableFileIsReplacedAndKeptAsPrevious() {
    const DictionaryFile file(at("file.plist"));
    QVERIFY(file.write({{"old", true}}));
    QVERIFY(file.write(rig));
    QCOMPARE(file.read(), std::optional(rig));
    QCOMPARE(entries(), (QStringList{"file.plist", "file.plist.previous"}));
    QCOMPARE(DictionaryFile(at("file.plist.previous")).read(), (QVariantMap{{"old", true}}));
}

void tst_DictionaryFile::theFileBehindALinkIsMovedAside() {
    put(at("real"), "broken");
    QVERIFY(QFile::link("real", at("file.plist")));
    const DictionaryFile file(at("file.plist"));
    QVERIFY(file.write(rig));
    QCOMPARE(entries().size(), 3);
    QVERIFY(QFileInfo(at("file.plist")).isSymLink());
    QCOMPARE(DictionaryFile(at("real")).read(), std::optional(rig));
    QCOMPARE(contentOf(at(entries().constLast())), QByteArray("broken"));
}

void tst_DictionaryFile::whatCannotBeReadAgainIsNotWritten_data() {
    QTest::addColumn<QVariantMap>("dictionary");
    QVariantMap manyKeys;
    for (int key = 0; key <= 14'142; ++key) {
        manyKeys.insert(QString::number(key), true);
    }
    QTest::newRow("a value without a type") << QVariantMap{{"views", QVariant()}};
    QTest::newRow("too many keys") << manyKeys;
    QTest::newRow("too many bytes") << QVariantMap{{"text", QString(17'000'000, u'x')}};
}

void tst_DictionaryFile::whatCannotBeReadAgainIsNotWritten() {
    QFETCH(const QVariantMap, dictionary);
    put(at("file.plist"), "broken");
    QVERIFY(!DictionaryFile(at("file.plist")).write(dictionary));
    QCOMPARE(entries(), QStringList{"file.plist"});
    QCOMPARE(contentOf(at("file.plist")), QByteArray("broken"));
}

void tst_DictionaryFile::whatIsNoFileStaysWhereItIs() {
    QCOMPARE(mkfifo(QFile::encodeName(at("pipe")).constData(), 0600), 0);
    QVERIFY(QDir().mkpath(at("folder")));
    QVERIFY(!DictionaryFile(at("pipe")).write(rig));
    QVERIFY(!DictionaryFile(at("folder")).write(rig));
    QCOMPARE(entries(), (QStringList{"folder", "pipe"}));
}

QTEST_APPLESS_MAIN(tst_DictionaryFile)
#include "tst_DictionaryFile.moc"
