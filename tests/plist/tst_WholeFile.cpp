#include "plist/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void put(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be opened");
}

QStringList entriesOf(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

// Writes in a process of its own whose files may not grow beyond that size, as on a disk that is full.
bool succeedsWithRoomFor(rlim_t size, const QString& path, const QByteArray& bytes,
                         OldFile oldFile = OldFile::Replaced) {
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{size, size};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(writeWholeFile(path, bytes, oldFile) ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

class tst_WholeFile : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { folder_.reset(); }

    void whatWasWrittenIsRead_data();
    void whatWasWrittenIsRead();
    void theLargestFileIsTheLimit();
    void whatIsNoRegularFileReadsAsMissing_data();
    void whatIsNoRegularFileReadsAsMissing();
    void aMissingFileReadsAsMissing();
    void theFolderIsMadeWhenItIsMissing();
    void permissionsOfTheFileAreKept();
    void aLinkKeepsPointingAtTheFileThatIsReplaced_data();
    void aLinkKeepsPointingAtTheFileThatIsReplaced();
    void aDanglingLinkGetsItsFile();
    void linksInACircleAreRefused();
    void aFullDiskLeavesTheOldFileAndNothingElse();
    void whatCannotBeWrittenIsRefused_data();
    void whatCannotBeWrittenIsRefused();
    void theOldFileIsKeptAsPreviousWhenThatIsAskedFor();
    void aFullDiskLeavesThePreviousFileToo();
    void onlyTheLastGenerationIsKept();
    void aFileToBeKeptUnderADateStaysInItsPlaceUntilTheNewOneIsWhole();
    void whatAKilledProgramLeftIsTakenAway();

private:
    // A name within the scratch folder; what is a whole path stays one.
    QString at(const QString& name) const { return QDir(folder_->path()).filePath(name); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void tst_WholeFile::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

void tst_WholeFile::whatWasWrittenIsRead_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QByteArray("");
    QTest::newRow("one byte") << QByteArray("x");
    QTest::newRow("every kind of byte") << QByteArray("\0\n\r\xff", 4);
    QTest::newRow("a megabyte") << QByteArray(1 << 20, 'm');
}

void tst_WholeFile::whatWasWrittenIsRead() {
    QFETCH(const QByteArray, bytes);
    put(at("file"), "what stood there before");
    QVERIFY(writeWholeFile(at("file"), bytes));
    QCOMPARE(contentOf(at("file")), bytes);
    QCOMPARE(readWholeFile(at("file"), 1 << 20), std::optional(bytes));
    QCOMPARE(entriesOf(folder_->path()), QStringList{"file"});
}

void tst_WholeFile::theLargestFileIsTheLimit() {
    put(at("file"), "12345");
    QCOMPARE(readWholeFile(at("file"), 5), std::optional(QByteArray("12345")));
    QCOMPARE(readWholeFile(at("file"), 4), std::nullopt);
}

void tst_WholeFile::whatIsNoRegularFileReadsAsMissing_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("pipe") << "pipe";
    QTest::newRow("folder") << "folder";
    QTest::newRow("device") << "/dev/zero";
    QTest::newRow("file that tells no size") << "/proc/self/status";
}

void tst_WholeFile::whatIsNoRegularFileReadsAsMissing() {
    QFETCH(const QString, path);
    QCOMPARE(mkfifo(QFile::encodeName(at("pipe")).constData(), 0600), 0);
    QVERIFY(QDir().mkpath(at("folder")));
    QCOMPARE(readWholeFile(at(path), 1000), std::nullopt);
}

void tst_WholeFile::aMissingFileReadsAsMissing() {
    QCOMPARE(readWholeFile(at("none"), 1000), std::nullopt);
    QCOMPARE(readWholeFile(QString(), 1000), std::nullopt);
}

void tst_WholeFile::theFolderIsMadeWhenItIsMissing() {
    QVERIFY(writeWholeFile(at("a/b c/file"), "x"));
    QCOMPARE(contentOf(at("a/b c/file")), QByteArray("x"));
}

void tst_WholeFile::permissionsOfTheFileAreKept() {
    constexpr auto permissions =
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::ExeGroup;
    put(at("file"), "old");
    QVERIFY(QFile::setPermissions(at("file"), permissions));
    QVERIFY(writeWholeFile(at("file"), "new"));
    QCOMPARE(contentOf(at("file")), QByteArray("new"));
    struct stat status {};
    QCOMPARE(stat(QFile::encodeName(at("file")).constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777U, 0650U);
}

void tst_WholeFile::aLinkKeepsPointingAtTheFileThatIsReplaced_data() {
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("relative") << "second"
                              << "folder/file";
    QTest::newRow("upward") << "folder/../second"
                            << "./folder/file";
}

void tst_WholeFile::aLinkKeepsPointingAtTheFileThatIsReplaced() {
    QFETCH(const QString, first);
    QFETCH(const QString, second);
    QVERIFY(QDir().mkpath(at("folder")));
    put(at("folder/file"), "old");
    QVERIFY(QFile::link(first, at("first")));
    QVERIFY(QFile::link(second, at("second")));
    QVERIFY(writeWholeFile(at("first"), "new"));
    QCOMPARE(contentOf(at("folder/file")), QByteArray("new"));
    QVERIFY(QFileInfo(at("first")).isSymLink());
    QVERIFY(QFileInfo(at("second")).isSymLink());
    QCOMPARE(entriesOf(at("folder")), QStringList{"file"});
    QCOMPARE(readWholeFile(at("first"), 100), std::optional(QByteArray("new")));
}

void tst_WholeFile::aDanglingLinkGetsItsFile() {
    QVERIFY(QFile::link("folder/file", at("link")));
    QVERIFY(writeWholeFile(at("link"), "new"));
    QVERIFY(QFileInfo(at("link")).isSymLink());
    QCOMPARE(contentOf(at("folder/file")), QByteArray("new"));
}

void tst_WholeFile::linksInACircleAreRefused() {
    QVERIFY(QFile::link("two", at("one")));
    QVERIFY(QFile::link("one", at("two")));
    QVERIFY(!writeWholeFile(at("one"), "new"));
    QCOMPARE(readWholeFile(at("one"), 100), std::nullopt);
    QCOMPARE(entriesOf(folder_->path()), (QStringList{"one", "two"}));
}

void tst_WholeFile::aFullDiskLeavesTheOldFileAndNothingElse() {
    put(at("file"), "old");
    QVERIFY(succeedsWithRoomFor(100'000, at("file"), QByteArray(100'000, 'a')));
    QVERIFY(!succeedsWithRoomFor(99'999, at("file"), QByteArray(100'000, 'b')));
    QVERIFY(!succeedsWithRoomFor(0, at("file"), "c"));
    QCOMPARE(contentOf(at("file")), QByteArray(100'000, 'a'));
    QVERIFY(!succeedsWithRoomFor(10, at("other"), QByteArray(11, 'd')));
    QCOMPARE(entriesOf(folder_->path()), QStringList{"file"});
}

void tst_WholeFile::whatCannotBeWrittenIsRefused_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("below a file") << "file/below";
    QTest::newRow("deep below a file") << "file/below/further";
    QTest::newRow("a folder") << "folder";
    QTest::newRow("a pipe") << "pipe";
    QTest::newRow("a device behind a link") << "link to a device";
    QTest::newRow("a folder that takes no files") << "/proc/faderhall";
    QTest::newRow("too long a name") << QString(300, u'n');
}

void tst_WholeFile::whatCannotBeWrittenIsRefused() {
    QFETCH(const QString, path);
    put(at("file"), "old");
    QVERIFY(QDir().mkpath(at("folder")));
    QCOMPARE(mkfifo(QFile::encodeName(at("pipe")).constData(), 0600), 0);
    QVERIFY(QFile::link("/dev/null", at("link to a device")));
    const QStringList before = entriesOf(folder_->path());
    QVERIFY(!writeWholeFile(at(path), "new"));
    QCOMPARE(entriesOf(folder_->path()), before);
    QCOMPARE(contentOf(at("file")), QByteArray("old"));
}

void tst_WholeFile::theOldFileIsKeptAsPreviousWhenThatIsAskedFor() {
    QVERIFY(writeWholeFile(at("file"), "one", OldFile::KeptAsPrevious));
    QCOMPARE(entriesOf(folder_->path()), QStringList{"file"});
    QVERIFY(writeWholeFile(at("file"), "two", OldFile::KeptAsPrevious));
    QCOMPARE(contentOf(at("file")), QByteArray("two"));
    QCOMPARE(contentOf(at("file.previous")), QByteArray("one"));
    QVERIFY(writeWholeFile(at("file"), "three"));
    QCOMPARE(contentOf(at("file.previous")), QByteArray("one"));
    QCOMPARE(entriesOf(folder_->path()), (QStringList{"file", "file.previous"}));
}

void tst_WholeFile::aFullDiskLeavesThePreviousFileToo() {
    put(at("file"), "old");
    put(at("file.previous"), "older");
    QVERIFY(!succeedsWithRoomFor(1, at("file"), "new", OldFile::KeptAsPrevious));
    QCOMPARE(contentOf(at("file")), QByteArray("old"));
    QCOMPARE(contentOf(at("file.previous")), QByteArray("older"));
}

// Both names may stand for one file already, after a program that was killed between two steps.
void tst_WholeFile::onlyTheLastGenerationIsKept() {
    put(at("file"), "old");
    QCOMPARE(
        link(QFile::encodeName(at("file")).constData(), QFile::encodeName(at("file.previous")).constData()),
        0);
    QVERIFY(writeWholeFile(at("file"), "new", OldFile::KeptAsPrevious));
    QCOMPARE(contentOf(at("file.previous")), QByteArray("old"));
    QCOMPARE(entriesOf(folder_->path()), (QStringList{"file", "file.previous"}));
}

void tst_WholeFile::aFileToBeKeptUnderADateStaysInItsPlaceUntilTheNewOneIsWhole() {
    put(at("file"), "old");
    QVERIFY(!succeedsWithRoomFor(1, at("file"), "new", OldFile::KeptUnderADate));
    QCOMPARE(contentOf(at("file")), QByteArray("old"));
    QCOMPARE(entriesOf(folder_->path()), QStringList{"file"});
    QVERIFY(writeWholeFile(at("file"), "new", OldFile::KeptUnderADate));
    QCOMPARE(contentOf(at("file")), QByteArray("new"));
    const QStringList entries = entriesOf(folder_->path());
    QCOMPARE(entries.size(), 2);
    QVERIFY(entries.constLast().startsWith("file.unreadable-"));
    QCOMPARE(contentOf(at(entries.constLast())), QByteArray("old"));
}

void tst_WholeFile::whatAKilledProgramLeftIsTakenAway() {
    const QStringList others{"file",
                             "file.backup",
                             "file.previous",
                             "file.unfinished",
                             "file.unfinished-two",
                             "other.unfinished-aBcDeF"};
    for (const QString& name : others + QStringList{"file.unfinished-aBcDeF", "file.unfinished-previous"}) {
        put(at(name), "x");
    }
    removeUnfinishedFiles(at("file"));
    QCOMPARE(entriesOf(folder_->path()), others);
}

QTEST_APPLESS_MAIN(tst_WholeFile)
#include "tst_WholeFile.moc"
