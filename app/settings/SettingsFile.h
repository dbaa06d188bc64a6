#pragma once

#include "plist/DictionaryFile.h"

/// The file that describes the rig: fixtures, user profiles, cues.
class SettingsFile {
public:
    explicit SettingsFile(QString path) : file_(std::move(path)) {}

    /// The file of this user, in the home folder.
    static QString defaultPath();

    /// The settings. Nothing when the file is missing or damaged or its root is no dictionary.
    std::optional<QVariantMap> read() const { return file_.read(); }

    /// Writes the settings whole, see DictionaryFile::write().
    bool write(const QVariantMap& settings) const { return file_.write(settings); }

private:
    DictionaryFile file_;
};
