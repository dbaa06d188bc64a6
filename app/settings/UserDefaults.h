#pragma once

#include "plist/BackgroundWrite.h"
#include "plist/DictionaryFile.h"

#include <QObject>
#include <QTimer>

/// What the program remembers of a user between its runs, apart from the rig: values under keys, kept in one
/// file. Keys that nobody asks for stay as they were read.
class UserDefaults : public QObject {
    Q_OBJECT

public:
    /// Reads the file; without a readable one the store is empty.
    explicit UserDefaults(QString path, QObject* parent = nullptr);

    /// The file of this user, in the configuration folder.
    static QString defaultPath();

    /// The value under a key, of the types that PropertyList.h names; invalid when there is none.
    QVariant objectForKey(const QString& key) const { return values_.value(key); }

    /// Puts a value under a key, an invalid one takes the key away. The file is written half a second after
    /// the first change, by a thread of its own; while a slow disk is still at it, half a second later again.
    /// A value that no property list can hold changes nothing.
    void setObject(const QVariant& value, const QString& forKey);

    /// To be called once there is an event loop, without which nothing is written by itself.
    void startWriting();

    /// Writes what was changed since the last writing, now, and waits for it and for what is being written;
    /// to be called before the program ends. False when that failed: the changes then wait for the next call
    /// or the next change.
    bool synchronize();

private:
    void writeLater();
    void writeInBackground();
    void takeResult();

    DictionaryFile file_; ///< the thread's while it writes
    QVariantMap values_;
    bool isChanged_ = false;
    QTimer writeSoon_;
    BackgroundWrite writing_; ///< last, so that it has ended before the file goes
};
