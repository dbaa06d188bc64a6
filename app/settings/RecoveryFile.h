#pragma once

#include "settings/ShowSnapshot.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// The file beside the settings that keeps a running show, so that it is there again after a run that ended
/// badly. It belongs to the settings file that the run started from, which it knows by its contents.
class RecoveryFile {
public:
    /// Looks at the settings file as it is now.
    RecoveryFile(QString path, const QString& settingsPath);

    /// The file of this user, beside the settings.
    static QString defaultPath();

    /// The show that an ended run left. Nothing when there is none; a file that cannot be read, or whose run
    /// started from other settings than now stand there, is moved aside.
    std::optional<ShowSnapshot> takeUp() const;

    /// Writes a show whole or not at all. Any thread may call it, one at a time. False when nothing was
    /// written; so too when a value in the settings has no property-list type.
    bool write(const ShowSnapshot& show);

    /// Takes the file away, once the show is saved.
    void remove() const;
    /// Keeps the file under a name with the date, where no start takes it up.
    void moveAside() const;

private:
    const QByteArray& settingsBytes(const QVariantMap& settings);

    QString path_;
    QByteArray settingsFingerprint_;
    QVariantMap writtenSettings_; ///< those that settingsBytes_ says
    QByteArray settingsBytes_;
};
