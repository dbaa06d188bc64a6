#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

class Faders;
class Settings;

/// What stands in the place of its records in a cue that was never stored.
inline constexpr QLatin1StringView cuePlaceholder("cue data goes here");

/// The cues of the present rig: numbered records of every control that is not at rest. They live in the
/// settings and go with them.
class CueStore {
public:
    /// Both have to outlive the store.
    CueStore(Settings& settings, const Faders& faders) : settings_(settings), faders_(faders) {}

    /// The cue numbers in ascending order.
    QStringList sortedCueList() const;
    /// Nothing when there is no cue.
    std::optional<QString> firstNumber() const;
    std::optional<QString> lastNumber() const;
    /// The number after, or before, one that is in the list; the last is followed by the first. Nothing for
    /// one that is not.
    std::optional<QString> numberAfter(const QString& number) const;
    std::optional<QString> numberBefore(const QString& number) const;
    /// The list of records of a stored cue, the placeholder of one that was never stored, or nothing.
    QVariant entry(const QString& number) const;

    /// Adds a cue without data, whatever stood under the number before.
    void create(const QString& number);
    /// Records every control that is away from its default or has a fade time, replacing the cue's data.
    void store(const QString& number);
    void remove(const QString& number);
    /// Brings all cues into the form in which they take the least space and are executed fastest.
    void compact();

private:
    Settings& settings_;
    const Faders& faders_;
};
