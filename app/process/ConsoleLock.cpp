#include "process/ConsoleLock.h"

#include "process/ProcessSignals.h"

#include <QDir>
#include <QFileInfo>
#include <QSysInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

// The holder of a lock holds the file itself too, and from before it has written its name into it.
bool isHeldOpen(const QString& path) {
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return true;
    }
    const bool isFree = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    ::close(descriptor);
    return !isFree;
}

} // namespace

ConsoleLock::ConsoleLock(const QString& path) : path_(path), lock_(path) {
    QDir().mkpath(QFileInfo(path).path());
    lock_.setStaleLockTime(0); // a console may run for months; only a dead one's lock is taken
    if (!lock_.tryLock(0) && isJunk() && QFile::remove(path)) {
        lock_.tryLock(0);
    }
}

bool ConsoleLock::isHeldElsewhere() const {
    return lock_.error() == QLockFile::LockFailedError && !isJunk();
}

bool ConsoleLock::isJunk() const {
    qint64 process = 0;
    QString host;
    QString program;
    return !lock_.getLockInfo(&process, &host, &program) && !isHeldOpen(path_);
}

QString ConsoleLock::pathBeside(const QString& settingsFile) {
    return QFileInfo(settingsFile).dir().filePath("Faderhall.lock");
}

QString ConsoleLock::raiseHolder() const {
    qint64 process = 0;
    QString host;
    QString program;
    if (!lock_.getLockInfo(&process, &host, &program)) {
        return "Faderhall is starting already.";
    }
    if (host != QSysInfo::machineHostName()) {
        return QString("Faderhall is running already, on %1.").arg(host);
    }
    if (program.endsWith("-headless")) {
        return "Faderhall is running already, without windows.";
    }
    ProcessSignals::requestFront(process);
    return "Faderhall is running already; its main window is brought to the front.";
}
