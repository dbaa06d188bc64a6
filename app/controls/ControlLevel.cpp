#include "controls/ControlLevel.h"

#include "clock/MonotonicClock.h"
#include "controls/ControlDefinition.h"

ControlLevel::ControlLevel(const std::shared_ptr<LevelArray>& levels, const ControlDefinition& definition)
    : levels_(levels), index_(static_cast<std::uint32_t>(levels->add(definition.defaultValue))),
      _channels(definition.channels), _max(definition.max), defaultValue(definition.defaultValue) {
    setDummy(definition.dummy);
}

void ControlLevel::setChannels(std::uint32_t channels) {
    _channels = channels;
    takePlace();
}

void ControlLevel::setAddress(std::uint32_t address) {
    _address = address;
    takePlace();
}

void ControlLevel::setDummy(bool dummy) {
    _dummy = dummy;
    levels_->holdFade(index_, dummy);
    takePlace();
}

void ControlLevel::takePlace() {
    levels_->setPlace(index_, _dummy ? SlotPlace() : slotPlace(_address, _channels));
}

bool ControlLevel::goTo(std::uint32_t value, float time) {
    _time = time;
    const std::uint64_t now = time != 0 ? monotonicNanoseconds() : 0; // at once is at any time
    return levels_->goTo(index_, value, time, now);
}

bool ControlLevel::updateDMX(Slots universe) {
    return levels_->updateDMX(index_, universe, monotonicNanoseconds());
}
