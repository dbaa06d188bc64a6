#include "check/RigFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_RigFile : public QObject {
    Q_OBJECT

private slots:
    void aFileIsToldByWhatItHolds_data();
    void aFileIsToldByWhatItHolds();
    void aFileThatIsNotThereIsMissing();
    void aFolderIsNotLookedAt();

private:
    QTemporaryDir folder_;
};

void tst_RigFile::aFileIsToldByWhatItHolds_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("reason");

    const QString damage = "is no property list, or a damaged one";
    QTest::newRow("a dictionary") << QByteArray("<plist><dict><key>a</key><string>b</string></dict></plist>")
                                  << int{RigFile::Read} << QString();
    QTest::newRow("an array") << QByteArray("<plist><array/></plist>") << int{RigFile::Damaged}
                              << "is a property list without a dictionary at its root";
    QTest::newRow("cut off") << QByteArray("<plist><dict>") << int{RigFile::Damaged} << damage;
    QTest::newRow("another format") << QByteArray("{\"a\": 1}") << int{RigFile::Damaged} << damage;
    QTest::newRow("nothing") << QByteArray() << int{RigFile::Damaged} << damage;
    QTest::newRow("too large") << QByteArray(16 * 1024 * 1024 + 1, ' ') << int{RigFile::Damaged}
                               << "is larger than 16 MiB";
}

void tst_RigFile::aFileIsToldByWhatItHolds() {
    QFETCH(const QByteArray, content);
    QFETCH(const int, state);
    QFETCH(const QString, reason);

    const QString path = folder_.filePath("rig.plist");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    file.close();
    const RigFile found = readRigFile(path);
    QCOMPARE(int{found.state}, state);
    QCOMPARE(found.reason, reason);
    QCOMPARE(found.dictionary,
             state == RigFile::Read ? std::optional(QVariantMap{{"a", "b"}}) : std::nullopt);
}

void tst_RigFile::aFileThatIsNotThereIsMissing() {
    QCOMPARE(readRigFile(folder_.filePath("nothing")).state, RigFile::Missing);
    QFile file(folder_.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(readRigFile(folder_.filePath("file/below")).state, RigFile::Missing);
}

void tst_RigFile::aFolderIsNotLookedAt() {
    const RigFile found = readRigFile(folder_.path());
    QCOMPARE(found.state, RigFile::NotLookedAt);
    QCOMPARE(found.reason, QString("It is no file"));
}

QTEST_APPLESS_MAIN(tst_RigFile)
#include "tst_RigFile.moc"
