#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The file's bytes. Nothing when it cannot be read to its end, is larger than `maxBytes` or is no regular
/// file: a pipe, a device or a folder does not make the caller wait.
std::optional<QByteArray> readWholeFile(const QString& path, qint64 maxBytes);

/// What becomes of the file in whose place a new one is put.
enum class OldFile {
    Replaced,
    KeptAsPrevious, ///< under its name with ".previous" behind it, where the file system can link
    KeptUnderADate, ///< under the name that nameAside() gives it with the mark "unreadable", or nothing is
                    ///< written
};

/// Puts these bytes in the place of the file, whole or not at all: whatever happens, the path holds either
/// what stood there before or all of the bytes, and they are on the disk when this returns true. The folder
/// is made when it is missing, a file's permissions are kept, a new file is its owner's alone, a symbolic
/// link goes on pointing at its file. False when nothing was written; also for what exists and is no regular
/// file.
bool writeWholeFile(const QString& path, const QByteArray& bytes, OldFile oldFile = OldFile::Replaced);

/// Takes away what programs that were killed while they wrote this file left beside it. Nobody may be writing
/// it at the same time.
void removeUnfinishedFiles(const QString& path);

/// Where a path leads when it is a symbolic link, the target of a dangling link included; else the path
/// itself.
QString followLinks(const QString& path);
