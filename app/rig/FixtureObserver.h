#pragma once

class DMXControl;

/// Whoever shows a fixture: hears of what changes in it. A fixture may have several.
class FixtureObserver {
public:
    virtual ~FixtureObserver() = default;

    /// Whether levels can be seen at all at the moment. While nobody sees them, levelsMissed() is all that is
    /// told of levels that move.
    virtual bool seesLevels() const = 0;
    virtual void levelsMissed() = 0;
    /// Something that is shown of the fader has changed: its level, its fade time, its selection.
    virtual void controlChanged(DMXControl& control) = 0;
    /// The number that is being typed on the fader has changed.
    virtual void entryChanged(DMXControl& control) = 0;
    /// The fixture's universe or address has changed.
    virtual void fixtureMoved() = 0;

protected:
    FixtureObserver() = default;
    FixtureObserver(const FixtureObserver&) = default;
    FixtureObserver& operator=(const FixtureObserver&) = default;
};
