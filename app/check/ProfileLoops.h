#pragma once

#include <QString>
#include <QVariantMap>

#include <vector>

/// A profile on the way from a profile back to itself, and the number of its entry, from 0, that leads on.
struct LoopMember {
    QString profile;
    qsizetype entry = 0;
    bool operator==(const LoopMember&) const = default;
};

/// Profiles that contain themselves, directly or by way of others: each once around, beginning anywhere. At
/// most the first hundred. Without the last entry of each no profile would contain itself.
std::vector<std::vector<LoopMember>> profileLoops(const QVariantMap& table);
