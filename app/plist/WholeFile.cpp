#include "plist/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Links that point at each other do so forever; systems follow about as many.
constexpr int maxLinks = 40;

bool isRegular(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

// What is being written stands beside the file under this name until it is whole. Nobody else names a file
// so, which is what lets removeUnfinishedFiles() take away what a killed program left.
constexpr QLatin1StringView unfinished(".unfinished-");

// Calls again what a signal interrupted.
template <typename Call>
bool succeeds(Call call) {
    int result = call();
    while (result != 0 && errno == EINTR) {
        result = call();
    }
    return result == 0;
}

bool keepPermissions(const QByteArray& oldFile, int newFile) {
    struct stat status {};
    return stat(oldFile.constData(), &status) != 0 || fchmod(newFile, status.st_mode & 07777U) == 0;
}

// The old file gets a second name, put in place in one step like the new file itself, so that a full disk is
// no hindrance. Where a file system knows no second names, none is kept.
void keepAsPrevious(const QByteArray& file) {
    const QByteArray previous = file + ".previous";
    const QByteArray fresh = file + QByteArray(unfinished.data()) + "previous";
    unlink(fresh.constData());
    if (link(file.constData(), fresh.constData()) == 0) {
        std::rename(fresh.constData(), previous.constData());
        unlink(fresh.constData()); // still there where both names meant one file already
    }
}

// The rename lasts only once the folder is on the disk too. Some file systems cannot sync a folder; the file
// is whole even then.
void syncFolder(const QString& folder) {
    const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

} // namespace

QString followLinks(const QString& path) {
    QString target = path;
    for (int links = 0; links < maxLinks && QFileInfo(target).isSymLink(); ++links) {
        target = QFileInfo(target).symLinkTarget();
    }
    return target;
}

std::optional<QByteArray> readWholeFile(const QString& path, qint64 maxBytes) {
    const int descriptor =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) {
        return std::nullopt;
    }
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        close(descriptor);
        return std::nullopt;
    }
    const qint64 size = file.size();
    if (!isRegular(descriptor) || size > maxBytes) {
        return std::nullopt;
    }
    // One byte more is asked for, so that a file that grows meanwhile is not taken for whole.
    QByteArray bytes = file.read(size + 1);
    return bytes.size() == size ? std::optional(std::move(bytes)) : std::nullopt;
}

// Everything that can fail on a full or faulty disk is done and checked before the old file is touched, the
// flush of the buffer and the sync among it.
bool writeWholeFile(const QString& path, const QByteArray& bytes, OldFile oldFile) {
    const QFileInfo target(followLinks(path));
    if (target.isSymLink() || (target.exists() && !target.isFile()) || !QDir().mkpath(target.path())) {
        return false;
    }
    const QByteArray name = QFile::encodeName(target.filePath());
    QTemporaryFile file(target.filePath() + unfinished + "XXXXXX");
    if (!file.open() || !keepPermissions(name, file.handle()) || file.write(bytes) != bytes.size() ||
        !file.flush() || !succeeds([&] { return fsync(file.handle()); })) {
        return false;
    }
    const QByteArray newName = QFile::encodeName(file.fileName());
    if (oldFile == OldFile::KeptAsPrevious) {
        keepAsPrevious(name);
    }
    if (!succeeds([&] { return std::rename(newName.constData(), name.constData()); })) {
        return false;
    }
    file.setAutoRemove(false);
    syncFolder(target.path());
    return true;
}

void removeUnfinishedFiles(const QString& path) {
    const QFileInfo target(followLinks(path));
    const QString written =
        QRegularExpression::escape(target.fileName() + unfinished) + "([A-Za-z]{6}|previous)";
    const QRegularExpression pattern(QRegularExpression::anchoredPattern(written));
    const QDir folder = target.dir();
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        if (pattern.match(name).hasMatch()) {
            QFile::remove(folder.filePath(name));
        }
    }
}
