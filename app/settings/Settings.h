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

    /// Inserts placements before the one at `index`. Without a rig one begins here.
    void insertPlacements(qsizetype index, const QVariantList& placements);
    /// Takes out so many placements from `index` on; they have to be there.
    void removePlacements(qsizetype index, qsizetype count);

    QVariantMap userProfiles() const;
    /// Puts a profile under its name; an invalid one takes it away. Without a rig one begins here.
    void setUserProfile(const QString& name, const QVariant& profile);

    /// Cue number to cue entry; empty when there is no cue table.
    QVariantMap cues() const;
    bool hasCues() const;
    void createCues();
    /// Without a cue table nothing is written.
    void setCue(const QString& number, const QVariant& entry);
    void removeCue(const QString& number);

private:
    void setViews(const QVariantList& placements);

    std::optional<QVariantMap> dictionary_;
};
