#pragma once

#include "library/FineChannels.h"

#include <QByteArray>
#include <QHash>

#include <vector>

/// That a channel stands for another one in a mode, while some third channel is at some level.
struct QxfAlias {
    QString mode;
    QString channel;
    QString with;
};

/// A mode as a .qxf file declares it.
struct QxfMode {
    struct Slot {
        int index = 0; ///< from 0
        QString channel;
    };
    QString name;
    std::vector<Slot> channels;
    std::vector<std::vector<int>> heads; ///< slot indices
};

/// What a .qxf file says, its parts not yet brought together.
struct QxfDocument {
    QString maker;
    QString model;
    QHash<QString, QxfChannel> channels; ///< by their names
    std::vector<QxfMode> modes;
    std::vector<QxfAlias> aliases;
    QString refusal; ///< why the file is refused; null when it was read
};

QxfDocument parseQxf(const QByteArray& bytes);
