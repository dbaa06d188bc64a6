#include "settings/SettingsFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QByteArray rig =
    "<plist version=\"1.0\"><dict>"
    "<key>views</key><array><dict><key>name</key><string>Wash 1</string>"
    "<key>address</key><string>17</string><key>universe</key><integer>2</integer></dict></array>"
    "<key>cues</key><dict><key>2.5</key><string>cue data goes here</string></dict>"
    "<key>written by nobody here</key><dict><key>on</key><true/>"
    "<key>ratio</key><real>3</real><key>since</key><date>2024-02-29T12:00:00Z</date>"
    "<key>blob</key><data>AAEC</data></dict></dict></plist>";

void put(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

class tst_SettingsFile : public QObject {
    Q_OBJECT

private slots:
    void theFileLiesInTheHomeFolder();
    void aRigIsRead();
    void aMissingFileReadsAsNothing();
    void aRootThatIsNoDictionaryReadsAsNothing();
    void whatIsNotUnderstoodIsWrittenBackAsTheTypeItWas();
    void theFolderIsMadeWhenItIsMissing();
    void aDamagedRigIsNotWrittenOver();

private:
    QTemporaryDir folder_;
    QString path_ = folder_.filePath(QStringLiteral("rig.plist"));
};

void tst_SettingsFile::theFileLiesInTheHomeFolder() {
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", "/home/light desk");
    const QString path = SettingsFile::defaultPath();
    qputenv("HOME", home);
    QCOMPARE(path, QStringLiteral("/home/light desk/Library/Application Support/"
                                  "com.KTQ.OrvaneApplications/Faderhall.plist"));
}

void tst_SettingsFile::aRigIsRead() {
    put(path_, rig);
    const std::optional<QVariantMap> settings = SettingsFile(path_).read();
    QVERIFY(settings);
    QCOMPARE(settings->keys(), (QStringList{"cues", "views", "written by nobody here"}));
    const QVariantMap placement = settings->value("views").toList().constFirst().toMap();
    QCOMPARE(placement, (QVariantMap{{"name", "Wash 1"}, {"address", "17"}, {"universe", qlonglong{2}}}));
}

void tst_SettingsFile::aMissingFileReadsAsNothing() {
    QCOMPARE(SettingsFile(folder_.filePath("none/rig.plist")).read(), std::nullopt);
}

void tst_SettingsFile::aRootThatIsNoDictionaryReadsAsNothing() {
    put(path_, "<plist><array><dict></dict></array></plist>");
    QCOMPARE(SettingsFile(path_).read(), std::nullopt);
}

void tst_SettingsFile::whatIsNotUnderstoodIsWrittenBackAsTheTypeItWas() {
    put(path_, rig);
    const SettingsFile file(path_);
    QVERIFY(file.write(file.read().value_or(QVariantMap())));
    QFile written(path_);
    QVERIFY(written.open(QIODevice::ReadOnly));
    const QByteArray bytes = written.readAll().replace("\n", "").replace("\t", "");
    for (const char* element :
         {"<key>on</key><true/>", "<key>ratio</key><real>3</real>",
          "<key>since</key><date>2024-02-29T12:00:00Z</date>", "<key>blob</key><data>AAEC</data>",
          "<key>address</key><string>17</string>", "<key>universe</key><integer>2</integer>"}) {
        QVERIFY2(bytes.contains(element), element);
    }
}

void tst_SettingsFile::theFolderIsMadeWhenItIsMissing() {
    const SettingsFile file(folder_.filePath("Library/Application Support/x/Faderhall.plist"));
    QVERIFY(file.write({{"cues", QVariantMap()}}));
    QCOMPARE(file.read(), std::optional(QVariantMap{{"cues", QVariantMap()}}));
}

void tst_SettingsFile::aDamagedRigIsNotWrittenOver() {
    put(path_, rig.chopped(1));
    const SettingsFile file(path_);
    QVERIFY(file.write({{"cues", QVariantMap()}}));
    const QStringList aside = QDir(folder_.path()).entryList({"rig.plist.unreadable-*"});
    QCOMPARE(aside.size(), 1);
    QFile kept(folder_.filePath(aside.constFirst()));
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), rig.chopped(1));
}

QTEST_APPLESS_MAIN(tst_SettingsFile)
#include "tst_SettingsFile.moc"
