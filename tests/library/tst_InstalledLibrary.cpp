#include "library/ExpandedMode.h"
#include "library/FixtureImport.h"
#include "library/FixtureLibrary.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

// A remark or a refusal without the names in it, to be counted.
QString kindOf(const QString& remark) {
    static const QRegularExpression names("'[^']*'|[0-9]+");
    return QString(remark).replace(names, "...");
}

QSet<QString> kindsOf(const QStringList& remarks) {
    QSet<QString> kinds;
    for (const QString& remark : remarks) {
        kinds.insert(kindOf(remark));
    }
    return kinds;
}

/// What became of all modes of a folder.
struct Statistics {
    int files = 0;
    int modes = 0;
    int exact = 0;
    QMap<QString, int> modesByRemark;
    QMap<QString, int> filesByRefusal;

    void print() const {
        qInfo("%d files, %d modes: %d exact (%.2f %%), %d with remarks; %d files refused", files, modes,
              exact, 100.0 * exact / modes, modes - exact, refused());
        for (auto entry = modesByRemark.begin(); entry != modesByRemark.end(); ++entry) {
            qInfo("%6d modes: %s", entry.value(), qUtf8Printable(entry.key()));
        }
        for (auto entry = filesByRefusal.begin(); entry != filesByRefusal.end(); ++entry) {
            qInfo("%6d files refused: %s", entry.value(), qUtf8Printable(entry.key()));
        }
    }

    int refused() const {
        int sum = 0;
        for (const int count : filesByRefusal) {
            sum += count;
        }
        return sum;
    }
};

} // namespace

/// The fixtures that the system's package installs, where it is installed.
class tst_InstalledLibrary : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyModeHasItsSlotsAndNamesOfItsOwn();
    void nearlyEveryModeIsExpressedInFull();
    void itIsIndexedWhileTheEventLoopGoesOn();

private:
    Statistics statistics_;
};

void tst_InstalledLibrary::initTestCase() {
    if (!QFileInfo(FixtureLibrary::installedFolder()).isDir()) {
        QSKIP("there is no /usr/share/qlcplus/fixtures: the package qlcplus-data has it");
    }
}

void tst_InstalledLibrary::everyModeHasItsSlotsAndNamesOfItsOwn() {
    QDirIterator files(FixtureLibrary::installedFolder(), {"*.qxf"}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const FixtureImport fixture = importFixture(files.next());
        ++statistics_.files;
        QCOMPARE(fixture.modes.empty(), !fixture.refusal.isNull());
        if (!fixture.refusal.isNull()) {
            ++statistics_.filesByRefusal[kindOf(fixture.refusal.section(": ", 1))];
        }
        for (const ImportedMode& mode : fixture.modes) {
            const ExpandedMode comesTo = expanded(mode);
            QVERIFY2(comesTo.slotCount == mode.channels, qPrintable(mode.profileName));
            QVERIFY2(QSet(comesTo.keys.begin(), comesTo.keys.end()).size() == comesTo.keys.size(),
                     qPrintable(mode.profileName));
            ++statistics_.modes;
            statistics_.exact += mode.remarks.isEmpty() ? 1 : 0;
            for (const QString& kind : kindsOf(mode.remarks)) {
                ++statistics_.modesByRemark[kind];
            }
        }
    }
    statistics_.print();
    QVERIFY(statistics_.files > 1000);
}

void tst_InstalledLibrary::nearlyEveryModeIsExpressedInFull() {
    QVERIFY(statistics_.exact >= 0.95 * statistics_.modes);
    QCOMPARE(statistics_.refused(), 0);
}

void tst_InstalledLibrary::itIsIndexedWhileTheEventLoopGoesOn() {
    FixtureLibrary library(FixtureLibrary::installedFolder());
    QSignalSpy indexed(&library, &FixtureLibrary::indexed);
    QElapsedTimer sinceTick;
    qint64 longest = 0;
    int ticks = 0;
    QTimer ticker;
    ticker.setTimerType(Qt::PreciseTimer);
    connect(&ticker, &QTimer::timeout, this, [&] {
        longest = ++ticks > 1 ? std::max(longest, sinceTick.elapsed()) : 0;
        sinceTick.start();
    });
    ticker.start(33);
    QElapsedTimer all;
    all.start();
    library.startIndexing();
    QVERIFY(indexed.wait(60'000));
    qInfo("%zu modes indexed in %lld ms; %d ticks meanwhile, at most %lld ms apart", library.modes().size(),
          static_cast<long long>(all.elapsed()), ticks, static_cast<long long>(longest));
    QCOMPARE(static_cast<int>(library.modes().size()), statistics_.modes);
}

QTEST_GUILESS_MAIN(tst_InstalledLibrary)
#include "tst_InstalledLibrary.moc"
