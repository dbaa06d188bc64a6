#pragma once

#include "rig/Placement.h"

#include <QLatin1StringView>
#include <QString>
#include <QVariantMap>

#include <optional>

/// Under what the parts of a rig stand, in the settings and in a configuration.
namespace rigKeys {
inline constexpr QLatin1StringView views("views");
inline constexpr QLatin1StringView profiles("profiles");
inline constexpr QLatin1StringView cues("cues");
} // namespace rigKeys

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
    /// Nothing when there is none at `index` or what stands there is no dictionary.
    std::optional<Placement> placement(qsizetype index) const;
    /// Puts a placement in the place of the one at `index`, which has to be there.
    void setPlacement(qsizetype index, const Placement& placement);

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
