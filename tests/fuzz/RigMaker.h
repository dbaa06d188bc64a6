#pragma once

#include <QString>
#include <QVariantMap>

#include <cstddef>
#include <cstdint>

class FuzzedDataProvider;

/// Makes rigs out of bytes: dictionaries with the keys that the console knows, and values that are mostly of
/// the right type, so that a fuzzer gets past the first look at them.
class RigMaker {
public:
    explicit RigMaker(FuzzedDataProvider& bytes) : bytes_(bytes) {}

    /// "views", "profiles" and "cues".
    QVariantMap settings();
    /// Entries of a profile: controls and nested profiles.
    QVariantList entries();
    /// Profile name to profile.
    QVariantMap profiles();

private:
    QVariantMap entry();
    QVariantMap placement();
    QVariantMap cues();
    QVariantMap record();
    QString name();
    QVariant number();
    QVariant anything();
    template <typename Make>
    QVariantList list(Make make);

    FuzzedDataProvider& bytes_;
};
