#pragma once

#include "levels/Encoding.h"
#include "levels/Fade.h"
#include "levels/NumericEntry.h"

#include <QString>

#include <cstdint>

class Fixture;
struct ControlDefinition;

/// One fader, bound to one slot (8-bit) or two adjacent slots (16-bit, coarse byte first) of its fixture's
/// universe. Its level and fade stand in the fixture's levels; here is what the output does not need: name
/// and key, default, fade time, the number that is being typed. Knows no window: whoever shows the fixture is
/// told of every change.
class DMXControl {
public:
    /// The fader of a profile's entry; "newlayer" raises the fixture's layer number first. `index` is its
    /// place among the fixture's faders. The fixture has to outlive it.
    DMXControl(const ControlDefinition& definition, Fixture& fixture, std::uint32_t index);
    DMXControl(const DMXControl&) = delete;
    DMXControl& operator=(const DMXControl&) = delete;
    DMXControl(DMXControl&&) = delete;
    DMXControl& operator=(DMXControl&&) = delete;
    ~DMXControl() = default;

    const Fixture& fixture() const { return fixture_; }
    /// Its place among the fixture's faders.
    std::uint32_t index() const { return index_; }
    QString name() const { return name_; }
    /// The fixture's name, those of the profiles around it and its own, joined with points: under it cues and
    /// saved levels find the fader. Null for a dummy, which neither knows.
    const QString& key() const { return key_; }
    bool hide() const { return hide_; }
    bool header() const { return header_; }
    /// Drives no slot and cannot be selected.
    bool dummy() const { return dummy_; }
    /// Slots: 1, or 2 for a 16-bit fader; a dummy may count any number.
    std::uint32_t channels() const { return channels_; }
    /// 255, or 65535 for a 16-bit fader.
    std::uint32_t max() const { return max_; }
    std::uint32_t defaultValue() const { return defaultValue_; }
    /// 0-based index of the first slot. The fixture gives it, see Fixture::setControlAddresses().
    std::uint32_t address() const { return address_; }
    void setAddress(std::uint32_t address) { address_ = address; }
    /// Where the level stands in the universe; nowhere for a dummy.
    SlotPlace place() const { return dummy_ ? SlotPlace() : slotPlace(address_, channels_); }
    /// Universe and 1-based slot.
    QString toolTip() const;

    // --- Level and time

    std::uint32_t value() const;
    /// Sets the level at once, without a fade: the one way for everything that moves it by hand.
    void setValue(std::uint32_t value);
    /// Fade time in seconds for the next new level.
    float time() const { return time_; }
    void setTime(float time);
    /// Goes to `value` over `time` seconds, which becomes the fade time.
    void setDMXValue(std::uint32_t value, float time);
    /// Goes to the profile's default at once; the fade time becomes 0.
    void setDefault();
    bool notDefault() const { return value() != defaultValue_; }
    Fade fade() const;
    /// Advances a running fade and writes the level into the universe's slots; true when a slot changed.
    bool updateDMX(Slots universe);

    /// A step up or down within the range; a level beyond the range stays when the step leads further out.
    void step(std::int64_t levels);

    // --- Typing

    const NumericEntry& entry() const { return numericEntry_; }
    /// Takes a digit or a point.
    void type(char character);
    void removeLast();
    /// The number that is being typed, or the next one, is a fade time.
    void setTimeMode() { numericEntry_.setTimeMode(); }
    /// Applies the number that is being typed; true when a new level was asked for. The number stays.
    bool endEdit();
    /// Drops the number that is being typed.
    void endEntry();

    // --- Selection

    /// Whether it is the fader of its fixture that listens to keys.
    bool firstResponder() const { return firstResponder_; }
    /// Becomes the selected fader of its fixture, which listens to keys from now on.
    void becomeFirstResponder();
    void resignFirstResponder();

private:
    friend class Faders;

    void tellChanged();

    Fixture& fixture_;
    QString name_;
    QString key_;
    std::uint32_t index_;
    std::uint32_t address_ = 0;
    std::uint32_t channels_;
    std::uint32_t max_;
    std::uint32_t defaultValue_;
    float time_ = 0;
    NumericEntry numericEntry_;
    bool firstResponder_ = false;
    bool hide_;
    bool header_;
    bool dummy_;
};
