#include "process/HomeFolder.h"

#include <QDir>
#include <QProcess>
#include <QTest>

#include <unistd.h>

namespace {

// The sixth field of the user's line in the user database, asked of another program.
QString homeInUserDatabase() {
    QProcess getent;
    getent.start("getent", {"passwd", QString::number(getuid())});
    if (!getent.waitForFinished()) {
        return {};
    }
    return QString::fromLocal8Bit(getent.readAllStandardOutput()).split(':').value(5);
}

} // namespace

class tst_HomeFolder : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aMissingHomeIsTakenFromTheUserDatabase();
    void anEmptyHomeIsTakenFromTheUserDatabase();
    void aHomeThatIsSetStays();

private:
    QByteArray before_;
};

void tst_HomeFolder::init() {
    before_ = qgetenv("HOME");
}

void tst_HomeFolder::cleanup() {
    qputenv("HOME", before_);
}

void tst_HomeFolder::aMissingHomeIsTakenFromTheUserDatabase() {
    qunsetenv("HOME");
    ensureHome();
    QVERIFY(!homeInUserDatabase().isEmpty());
    QCOMPARE(QDir::homePath(), homeInUserDatabase());
}

void tst_HomeFolder::anEmptyHomeIsTakenFromTheUserDatabase() {
    qputenv("HOME", "");
    ensureHome();
    QCOMPARE(QDir::homePath(), homeInUserDatabase());
}

void tst_HomeFolder::aHomeThatIsSetStays() {
    qputenv("HOME", "/somewhere/else");
    ensureHome();
    QCOMPARE(qgetenv("HOME"), "/somewhere/else");
}

QTEST_APPLESS_MAIN(tst_HomeFolder)
#include "tst_HomeFolder.moc"
