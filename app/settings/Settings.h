#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

/// The rig of the present configuration, as the settings file holds it: "views" (fixture placements),
/// "profiles" (the rig's own profiles), "cues", and any other key, which is kept as it is. There may be no
/// rig at all; then everything reads as empty and writing goes nowhere.
class Settings {
public:
    Settings() = default;
    explicit Settings(std::optional<QVariantMap> dictionary) : dictionary_(std::move(dictionary)) {}

    const std::optional<QVariantMap>& dictionary() const { return dictionary_; }

    /// The fixture placements, in window order.
    QVariantList views() const;
    /// Sets "universe" or "address" of the placement at `index`; false when there is none.
    bool setPlacement(qsizetype index, const QString& key, int value);

    QVariantMap userProfiles() const;

    /// Cue number to cue entry; empty when there is no cue table.
    QVariantMap cues() const;
    bool hasCues() const;
    void createCues();
    /// Without a cue table nothing is written.
    void setCue(const QString& number, const QVariant& entry);
    void removeCue(const QString& number);

private:
    std::optional<QVariantMap> dictionary_;
};
