#pragma once

#include <QLockFile>
#include <QString>

/// One console per home: holds a lock beside the settings for as long as it lives. Where the folder takes no
/// lock, a console runs without.
class ConsoleLock {
public:
    explicit ConsoleLock(const QString& path);

    /// The lock of the consoles that keep their rig in this settings file.
    static QString pathBeside(const QString& settingsFile);

    /// True when another console runs on the same files.
    bool isHeldElsewhere() const;
    /// True when this console is known to be alone on its files.
    bool isHeld() const { return lock_.isLocked(); }

    /// Asks the console that holds the lock to bring its main window to the front. Returns what is to be said
    /// of it.
    QString raiseHolder() const;

private:
    // A file that names no holder and that nobody is about to write into.
    bool isJunk() const;

    QString path_;
    QLockFile lock_;
};
