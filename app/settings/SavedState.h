#pragma once

#include <QLatin1StringView>
#include <QString>

class UserDefaults;

/// In the user defaults, the selected control of each window.
inline constexpr QLatin1StringView controlSelectionsKey("control_selections");

/// What of a run is there again at the next start: the levels away from their defaults, for each
/// configuration, and the control that was selected in each fixture window.
class SavedState {
public:
    explicit SavedState(UserDefaults& defaults) : defaults_(defaults) {}

    /// Keeps the levels of all controls that are away from their defaults, under `stateKey`.
    void saveState(const QString& stateKey);
    /// Sets every control that was kept under `stateKey` to its level.
    void restoreState(const QString& stateKey) const;

    /// Keeps the key of the control that is selected in each fixture view, in the views' order; "" for a
    /// view without one.
    void saveControlSelections();
    void restoreControlSelections() const;

private:
    UserDefaults& defaults_;
};
