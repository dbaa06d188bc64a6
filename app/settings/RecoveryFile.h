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

    /// Writes a show whole or not at all. Touches nothing but the file, so that any thread may call it.
    bool write(const ShowSnapshot& show) const;

    /// Takes the file away, once the show is saved.
    void remove() const;
    /// Keeps the file under a name with the date, where no start takes it up.
    void moveAside() const;

private:
    QString path_;
    QByteArray settingsFingerprint_;
};
