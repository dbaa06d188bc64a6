"""A model of a show, made independently of the program: what a receiver must see of what an operator does."""

from dataclasses import dataclass
from typing import NamedTuple

from receiver import SLOT_COUNT, next_sequence

# Of the spot: its faders, each with its first slot counted from 0, its number of slots and its default.
SPOT = {"Dimmer": (0, 1, 0), "Pan": (1, 2, 0), "Shutter": (6, 1, 32), "Red": (7, 1, 0), "Green": (8, 1, 0)}


@dataclass
class Level:
    value: int
    time: float = 0.0


class Place(NamedTuple):
    """The slots of a fader, counted from 0."""

    universe: int
    first: int
    count: int

    def value_in(self, slots):
        return int.from_bytes(slots[self.first : self.first + self.count], "big")

    def written(self, slots, value):
        return slots[: self.first] + value.to_bytes(self.count, "big") + slots[self.first + self.count :]


class Change(NamedTuple):
    """What becomes of the universes: each had certain slots and comes to have others. All slots change in one
    datagram, but for those of faders that take their time."""

    before: dict
    after: dict
    moving: list

    def check(self, datagrams):
        """Every one of the datagrams belongs to this change, and to no other."""
        began = set()
        present = {place: place.value_in(self.before[place.universe]) for place in self.moving}
        for universe, slots in ((datagram.universe, datagram.slots) for datagram in datagrams):
            if universe not in began and slots == self.before.get(universe):
                continue
            began.add(universe)
            expected = self.after.get(universe)
            if expected is None:
                raise AssertionError(f"Universe {universe} has never been in use")
            for place in self.moving:
                if place.universe == universe:
                    value = place.value_in(slots)
                    self._check_way(present[place], value, place.value_in(self.after[universe]))
                    present[place] = value
                    expected = place.written(expected, value)
            if slots != expected:
                raise AssertionError(f"Universe {universe}: {_differences(slots, expected)}")

    @staticmethod
    def _check_way(earlier, value, target):
        if not min(earlier, target) <= value <= max(earlier, target):
            raise AssertionError(f"A fader on its way from {earlier} to {target} is at {value}")


def _differences(slots, expected):
    return ", ".join(f"slot {index + 1} is {slot} and not {other}"
                     for index, (slot, other) in enumerate(zip(slots, expected)) if slot != other)


def check_sequences(datagrams):
    """No datagram of a universe is missing; the first of each carries 2."""
    last = {}
    for datagram in datagrams:
        expected = next_sequence(last.get(datagram.universe, 1))
        if datagram.sequence != expected:
            raise AssertionError(f"Universe {datagram.universe}: {datagram.sequence} follows, not {expected}")
        last[datagram.universe] = datagram.sequence


def _order(number):
    return [int(part) for part in number.split(".")]


class Show:
    """Spots by name, each at a universe and an address, with their levels and cues.

    Operations tell what a receiver sees of them. Slots that no fader stands on are 0.
    """

    def __init__(self, spots):
        self._universes = {}
        self.load(spots)

    def load(self, spots):
        """A rig takes the place of the one before, at rest and without cues."""
        before = dict(self._universes)
        self.spots = dict(spots)
        self.levels = {f"{spot}.{fader}": Level(default)
                       for spot in spots for fader, (_, _, default) in SPOT.items()}
        self.cues = {}
        self.current = None
        self._write()
        return Change(before, dict(self._universes), [])

    def universes(self):
        """The numbers of those that a fixture stands in."""
        return {universe for universe, _ in self.spots.values()}

    # --- What an operator does -------------------------------------------------------------------------

    def set(self, key, value):
        return self._move({key: Level(value, self.levels[key].time)})

    def drag(self, key, value):
        change = self.set(key, value)
        return change._replace(moving=[self._place(key)])

    def set_time(self, key, time):
        self.levels[key].time = time
        return self._move({})

    def patch(self, spot, universe, address):
        before = dict(self._universes)
        self.spots[spot] = (universe, address)
        self._write()
        return Change(before, dict(self._universes), [])

    def new_cue(self, number):
        self.cues[number] = None
        self.current = number
        return self._move({})

    def store(self):
        self.cues[self.current] = {key: Level(level.value, level.time) for key, level in self.levels.items()
                                   if level.value != self._default(key) or level.time}
        return self._move({})

    def delete_cue(self):
        del self.cues[self.current]
        self.current = None
        return self._move({})

    def select(self, number):
        self.current = number
        return self._move({})

    def choose(self, number):
        self.current = number
        return self._move({key: self.cues[number].get(key, Level(self._default(key))) for key in self.levels})

    def next(self):
        return self._step(1, 0)

    def previous(self):
        return self._step(-1, -1)

    def _step(self, direction, first):
        numbers = self.numbers()
        if self.current is None:
            return self.choose(numbers[first])
        return self.choose(numbers[(numbers.index(self.current) + direction) % len(numbers)])

    def numbers(self):
        return sorted(self.cues, key=_order)

    def clear(self):
        self.current = None
        return self._move({key: Level(self._default(key)) for key in self.levels})

    def restart(self):
        """The program ends and starts again: levels and cues are back, times are not."""
        self.current = None
        self._universes = {}
        for level in self.levels.values():
            level.time = 0.0
        self._write()
        return Change({}, dict(self._universes), [])

    # --- What stands in the files ----------------------------------------------------------------------

    def cue_table(self):
        return {number: [{"key": key, "value": level.value, "time": level.time}
                         for key, level in sorted(levels.items())]
                for number, levels in self.cues.items()}

    def saved_levels(self):
        return [{"key": key, "value": level.value, "time": 0}
                for key, level in sorted(self.levels.items()) if level.value != self._default(key)]

    # --- Slots -----------------------------------------------------------------------------------------

    def _move(self, targets):
        moving = [self._place(key) for key, target in targets.items() if target.time]
        before = dict(self._universes)
        for key, target in targets.items():
            self.levels[key] = Level(target.value, target.time)
        self._write()
        return Change(before, dict(self._universes), moving)

    def _write(self):
        self._universes = {universe: bytes(SLOT_COUNT) for universe in self._universes}
        for key, level in self.levels.items():
            place = self._place(key)
            slots = self._universes.get(place.universe, bytes(SLOT_COUNT))
            self._universes[place.universe] = place.written(slots, level.value)

    def _place(self, key):
        spot, fader = key.split(".")
        universe, address = self.spots[spot]
        first, count, _ = SPOT[fader]
        return Place(universe, address - 1 + first, count)

    @staticmethod
    def _default(key):
        return SPOT[key.split(".")[1]][2]
