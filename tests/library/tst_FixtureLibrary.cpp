#include "library/FixtureLibrary.h"

#include <QDir>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

namespace {

QStringList linesOf(const FixtureLibrary& library) {
    QStringList lines;
    for (const LibraryMode& mode : library.modes()) {
        lines.append(QString("%1|%2|%3|%4|%5")
                         .arg(mode.maker, mode.model, mode.mode)
                         .arg(mode.channels)
                         .arg(QFileInfo(mode.file).fileName()));
    }
    return lines;
}

// A folder with makers' folders in it, and files that are no fixtures.
class Folder {
public:
    Folder() {
        QDir(folder_.path()).mkpath("acme/bars");
        for (const char* file : {"qxf/defaults.qxf", "ofl/defaults.json", "qxf/refused-default.qxf"}) {
            copy(file, "acme/" + QFileInfo(file).fileName());
        }
        copy("qxf/pixels.qxf", "acme/bars/pixels.qxf");
        copy("qxf/pixels.qxf", "acme/bars/pixels.xml");
    }

    QString path() const { return folder_.path(); }

private:
    void copy(const char* file, const QString& name) {
        QVERIFY(QFile::copy(QFINDTESTDATA(file), QDir(folder_.path()).filePath(name)));
    }

    QTemporaryDir folder_;
};

} // namespace

class tst_FixtureLibrary : public QObject {
    Q_OBJECT

private slots:
    void modesAreListedByMakerModelAndMode();
    void nothingIsListedBeforeTheEventLoopHasRun();
    void aFolderIsLookedThroughOnce();
    void aFolderThatIsNotThereIsNotLookedThrough();
    void aLibraryMayGoWhileItIsLookedThrough();
};

void tst_FixtureLibrary::modesAreListedByMakerModelAndMode() {
    const Folder folder;
    FixtureLibrary library(folder.path());
    const QSignalSpy indexed(&library, &FixtureLibrary::indexed);
    library.startIndexing();
    QTRY_COMPARE(indexed.size(), 1);
    QCOMPARE(linesOf(library),
             (QStringList{"Acme|Bar|M|11|pixels.qxf", "Acme|Lamp|1 Channel|1|defaults.qxf",
                          "Acme|Lamp|2 Channel|2|defaults.qxf", "acme|Lamp|1 Channel|1|defaults.json",
                          "acme|Lamp|3 Channel|3|defaults.json"}));
}

void tst_FixtureLibrary::nothingIsListedBeforeTheEventLoopHasRun() {
    const Folder folder;
    FixtureLibrary library(folder.path());
    library.startIndexing();
    QThread::msleep(20);
    QVERIFY(library.modes().empty());
}

void tst_FixtureLibrary::aFolderIsLookedThroughOnce() {
    const Folder folder;
    FixtureLibrary library(folder.path());
    QSignalSpy indexed(&library, &FixtureLibrary::indexed);
    library.startIndexing();
    library.startIndexing();
    QTRY_COMPARE(indexed.size(), 1);
    library.startIndexing();
    QVERIFY(!indexed.wait(100));
}

void tst_FixtureLibrary::aFolderThatIsNotThereIsNotLookedThrough() {
    const Folder folder;
    FixtureLibrary library(folder.path() + "/none");
    QSignalSpy indexed(&library, &FixtureLibrary::indexed);
    library.startIndexing();
    QVERIFY(!indexed.wait(100));
    QVERIFY(library.modes().empty());
}

void tst_FixtureLibrary::aLibraryMayGoWhileItIsLookedThrough() {
    const Folder folder;
    for (int i = 0; i < 20; ++i) {
        FixtureLibrary library(folder.path());
        library.startIndexing();
    }
    QCoreApplication::processEvents();
}

QTEST_GUILESS_MAIN(tst_FixtureLibrary)
#include "tst_FixtureLibrary.moc"
