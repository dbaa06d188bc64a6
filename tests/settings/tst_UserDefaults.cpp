#include "settings/UserDefaults.h"

#include "support/StoppedDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSize>
#include <QTemporaryDir>
#include <QTest>

namespace {

void put(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QVariantMap stored(const QString& path) {
    return DictionaryFile(path).read().value_or(QVariantMap());
}

} // namespace

class tst_UserDefaults : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { folder_.reset(); }

    void theFileLiesInTheConfigurationFolder();
    void aMissingKeyHasNoValue();
    void aValueIsThereAtOnceAndInTheNextRun();
    void anyCharacterInAKeySurvives();
    void keysThatNobodyAsksForKeepTheirTypes();
    void theFileIsWrittenSoonAfterAChange();
    void anUnchangedValueWritesNothing_data();
    void anUnchangedValueWritesNothing();
    void anotherTypeIsAChange();
    void anInvalidValueTakesTheKeyAway();
    void aValueWithoutAPropertyListTypeChangesNothing_data();
    void aValueWithoutAPropertyListTypeChangesNothing();
    void nothingIsWrittenWithoutAChange();
    void whatCouldNotBeWrittenIsWrittenLater();
    void aDamagedFileIsKeptAside();
    void aSlowDiskHoldsNobodyUp();
    void whatIsChangedDuringAWritingIsWrittenAfterIt();
    void whatIsChangedDuringAWritingIsWrittenByTheNextCall();
    void afterAWritingThereIsNothingLeftToWrite();
    void whatTheThreadCouldNotWriteIsWrittenLater_data();
    void whatTheThreadCouldNotWriteIsWrittenLater();
    void aCallTellsWhenTheWritingFailsAgain();
    void theEndWaitsForWhatIsBeingWritten();

private:
    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
};

void tst_UserDefaults::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
    path_ = folder_->filePath("defaults.plist");
}

void tst_UserDefaults::theFileLiesInTheConfigurationFolder() {
    const QByteArray home = qgetenv("HOME");
    const QByteArray configuration = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", "/home/light desk");
    qputenv("XDG_CONFIG_HOME", "/etc/elsewhere");
    const QString named = UserDefaults::defaultPath();
    qunsetenv("XDG_CONFIG_HOME");
    const QString unnamed = UserDefaults::defaultPath();
    qputenv("HOME", home);
    qputenv("XDG_CONFIG_HOME", configuration);
    QCOMPARE(named, QStringLiteral("/etc/elsewhere/com.KTQ.OrvaneApplications/Faderhall.plist"));
    QCOMPARE(unnamed, QStringLiteral("/home/light desk/.config/com.KTQ.OrvaneApplications/Faderhall.plist"));
}

void tst_UserDefaults::aMissingKeyHasNoValue() {
    QVERIFY(!UserDefaults(path_).objectForKey("tx_address").isValid());
}

void tst_UserDefaults::aValueIsThereAtOnceAndInTheNextRun() {
    UserDefaults defaults(path_);
    defaults.setObject("10.0.0.255", "tx_address");
    defaults.setObject(QVariantList(), "control_selections");
    QCOMPARE(defaults.objectForKey("tx_address"), QVariant("10.0.0.255"));
    QVERIFY(defaults.synchronize());
    const UserDefaults next(path_);
    QCOMPARE(next.objectForKey("tx_address"), QVariant("10.0.0.255"));
    QCOMPARE(next.objectForKey("control_selections"), QVariant(QVariantList()));
}

void tst_UserDefaults::anyCharacterInAKeySurvives() {
    const QString key = QString::fromUtf8("saved_state: a/b\\c=%41;[x]\n\t<Bühne & \U0001F4A1>\u0001 ");
    UserDefaults defaults(path_);
    defaults.setObject(7, key);
    QVERIFY(defaults.synchronize());
    QCOMPARE(UserDefaults(path_).objectForKey(key), QVariant(qlonglong{7}));
}

void tst_UserDefaults::keysThatNobodyAsksForKeepTheirTypes() {
    put(path_, "<plist><dict><key>a</key><true/><key>b</key><real>1</real><key>c</key><integer>1</integer>"
               "<key>d</key><string>1</string></dict></plist>");
    UserDefaults defaults(path_);
    defaults.setObject("new", "e");
    QVERIFY(defaults.synchronize());
    const QVariantMap values = stored(path_);
    QCOMPARE(values.keys(), (QStringList{"a", "b", "c", "d", "e"}));
    QCOMPARE(values.value("a").typeId(), static_cast<int>(QMetaType::Bool));
    QCOMPARE(values.value("b").typeId(), static_cast<int>(QMetaType::Double));
    QCOMPARE(values.value("c").typeId(), static_cast<int>(QMetaType::LongLong));
    QCOMPARE(values.value("d").typeId(), static_cast<int>(QMetaType::QString));
}

void tst_UserDefaults::theFileIsWrittenSoonAfterAChange() {
    UserDefaults defaults(path_);
    defaults.setObject(1, "first");
    defaults.setObject(2, "second");
    QVERIFY(!QFileInfo::exists(path_));
    QTRY_VERIFY(QFileInfo::exists(path_));
    QCOMPARE(stored(path_), (QVariantMap{{"first", qlonglong{1}}, {"second", qlonglong{2}}}));
}

void tst_UserDefaults::anUnchangedValueWritesNothing_data() {
    QTest::addColumn<QVariant>("value");
    QTest::newRow("the same") << QVariant(qlonglong{1});
    QTest::newRow("the same as an int") << QVariant(1);
}

void tst_UserDefaults::anUnchangedValueWritesNothing() {
    QFETCH(const QVariant, value);
    put(path_, "<plist><dict><key>a</key><integer>1</integer></dict></plist>");
    UserDefaults defaults(path_);
    QVERIFY(QFile::remove(path_));
    defaults.setObject(value, "a");
    defaults.setObject(QVariant(), "b");
    QVERIFY(defaults.synchronize());
    QVERIFY(!QFileInfo::exists(path_));
}

void tst_UserDefaults::anotherTypeIsAChange() {
    put(path_, "<plist><dict><key>a</key><array><integer>1</integer></array></dict></plist>");
    UserDefaults defaults(path_);
    defaults.setObject(QVariantList{1.0}, "a");
    QVERIFY(defaults.synchronize());
    QCOMPARE(stored(path_).value("a").toList().constFirst().typeId(), static_cast<int>(QMetaType::Double));
}

void tst_UserDefaults::anInvalidValueTakesTheKeyAway() {
    put(path_, "<plist><dict><key>a</key><true/><key>b</key><true/></dict></plist>");
    UserDefaults defaults(path_);
    defaults.setObject(QVariant(), "a");
    QVERIFY(defaults.synchronize());
    QCOMPARE(stored(path_), (QVariantMap{{"b", true}}));
}

void tst_UserDefaults::aValueWithoutAPropertyListTypeChangesNothing_data() {
    QTest::addColumn<QVariant>("value");
    QVariant deep = QVariantList();
    for (int level = 1; level < 64; ++level) {
        deep = QVariantList{deep};
    }
    QTest::newRow("a size") << QVariant(QSize(1, 2));
    QTest::newRow("nothing in an array") << QVariant(QVariantList{QVariant()});
    QTest::newRow("too deep for the dictionary around it") << deep;
}

void tst_UserDefaults::aValueWithoutAPropertyListTypeChangesNothing() {
    QFETCH(const QVariant, value);
    UserDefaults defaults(path_);
    defaults.setObject("before", "a");
    defaults.setObject(value, "a");
    QVERIFY(defaults.synchronize());
    QCOMPARE(stored(path_), (QVariantMap{{"a", "before"}}));
}

void tst_UserDefaults::nothingIsWrittenWithoutAChange() {
    put(path_, "broken");
    QVERIFY(UserDefaults(path_).synchronize());
    QCOMPARE(QDir(folder_->path()).entryList(QDir::Files), QStringList{"defaults.plist"});
}

void tst_UserDefaults::whatCouldNotBeWrittenIsWrittenLater() {
    put(folder_->filePath("folder"), "a file is in the way");
    UserDefaults defaults(folder_->filePath("folder/defaults.plist"));
    defaults.setObject(1, "a");
    QVERIFY(!defaults.synchronize());
    QVERIFY(QFile::remove(folder_->filePath("folder")));
    QVERIFY(defaults.synchronize());
    QCOMPARE(stored(folder_->filePath("folder/defaults.plist")), (QVariantMap{{"a", qlonglong{1}}}));
}

void tst_UserDefaults::aDamagedFileIsKeptAside() {
    put(path_, "broken");
    UserDefaults defaults(path_);
    defaults.setObject(1, "a");
    QVERIFY(defaults.synchronize());
    QCOMPARE(stored(path_), (QVariantMap{{"a", qlonglong{1}}}));
    QCOMPARE(QDir(folder_->path()).entryList({"defaults.plist.unreadable-*"}).size(), 1);
}

void tst_UserDefaults::aSlowDiskHoldsNobodyUp() {
    UserDefaults defaults(path_);
    StoppedDisk disk;
    defaults.setObject(1, "a");
    QTRY_VERIFY(disk.isWaitedFor());
    QVERIFY(!QFileInfo::exists(path_));
    disk.letGoOn();
    QTRY_COMPARE(stored(path_), (QVariantMap{{"a", qlonglong{1}}}));
}

void tst_UserDefaults::whatIsChangedDuringAWritingIsWrittenAfterIt() {
    UserDefaults defaults(path_);
    StoppedDisk disk;
    defaults.setObject(1, "a");
    QTRY_VERIFY(disk.isWaitedFor());
    defaults.setObject(2, "a");
    defaults.setObject(3, "b");
    QTest::qWait(700); // the next writing is due, and waits
    disk.letGoOn();
    QTRY_COMPARE(stored(path_), (QVariantMap{{"a", qlonglong{2}}, {"b", qlonglong{3}}}));
    QCOMPARE(stored(path_ + ".previous"), (QVariantMap{{"a", qlonglong{1}}}));
}

void tst_UserDefaults::whatIsChangedDuringAWritingIsWrittenByTheNextCall() {
    UserDefaults defaults(path_);
    StoppedDisk disk;
    defaults.setObject(1, "a");
    QTRY_VERIFY(disk.isWaitedFor());
    defaults.setObject(2, "a");
    disk.letGoOn();
    QVERIFY(defaults.synchronize());
    QCOMPARE(stored(path_), (QVariantMap{{"a", qlonglong{2}}}));
    QCOMPARE(stored(path_ + ".previous"), (QVariantMap{{"a", qlonglong{1}}}));
}

void tst_UserDefaults::afterAWritingThereIsNothingLeftToWrite() {
    UserDefaults defaults(path_);
    defaults.setObject(1, "a");
    QTRY_VERIFY(QFileInfo::exists(path_));
    QVERIFY(defaults.synchronize());
    QVERIFY(!QFileInfo::exists(path_ + ".previous"));
}

void tst_UserDefaults::whatTheThreadCouldNotWriteIsWrittenLater_data() {
    QTest::addColumn<bool>("byCall");
    QTest::newRow("by the next call") << true;
    QTest::newRow("with the next change") << false;
}

void tst_UserDefaults::whatTheThreadCouldNotWriteIsWrittenLater() {
    QFETCH(const bool, byCall);
    UserDefaults defaults(path_);
    StoppedDisk disk;
    defaults.setObject(1, "a");
    QTRY_VERIFY(disk.isWaitedFor());
    disk.fail();
    if (byCall) {
        QVERIFY(defaults.synchronize());
    } else {
        defaults.setObject(2, "b");
        QTRY_VERIFY(QFileInfo::exists(path_));
    }
    QCOMPARE(stored(path_).value("a"), QVariant(qlonglong{1}));
}

void tst_UserDefaults::aCallTellsWhenTheWritingFailsAgain() {
    const QString folder = folder_->filePath("folder");
    UserDefaults defaults(folder + "/defaults.plist");
    StoppedDisk disk;
    defaults.setObject(1, "a");
    QTRY_VERIFY(disk.isWaitedFor());
    disk.fail();
    QTRY_VERIFY(QDir(folder).isEmpty());
    QVERIFY(QDir().rmdir(folder));
    put(folder, "a file is in the way");
    QVERIFY(!defaults.synchronize());
}

void tst_UserDefaults::theEndWaitsForWhatIsBeingWritten() {
    auto defaults = std::make_unique<UserDefaults>(path_);
    StoppedDisk disk;
    defaults->setObject(1, "a");
    QTRY_VERIFY(disk.isWaitedFor());
    disk.letGoOn();
    defaults.reset();
    QCOMPARE(stored(path_), (QVariantMap{{"a", qlonglong{1}}}));
}

QTEST_GUILESS_MAIN(tst_UserDefaults)
#include "tst_UserDefaults.moc"
