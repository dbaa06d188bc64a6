#pragma once

#include "rig/WindowPlaces.h"

class UserDefaults;

/// In the user defaults, the title of the window that was in front at the end.
inline constexpr QLatin1StringView mainWindowTitleKey("mainWindowTitle");

/// The places of windows, kept in the user defaults under the windows' autosave names.
class SavedPlaces : public WindowPlaces {
public:
    explicit SavedPlaces(UserDefaults& defaults) : defaults_(defaults) {}

    std::optional<QPoint> place(const QString& autosavename) const override;
    void setPlace(const QString& autosavename, QPoint place) override;
    void forgetPlace(const QString& autosavename) override;

private:
    UserDefaults& defaults_;
};
