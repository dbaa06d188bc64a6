#pragma once

#include "artnet/DMX_Universe.h"

#include <bitset>
#include <cstdint>
#include <map>

/// The slots of one universe that something writes into, DMX slot n (1..512) at bit n - 1.
using SlotSet = std::bitset<DMX_Universe::slotCount>;

/// Every universe that was asked for so far, by its number. None is ever taken away.
class Universes {
public:
    using ByNumber = std::map<std::int32_t, DMX_Universe>;

    /// The universe of that number, made on first use; it stays where it is.
    DMX_Universe& getUniverse(std::int32_t number);
    /// Null when nobody has asked for it yet.
    const DMX_Universe* find(std::int32_t number) const;

    ByNumber& universes() { return universes_; }
    const ByNumber& universes() const { return universes_; }

private:
    ByNumber universes_;
};
