#pragma once

#include <cstddef>
#include <cstdint>

class DMXControl;
class Fixture;
class Fixtures;

/// Who is heard in a slot; both null when nobody is.
struct SlotOwner {
    Fixture* fixture = nullptr;
    DMXControl* control = nullptr;
};

/// The fixture and the fader that drive a universe's slot, counted from 0. Of several it is the last one,
/// which writes over what the others wrote.
SlotOwner ownerOfSlot(const Fixtures& fixtures, std::int32_t universe, std::size_t slotIndex);
