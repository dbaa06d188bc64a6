#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <optional>

/// Under what the parts of a profile's entry stand. One with "profile" puts in the entries of another profile
/// and is none of a control.
namespace entryKeys {
inline constexpr QLatin1StringView name("name");
inline constexpr QLatin1StringView defaultValue("default");
inline constexpr QLatin1StringView channels("channels");
inline constexpr QLatin1StringView header("header");
inline constexpr QLatin1StringView newlayer("newlayer");
inline constexpr QLatin1StringView blank("blank");
inline constexpr QLatin1StringView label("label");
inline constexpr QLatin1StringView attribute("attribute");
inline constexpr QLatin1StringView profile("profile");
} // namespace entryKeys

/// What a profile says about one control. A key that is missing or of another type reads as absent, zero
/// or false.
struct ControlDefinition {
    QString name;                   ///< null when the profile gives none
    std::uint32_t defaultValue = 0; ///< the level at rest
    std::uint32_t channels = 1;     ///< 1, 2 for a 16-bit control; a blank's own count; 0 for a label
    std::uint32_t max = 255;        ///< 255, or 65535 for a 16-bit control
    bool header = false;            ///< starts a new column
    bool newlayer = false;          ///< raises the fixture's layer number before the name is resolved
    bool hide = false;              ///< takes no place on the screen
    bool dummy = false;             ///< a blank or a label: drives no slot, cannot be selected
    QString attribute;              ///< what it is for, as GDTF names it; what its name implies where the
                                    ///< profile says nothing; empty when neither does, and for a dummy

    static ControlDefinition fromEntry(const QVariantMap& entry);
};
