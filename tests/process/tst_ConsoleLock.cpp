#include "process/ConsoleLock.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void put(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

// A process that was there and is no more.
pid_t deadProcess() {
    const pid_t child = fork();
    if (child == 0) {
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    return child;
}

QByteArray lockOf(pid_t process, const QString& program, const QString& host) {
    return QString("%1\n%2\n%3\n").arg(QString::number(process), program, host).toUtf8();
}

QString thisProgram() {
    return QFileInfo(QCoreApplication::applicationFilePath()).fileName();
}

} // namespace

class tst_ConsoleLock : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { folder_.reset(); }

    void theFirstConsoleHoldsTheLock();
    void theSecondConsoleFindsItHeld();
    void theLockGoesWithItsConsole();
    void theLockIsNeverStaleByAge();
    void aDeadHoldersLockIsTaken();
    void theLockOfAProcessThatIsNoConsoleIsTaken();
    void aConsoleOnAnotherMachineHoldsTheLock();
    void junkIsReplaced_data();
    void junkIsReplaced();
    void aConsoleThatIsAboutToWriteItsNameHoldsTheLock();
    void whereNoLockCanBeAConsoleRunsWithout_data();
    void whereNoLockCanBeAConsoleRunsWithout();

private:
    QString path() const { return folder_->filePath("folder/Faderhall.lock"); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void tst_ConsoleLock::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
    QVERIFY(QDir(folder_->path()).mkdir("folder"));
}

void tst_ConsoleLock::theFirstConsoleHoldsTheLock() {
    QVERIFY(QDir(folder_->path()).rmdir("folder")); // which is made
    const ConsoleLock lock(path());
    QVERIFY(lock.isHeld());
    QVERIFY(!lock.isHeldElsewhere());
}

void tst_ConsoleLock::theSecondConsoleFindsItHeld() {
    const ConsoleLock first(path());
    const ConsoleLock second(path());
    QVERIFY(!second.isHeld());
    QVERIFY(second.isHeldElsewhere());
    QVERIFY(first.isHeld());
}

void tst_ConsoleLock::theLockGoesWithItsConsole() {
    std::make_unique<ConsoleLock>(path()).reset();
    QVERIFY(!QFile::exists(path()));
    QVERIFY(ConsoleLock(path()).isHeld());
}

void tst_ConsoleLock::theLockIsNeverStaleByAge() {
    const ConsoleLock first(path());
    QFile file(path());
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addYears(-1), QFileDevice::FileModificationTime));
    QVERIFY(ConsoleLock(path()).isHeldElsewhere());
}

void tst_ConsoleLock::aDeadHoldersLockIsTaken() {
    put(path(), lockOf(deadProcess(), thisProgram(), QSysInfo::machineHostName()));
    const ConsoleLock lock(path());
    QVERIFY(lock.isHeld());
    QVERIFY(!lock.isHeldElsewhere());
}

void tst_ConsoleLock::theLockOfAProcessThatIsNoConsoleIsTaken() {
    put(path(), lockOf(1, thisProgram(), QSysInfo::machineHostName()));
    QVERIFY(ConsoleLock(path()).isHeld());
}

void tst_ConsoleLock::aConsoleOnAnotherMachineHoldsTheLock() {
    put(path(), lockOf(deadProcess(), thisProgram(), "front-of-house"));
    const ConsoleLock lock(path());
    QVERIFY(lock.isHeldElsewhere());
    QCOMPARE(lock.raiseHolder(), QString("Faderhall is running already, on front-of-house."));
}

void tst_ConsoleLock::junkIsReplaced_data() {
    QTest::addColumn<QByteArray>("junk");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("a text") << QByteArray("somebody was here\n");
    QTest::newRow("bytes") << QByteArray("\x00\xff\n\n\x80\n\n", 7);
    QTest::newRow("no process") << QByteArray("0\nfaderhall\nstage\n");
    QTest::newRow("an impossible process") << QByteArray("-1\nfaderhall\nstage\n");
    QTest::newRow("a number beyond all") << QByteArray("99999999999999999999999\nfaderhall\nstage\n");
    QTest::newRow("long") << QByteArray(1'000'000, 'x');
}

void tst_ConsoleLock::junkIsReplaced() {
    QFETCH(const QByteArray, junk);
    put(path(), junk);
    const ConsoleLock lock(path());
    QVERIFY(lock.isHeld());
    QVERIFY(!lock.isHeldElsewhere());
    QVERIFY(ConsoleLock(path()).isHeldElsewhere());
}

void tst_ConsoleLock::aConsoleThatIsAboutToWriteItsNameHoldsTheLock() {
    const int descriptor = ::open(QFile::encodeName(path()).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    QVERIFY(descriptor >= 0);
    QCOMPARE(flock(descriptor, LOCK_EX | LOCK_NB), 0);
    {
        const ConsoleLock lock(path());
        QVERIFY(lock.isHeldElsewhere());
        QCOMPARE(lock.raiseHolder(), QString("Faderhall is starting already."));
    }
    ::close(descriptor);
    QVERIFY(ConsoleLock(path()).isHeld());
}

void tst_ConsoleLock::whereNoLockCanBeAConsoleRunsWithout_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("a folder that takes no files") << "/proc/faderhall/Faderhall.lock";
    QTest::newRow("a folder under its name") << "/";
}

void tst_ConsoleLock::whereNoLockCanBeAConsoleRunsWithout() {
    QFETCH(const QString, path);
    const ConsoleLock lock(path);
    QVERIFY(!lock.isHeld());
    QVERIFY(!lock.isHeldElsewhere());
}

QTEST_GUILESS_MAIN(tst_ConsoleLock)
#include "tst_ConsoleLock.moc"
