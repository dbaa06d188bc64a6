#include "plist/WholeFile.h"

#include "plist/MoveAside.h"

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
int uninterrupted(Call call) {
    int result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

template <typename Call>
bool succeeds(Call call) {
    return uninterrupted(call) == 0;
}

int openUninterrupted(const QString& path, int flags) {
    const QByteArray name = QFile::encodeName(path);
    return uninterrupted([&] { return open(name.constData(), flags | O_CLOEXEC); });
}

bool keepPermissions(const QByteArray& oldFile, int newFile) {
    struct stat status {};
    return stat(oldFile.constData(), &status) != 0 ||
           succeeds([&] { return fchmod(newFile, status.st_mode & 07777U); });
}

// The old file gets a second name, put in place in one step like the new file itself, so that a full disk is
// no hindrance. Where a file system knows no second names, none is kept.
void keepAsPrevious(const QByteArray& file) {
    const QByteArray previous = file + ".previous";
    const QByteArray fresh = file + QByteArray(unfinished.data()) + "previous";
    unlink(fresh.constData());
    if (succeeds([&] { return link(file.constData(), fresh.constData()); })) {
        succeeds([&] { return std::rename(fresh.constData(), previous.constData()); });
        unlink(fresh.constData()); // still there where both names meant one file already
    }
}

// By a second name too, so that the path is never without a file: whoever could not read the old one may have
// been short of descriptors or memory for a moment only.
bool keepUnderADate(const QByteArray& file) {
    const QString path = QFile::decodeName(file);
    const QByteArray aside = QFile::encodeName(nameAside(path, "unreadable"));
    return succeeds([&] { return link(file.constData(), aside.constData()); }) ||
           moveAside(path, "unreadable");
}

bool keepOldFile(const QByteArray& file, OldFile oldFile) {
    if (oldFile == OldFile::KeptAsPrevious) {
        keepAsPrevious(file);
    }
    return oldFile != OldFile::KeptUnderADate || keepUnderADate(file);
}

// The rename lasts only once the folder is on the disk too. Some file systems cannot sync a folder; the file
// is whole even then.
void syncFolder(const QString& folder) {
    const int descriptor = openUninterrupted(folder, O_RDONLY | O_DIRECTORY);
    if (descriptor >= 0) {
        succeeds([&] { return fsync(descriptor); });
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
    const int descriptor = openUninterrupted(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
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
    const QByteArray newName = QFile::encodeName(file.fileName()); // empty if it could not be given one
    if (newName.isEmpty() || (target.exists() && !keepOldFile(name, oldFile)) ||
        !succeeds([&] { return std::rename(newName.constData(), name.constData()); })) {
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
