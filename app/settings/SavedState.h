#pragma once

#include <QLatin1StringView>
#include <QString>

class Faders;
class Fixtures;
class UserDefaults;

/// In the user defaults, the selected control of each window.
inline constexpr QLatin1StringView controlSelectionsKey("control_selections");

/// What of a run is there again at the next start: the levels away from their defaults, for each
/// configuration, and the control that was selected in each fixture window.
class SavedState {
public:
    /// All have to outlive this object.
    SavedState(UserDefaults& defaults, Faders& faders, const Fixtures& fixtures)
        : defaults_(defaults), faders_(faders), fixtures_(fixtures) {}

    /// Keeps the levels of all controls that are away from their defaults, under `stateKey`.
    void saveState(const QString& stateKey);
    /// Sets every control that was kept under `stateKey` to its level.
    void restoreState(const QString& stateKey) const;

    /// Keeps the key of the control that is selected in each fixture, by rows; "" for a fixture without one.
    void saveControlSelections();
    void restoreControlSelections() const;

private:
    UserDefaults& defaults_;
    Faders& faders_;
    const Fixtures& fixtures_;
};
