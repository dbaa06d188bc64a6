#include "plist/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

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

// QSaveFile gives the owner what the reader of the old file may do, which for an administrator is more.
bool keepPermissions(const QString& oldFile, int newFile) {
    struct stat status {};
    return stat(QFile::encodeName(oldFile).constData(), &status) != 0 ||
           fchmod(newFile, status.st_mode & 07777U) == 0;
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

// QSaveFile makes the temporary file beside the target, renames it and takes it away on failure. Left alone
// it was seen to rename an empty file on a full disk, because its buffer is flushed too late for the error to
// count: hence no buffer, and a sync that must succeed before the rename.
bool writeWholeFile(const QString& path, const QByteArray& bytes) {
    const QFileInfo target(followLinks(path));
    if (target.isSymLink() || (target.exists() && !target.isFile()) || !QDir().mkpath(target.path())) {
        return false;
    }
    QSaveFile file(target.filePath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        !keepPermissions(target.filePath(), file.handle()) || file.write(bytes) != bytes.size() ||
        fsync(file.handle()) != 0 || !file.commit()) {
        return false;
    }
    syncFolder(target.path());
    return true;
}
