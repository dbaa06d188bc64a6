#include "console/Resources.h"

#include "plist/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

void put(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

class tst_Resources : public QObject {
    Q_OBJECT

private slots:
    void theFolderAskedForIsTaken();
    void elseTheOneBesideTheProgram();
    void aTableIsReadByItsName_data();
    void aTableIsReadByItsName();
    void whatIsNoTableReadsAsNothing_data();
    void whatIsNoTableReadsAsNothing();
    void aMissingTableReadsAsNothing();
};

void tst_Resources::theFolderAskedForIsTaken() {
    const QTemporaryDir program;
    QVERIFY(QDir(program.path()).mkdir("resources"));
    QCOMPARE(resourceFolder("/srv/rig", program.path()), QString("/srv/rig"));
    QCOMPARE(resourceFolder("no such folder", program.path()), QString("no such folder"));
    QCOMPARE(resourceFolder("", program.path()), QString(""));
}

void tst_Resources::elseTheOneBesideTheProgram() {
    const QTemporaryDir program;
    QCOMPARE(resourceFolder({}, program.path()), program.path() + "/../share/faderhall");
    QVERIFY(QDir(program.path()).mkdir("resources"));
    QCOMPARE(resourceFolder({}, program.path()), program.path() + "/resources");
}

void tst_Resources::aTableIsReadByItsName_data() {
    QTest::addColumn<QByteArray>("bytes");

    const QVariantMap table{{"Dimmer", QVariantList{QVariantMap{{"name", "Level"}}}}};
    QTest::newRow("XML") << writeXmlPropertyList(table);
    QTest::newRow("binary") << writeBinaryPropertyList(table);
}

void tst_Resources::aTableIsReadByItsName() {
    QFETCH(const QByteArray, bytes);

    const QTemporaryDir folder;
    put(folder.filePath("profiles.plist"), bytes);
    const QVariantMap table{{"Dimmer", QVariantList{QVariantMap{{"name", "Level"}}}}};
    QCOMPARE(readResource(folder.path(), "profiles"), std::optional(table));
    QVERIFY(!readResource(folder.path(), "configurations"));
    QVERIFY(!readResource(folder.path(), "profiles.plist"));
}

void tst_Resources::whatIsNoTableReadsAsNothing_data() {
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("text") << QByteArray("profiles");
    QTest::newRow("an array") << writeXmlPropertyList(QVariantList{"Dimmer"});
    QTest::newRow("cut off") << writeXmlPropertyList(QVariantMap{{"Dimmer", "x"}}).chopped(20);
}

void tst_Resources::whatIsNoTableReadsAsNothing() {
    QFETCH(const QByteArray, bytes);

    const QTemporaryDir folder;
    put(folder.filePath("profiles.plist"), bytes);
    QVERIFY(!readResource(folder.path(), "profiles"));
}

void tst_Resources::aMissingTableReadsAsNothing() {
    const QTemporaryDir folder;
    QVERIFY(!readResource(folder.path(), "profiles"));
    QVERIFY(!readResource(folder.filePath("no such folder"), "profiles"));
    QVERIFY(QDir(folder.path()).mkdir("profiles.plist"));
    QVERIFY(!readResource(folder.path(), "profiles"));
}

QTEST_GUILESS_MAIN(tst_Resources)
#include "tst_Resources.moc"
