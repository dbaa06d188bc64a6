#pragma once

#include <QString>
#include <QVariantMap>

#include <cstddef>
#include <optional>

/// A property-list file whose root is a dictionary, at most 16 MiB.
class DictionaryFile {
public:
    explicit DictionaryFile(QString path) : path_(std::move(path)) {}

    const QString& path() const { return path_; }

    /// The dictionary. Nothing when the file is missing or damaged or its root is something else.
    std::optional<QVariantMap> read() const;

    /// Writes the dictionary as XML, whole or not at all; the file that stood there before is kept as
    /// "<name>.previous", one that cannot be read as "<name>.unreadable-YYYYMMDD-HHMMSS", local time, with a
    /// counter behind it if that name is taken. False when nothing was written; so too when a value has no
    /// property-list type or the result would be too large or too deep to be read again.
    bool write(const QVariantMap& dictionary) const;

private:
    bool isReadable() const;

    QString path_;
    /// A hash of the bytes that were last read or written: a large file takes long to be read again only to
    /// learn that it can be.
    mutable std::optional<std::size_t> readableContent_;
};
