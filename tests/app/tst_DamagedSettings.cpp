#include "TestConsole.h"

#include "plist/PropertyList.h"
#include "settings/SettingsFile.h"
#include "support/TestRig.h"

#include <QTest>

#include <memory>

namespace {

using Bytes = QList<QByteArray>;

QVariantMap rig() {
    const QVariantMap red{{"name", "Red"}, {"channels", 2LL}};
    const QVariantMap nested{{"profile", "Par"}, {"name", "A#"}};
    const QVariantMap record{{"key", "F.A1.Red"}, {"value", 9LL}, {"time", 0.5}};
    return {{"views", QVariantList{placement("F", 1, 1, {nested})}},
            {"profiles", QVariantMap{{"Par", QVariantList{red}}}},
            {"cues", QVariantMap{{"2.5", QVariantList{record}}}}};
}

Bytes cutAtEveryByte(const QByteArray& whole) {
    Bytes damaged;
    for (qsizetype size = 0; size < whole.size(); ++size) {
        damaged.append(whole.first(size));
    }
    return damaged;
}

Bytes withEveryBitFlipped(const QByteArray& whole) {
    Bytes damaged;
    for (qsizetype bit = 0; bit < whole.size() * 8; ++bit) {
        QByteArray bytes = whole;
        bytes[bit / 8] = static_cast<char>(bytes.at(bit / 8) ^ (1 << bit % 8));
        damaged.append(bytes);
    }
    return damaged;
}

// A console takes its time to start: what reads alike is started from once, what reads as nothing too.
Bytes thatReadDifferently(const Bytes& damaged) {
    QMap<QByteArray, QByteArray> readings;
    for (const QByteArray& bytes : damaged) {
        const QVariant reading = readPropertyList(bytes, 1 << 20).value_or(QVariant());
        readings.insert(writeBinaryPropertyList(reading), bytes);
    }
    return readings.values();
}

// Every bit of the file is flipped; of what then still reads, consoles start from so many.
constexpr qsizetype defaultStarts = 30;

qsizetype startsAskedFor() {
    bool isNumber = false;
    const int asked = qEnvironmentVariableIntValue("FADERHALL_STARTS", &isNumber);
    return isNumber ? asked : defaultStarts;
}

} // namespace

/// A settings file that a fault of the disk has left: it reads as something or as nothing, and the console
/// starts.
class tst_DamagedSettings : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { home_.reset(); }

    void aFileCutAnywhereReadsAsNothing_data();
    void aFileCutAnywhereReadsAsNothing();
    void theConsoleStartsFromAFileWithAnyBitFlipped_data();
    void theConsoleStartsFromAFileWithAnyBitFlipped();

private:
    std::unique_ptr<ScratchHome> home_;
};

void tst_DamagedSettings::init() {
    home_ = std::make_unique<ScratchHome>();
    home_->writeProfiles({});
    home_->writeConfigurations({{"_default_configuration", "Stage"}, {"Stage", rig()}});
}

void tst_DamagedSettings::aFileCutAnywhereReadsAsNothing_data() {
    QTest::addColumn<QByteArray>("whole");
    QTest::newRow("XML") << writeXmlPropertyList(rig()).chopped(1); // without the last line's end
    QTest::newRow("binary") << writeBinaryPropertyList(rig());
}

void tst_DamagedSettings::aFileCutAnywhereReadsAsNothing() {
    QFETCH(const QByteArray, whole);
    const SettingsFile file(SettingsFile::defaultPath());
    home_->writeSettings(whole);
    QCOMPARE(file.read(), std::optional(rig()));
    for (const QByteArray& bytes : cutAtEveryByte(whole)) {
        home_->writeSettings(bytes);
        QCOMPARE(file.read(), std::nullopt);
    }
}

void tst_DamagedSettings::theConsoleStartsFromAFileWithAnyBitFlipped_data() {
    aFileCutAnywhereReadsAsNothing_data();
}

void tst_DamagedSettings::theConsoleStartsFromAFileWithAnyBitFlipped() {
    QFETCH(const QByteArray, whole);
    const Bytes readings = thatReadDifferently(withEveryBitFlipped(whole));
    QVERIFY(readings.size() > 100);
    const qsizetype step = std::max<qsizetype>(1, readings.size() / startsAskedFor());
    qsizetype starts = 0;
    for (qsizetype i = 0; i < readings.size(); i += step) {
        home_->writeSettings(readings.at(i));
        TestConsole console(*home_);
        console.start();
        console.tick();
        ++starts;
    }
    qInfo("%lld bits flipped, %lld readings, %lld starts", whole.size() * 8, readings.size(), starts);
}

QTEST_MAIN(tst_DamagedSettings)
#include "tst_DamagedSettings.moc"
