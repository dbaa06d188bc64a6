#include "rig/DMXControl.h"

#include "clock/MonotonicClock.h"
#include "levels/LevelMovement.h"
#include "rig/ControlDefinition.h"
#include "rig/Fixture.h"

namespace {

// Before the name is resolved, which then has the number already.
QString nameIn(Fixture& fixture, const ControlDefinition& definition) {
    if (definition.newlayer) {
        fixture.setLayerNum(fixture.layerNum() + 1);
    }
    return fixture.resolvedName(definition.name);
}

} // namespace

DMXControl::DMXControl(const ControlDefinition& definition, Fixture& fixture, std::uint32_t index)
    : fixture_(fixture), name_(nameIn(fixture, definition)), index_(index), channels_(definition.channels),
      max_(definition.max), defaultValue_(definition.defaultValue), hide_(definition.hide),
      header_(definition.header), dummy_(definition.dummy) {
    if (!dummy_) {
        key_ = fixture.key() + "." + name_;
    }
}

QString DMXControl::toolTip() const {
    return QString("Univ: %1, Addr: %2")
        .arg(static_cast<int>(fixture_.universe()))
        .arg(static_cast<int>(address_ + 1));
}

void DMXControl::tellChanged() {
    fixture_.tellChanged(*this);
}

// --- Level and time ------------------------------------------------------------------------------------

std::uint32_t DMXControl::value() const {
    return fixture_.levels().held()->value(index_);
}

void DMXControl::setValue(std::uint32_t value) {
    if (fixture_.levels().held()->setValue(index_, value)) {
        fixture_.tellMoved();
    }
}

// Compared by what it shows, too: of a time that is not a number nothing else can be told.
void DMXControl::setTime(float time) {
    const bool tintChanges = (time != 0) != (time_ != 0);
    time_ = time;
    if (tintChanges) {
        tellChanged();
    }
}

void DMXControl::setDMXValue(std::uint32_t value, float time) {
    setTime(time);
    const std::uint64_t now = time != 0 ? monotonicNanoseconds() : 0; // at once is at any time
    if (fixture_.levels().held()->goTo(index_, value, time, now)) {
        fixture_.tellMoved();
    }
}

void DMXControl::setDefault() {
    setDMXValue(defaultValue_, 0);
}

Fade DMXControl::fade() const {
    return fixture_.levels().held()->fade(index_);
}

bool DMXControl::updateDMX(Slots universe) {
    const bool changed = fixture_.levels().held()->updateDMX(index_, universe, monotonicNanoseconds());
    fixture_.tellMoved();
    return changed;
}

void DMXControl::step(std::int64_t levels) {
    setValue(steppedLevel(value(), levels, max_));
}

// --- Typing --------------------------------------------------------------------------------------------

void DMXControl::type(char character) {
    numericEntry_.append(character);
    fixture_.tellEntryChanged(*this);
}

void DMXControl::removeLast() {
    numericEntry_.removeLast();
    fixture_.tellEntryChanged(*this);
}

bool DMXControl::endEdit() {
    const NumericEntry::Outcome outcome = numericEntry_.finish(max_);
    if (outcome.time) {
        setTime(*outcome.time);
    }
    if (!outcome.value || *outcome.value == value()) {
        return false;
    }
    setDMXValue(*outcome.value, time_);
    return true;
}

void DMXControl::endEntry() {
    numericEntry_.clear();
    fixture_.tellEntryChanged(*this);
}

// --- Selection -----------------------------------------------------------------------------------------

void DMXControl::becomeFirstResponder() {
    DMXControl* const previous = fixture_.selectedControl();
    fixture_.setSelectedControl(this);
    if (previous && previous != this) {
        if (previous->firstResponder_) {
            previous->resignFirstResponder();
        }
        previous->tellChanged();
    }
    endEntry();
    firstResponder_ = true;
    tellChanged();
}

void DMXControl::resignFirstResponder() {
    endEntry();
    firstResponder_ = false;
    tellChanged();
}
