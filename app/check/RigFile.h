#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

/// What a file that should hold a dictionary turns out to be.
struct RigFile {
    enum State {
        Missing,
        NotLookedAt, ///< it is there and could not be read
        Damaged,     ///< what is read of it is no dictionary in a property list
        Read,
    };
    State state = Missing;
    QString reason; ///< why it was not looked at, or what is wrong with it
    std::optional<QVariantMap> dictionary;
};

/// Looks at a file and changes nothing.
RigFile readRigFile(const QString& path);
