#include "settings/RecoveryFile.h"

#include "plist/DictionaryFile.h"
#include "plist/PropertyList.h"
#include "settings/SettingsFile.h"

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

const QVariantMap rig{{"views", QVariantList{QVariantMap{{"name", "Spot"}, {"universe", 3LL}}}},
                      {"cues", QVariantMap{{"1.5", "cue data goes here"}}},
                      {"half", 0.5}};

ShowSnapshot show() {
    return {.settings = rig,
            .configName = "Bühne",
            .currCue = "1.5",
            .levels = {{.key = "Spot.Dimmer", .value = 255}, {.key = "Spot.Pan", .value = 4294967295U}}};
}

} // namespace

class tst_RecoveryFile : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { folder_.reset(); }

    void theFileOfAUserLiesBesideTheSettings();
    void aShowComesBack();
    void aShowWithoutRigAndCueComesBackWithoutThem();
    void theLevelsOfTheLargestRigComeBack();
    void withoutAFileThereIsNothing();
    void theShowOfARunThatHadNoSettingsFileComesBack();
    void afterTheSettingsHaveChangedItIsMovedAside_data();
    void afterTheSettingsHaveChangedItIsMovedAside();
    void whatCannotBeReadIsMovedAside_data();
    void whatCannotBeReadIsMovedAside();
    void aFileWhoseSettingsCannotBeReadIsMovedAside_data();
    void aFileWhoseSettingsCannotBeReadIsMovedAside();
    void whatIsNoLevelIsPassedOver();
    void settingsThatChangedAreWrittenAnew();
    void anOlderFileIsReplaced();
    void whereNothingCanBeWrittenNothingIs();
    void removedItIsGone();

private:
    QString settings() const { return folder_->filePath("Faderhall.plist"); }
    RecoveryFile file() const { return {folder_->filePath("Faderhall.recovery.plist"), settings()}; }
    QStringList entries() const { return QDir(folder_->path()).entryList(QDir::Files); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void tst_RecoveryFile::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
    put(settings(), "the saved rig");
}

void tst_RecoveryFile::theFileOfAUserLiesBesideTheSettings() {
    QCOMPARE(QFileInfo(RecoveryFile::defaultPath()).dir(), QFileInfo(SettingsFile::defaultPath()).dir());
    QCOMPARE(QFileInfo(RecoveryFile::defaultPath()).fileName(), QString("Faderhall.recovery.plist"));
}

void tst_RecoveryFile::aShowComesBack() {
    QVERIFY(file().write(show()));
    const auto taken = file().takeUp();
    QVERIFY(taken);
    QCOMPARE(taken->settings, std::optional(rig));
    QCOMPARE(taken->configName, QString("Bühne"));
    QCOMPARE(taken->currCue, std::optional<QString>("1.5"));
    QCOMPARE(taken->levels.size(), 2U);
    QCOMPARE(taken->levels.at(0).key, QString("Spot.Dimmer"));
    QCOMPARE(taken->levels.at(0).value, 255U);
    QCOMPARE(taken->levels.at(1).key, QString("Spot.Pan"));
    QCOMPARE(taken->levels.at(1).value, 4294967295U);
    QVERIFY(file().takeUp()); // it stays until it is removed
}

void tst_RecoveryFile::aShowWithoutRigAndCueComesBackWithoutThem() {
    QVERIFY(file().write({.settings = {}, .configName = "unknown_config", .currCue = {}, .levels = {}}));
    const auto taken = file().takeUp();
    QVERIFY(taken);
    QVERIFY(!taken->settings);
    QVERIFY(!taken->currCue);
    QVERIFY(taken->levels.empty());
}

void tst_RecoveryFile::theLevelsOfTheLargestRigComeBack() {
    constexpr std::uint32_t controls = 131'072; // 256 universes of 512
    ShowSnapshot largest = show();
    largest.levels.clear();
    for (std::uint32_t i = 0; i < controls; ++i) {
        largest.levels.push_back(
            {.key = QString("Fixture %1.Control %2").arg(i / 512).arg(i % 512), .value = i});
    }
    QVERIFY(file().write(largest));
    const auto taken = file().takeUp();
    QVERIFY(taken);
    QCOMPARE(taken->levels.size(), 131'072U);
    QCOMPARE(taken->levels.back().key, QString("Fixture 255.Control 511"));
    QCOMPARE(taken->levels.back().value, 131'071U);
}

void tst_RecoveryFile::withoutAFileThereIsNothing() {
    QVERIFY(!file().takeUp());
    QCOMPARE(entries(), QStringList{"Faderhall.plist"});
}

void tst_RecoveryFile::theShowOfARunThatHadNoSettingsFileComesBack() {
    QVERIFY(QFile::remove(settings()));
    QVERIFY(file().write(show()));
    QVERIFY(file().takeUp());
}

void tst_RecoveryFile::afterTheSettingsHaveChangedItIsMovedAside_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("now");
    QTest::newRow("another rig") << QByteArray("the saved rig") << QByteArray("another rig");
    QTest::newRow("one bit") << QByteArray("the saved rig") << QByteArray("the saved rif");
    QTest::newRow("longer") << QByteArray("the saved rig") << QByteArray("the saved rig ");
    QTest::newRow("empty now") << QByteArray("the saved rig") << QByteArray("");
    QTest::newRow("new now") << QByteArray("") << QByteArray("the saved rig");
}

void tst_RecoveryFile::afterTheSettingsHaveChangedItIsMovedAside() {
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, now);
    put(settings(), before);
    QVERIFY(file().write(show()));
    put(settings(), now);
    QVERIFY(!file().takeUp());
    QCOMPARE(entries().size(), 2);
    const QString aside = entries().constLast();
    QVERIFY2(aside.startsWith("Faderhall.recovery.plist.kept-20"), qPrintable(aside));
    QVERIFY(DictionaryFile(folder_->filePath(aside)).read());
}

void tst_RecoveryFile::whatCannotBeReadIsMovedAside_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("cut off") << QByteArray("<?xml version=\"1.0\"?><plist><dict><key>levels</key>");
    QTest::newRow("an array") << writeXmlPropertyList(QVariantList{1});
    QTest::newRow("of no settings") << writeXmlPropertyList(QVariantMap{{"configName", "Stage"}});
}

void tst_RecoveryFile::whatCannotBeReadIsMovedAside() {
    QFETCH(const QByteArray, bytes);
    put(folder_->filePath("Faderhall.recovery.plist"), bytes);
    QVERIFY(!file().takeUp());
    QVERIFY2(entries().constLast().startsWith("Faderhall.recovery.plist.kept-20"),
             qPrintable(entries().last()));
}

void tst_RecoveryFile::aFileWhoseSettingsCannotBeReadIsMovedAside_data() {
    QTest::addColumn<QVariant>("settings");
    QTest::newRow("empty") << QVariant(QByteArray());
    QTest::newRow("cut off") << QVariant(writeXmlPropertyList(rig).chopped(10));
    QTest::newRow("an array") << QVariant(writeXmlPropertyList(QVariantList{1}));
    QTest::newRow("no bytes") << QVariant(rig);
}

void tst_RecoveryFile::aFileWhoseSettingsCannotBeReadIsMovedAside() {
    QFETCH(const QVariant, settings);
    QVERIFY(file().write(show()));
    const DictionaryFile dictionary(folder_->filePath("Faderhall.recovery.plist"));
    QVariantMap list = dictionary.read().value();
    list.insert("settings", settings);
    QVERIFY(dictionary.write(list));
    QVERIFY(!file().takeUp());
    QCOMPARE(QDir(folder_->path()).entryList({"Faderhall.recovery.plist.kept-*"}).size(), 1);
}

void tst_RecoveryFile::whatIsNoLevelIsPassedOver() {
    QVERIFY(file().write(show()));
    const DictionaryFile dictionary(folder_->filePath("Faderhall.recovery.plist"));
    QVariantMap list = dictionary.read().value();
    QByteArray text("7 Spot.Red|Spot.Green|| |9|8 Spot.Two Words|x Spot.Blue");
    list.insert("levels", text.replace('|', '\0'));
    QVERIFY(dictionary.write(list));
    const auto taken = file().takeUp();
    QVERIFY(taken);
    QCOMPARE(taken->levels.size(), 3U);
    QCOMPARE(taken->levels.at(0).key, QString("Spot.Red"));
    QCOMPARE(taken->levels.at(0).value, 7U);
    QCOMPARE(taken->levels.at(1).key, QString("Spot.Two Words"));
    QCOMPARE(taken->levels.at(1).value, 8U);
    QCOMPARE(taken->levels.at(2).key, QString("Spot.Blue"));
    QCOMPARE(taken->levels.at(2).value, 0U);
}

void tst_RecoveryFile::settingsThatChangedAreWrittenAnew() {
    RecoveryFile kept = file();
    ShowSnapshot present = show();
    QVERIFY(kept.write(present));
    present.settings->insert("half", 0.25);
    QVERIFY(kept.write(present));
    QCOMPARE(file().takeUp()->settings, present.settings);
    present.settings = QVariantMap();
    QVERIFY(kept.write(present));
    QCOMPARE(file().takeUp()->settings, std::optional(QVariantMap()));
}

void tst_RecoveryFile::anOlderFileIsReplaced() {
    QVERIFY(file().write(show()));
    ShowSnapshot later = show();
    later.currCue = "2";
    QVERIFY(file().write(later));
    QCOMPARE(file().takeUp()->currCue, std::optional<QString>("2"));
    QCOMPARE(entries(), (QStringList{"Faderhall.plist", "Faderhall.recovery.plist"}));
}

void tst_RecoveryFile::whereNothingCanBeWrittenNothingIs() {
    QVERIFY(!RecoveryFile("/proc/faderhall/Faderhall.recovery.plist", settings()).write(show()));
    ShowSnapshot unwritable = show();
    unwritable.settings->insert("a point", QPointF(1, 2));
    QVERIFY(!file().write(unwritable));
    QCOMPARE(entries(), QStringList{"Faderhall.plist"});
}

void tst_RecoveryFile::removedItIsGone() {
    QVERIFY(file().write(show()));
    file().remove();
    QCOMPARE(entries(), QStringList{"Faderhall.plist"});
    file().remove();
}

QTEST_APPLESS_MAIN(tst_RecoveryFile)
#include "tst_RecoveryFile.moc"
