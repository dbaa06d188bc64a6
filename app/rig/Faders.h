#pragma once

#include "output/Engine.h"
#include "rig/DMXControl.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <span>
#include <vector>

/// Where a fader is to go, and in which time; the time becomes the fader's own.
struct FaderChange {
    DMXControl* fader = nullptr;
    std::uint32_t value = 0;
    float time = 0; ///< seconds
};

/// Every fader of the rig that is no dummy, by its key; of several with one key the newest.
class Faders {
public:
    /// Enters a fader under its key; a dummy has none. A key that is taken is reported on standard output.
    void add(DMXControl& fader);
    /// Lets the fader be found under its key, whichever was before.
    void put(DMXControl& fader);
    /// Takes the fader out; false when another one, or none, stands under its key.
    bool remove(const DMXControl& fader);
    void clear();

    /// Null when there is none.
    DMXControl* find(const QString& key) const { return byKey_.value(key); }
    std::size_t count() const { return static_cast<std::size_t>(byKey_.size()); }
    /// All of them in the order of their keys.
    const std::vector<DMXControl*>& sorted() const;

    /// Sends the fader under `key` to a level over a time in seconds, both numbers or strings of digits; an
    /// unknown key is passed over.
    void setControl(const QString& key, const QVariant& toValue, const QVariant& time) const;
    /// Sends many faders on their way as one edit: no datagram shows half of it.
    static void setDMXValues(std::span<const FaderChange> changes);

private:
    QHash<QString, DMXControl*> byKey_;
    mutable std::vector<DMXControl*> sorted_; ///< made when it is asked for
    mutable bool isSorted_ = true;
};
