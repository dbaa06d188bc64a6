"""A receiver of Art-Net datagrams on the loopback."""

import socket
import threading
import time
from typing import NamedTuple

from waiting import DEADLINE, wait_until

PORT = 6454
SLOTS_AT = 18
SLOT_COUNT = 512


def levels(slots):
    """The slots as 512 bytes, from a dictionary of 1-based slot to level; the others are 0."""
    data = bytearray(SLOT_COUNT)
    for slot, level in slots.items():
        data[slot - 1] = level
    return bytes(data)


def next_sequence(sequence):
    """What follows in the sequence byte: 2 to 255, then 0, then 2; never 1."""
    return 2 if sequence == 0 else (sequence + 1) % 256


class Datagram(NamedTuple):
    moment: float  # of the monotonic clock, in seconds
    packet: bytes

    @property
    def sequence(self):
        return self.packet[12]

    @property
    def universe(self):
        return self.packet[14]

    @property
    def slots(self):
        return self.packet[SLOTS_AT:]


class LevelReader:
    """Whoever can tell the levels of a universe."""

    def slots(self, universe):
        """The 512 levels of a universe as they came last; nothing when none came."""
        raise NotImplementedError

    def wait_for_levels(self, universe, slots, seconds=DEADLINE):
        """Waits until a universe's last datagram holds exactly these levels, the others being 0."""
        expected = levels(slots)
        wait_until(
            lambda: self.slots(universe) == expected,
            lambda: f"universe {universe} at {slots}, it is {self._shown(universe)}",
            seconds,
        )

    def _shown(self, universe):
        slots = self.slots(universe)
        return slots and {slot + 1: level for slot, level in enumerate(slots) if level}


class Receiver(LevelReader):
    """Keeps every datagram that comes to an address of the loopback while it is open."""

    def __init__(self, address="127.0.0.1"):
        self._address = address
        self._datagrams = []

    def __enter__(self):
        self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self._socket.bind((self._address, PORT))
        self._thread = threading.Thread(target=self._listen, daemon=True)
        self._thread.start()
        return self

    def __exit__(self, *_):
        # An empty datagram wakes the thread and ends it.
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as waker:
            waker.setsockopt(socket.SOL_SOCKET, socket.SO_BROADCAST, 1)
            waker.sendto(b"", (self._address, PORT))
        self._thread.join()
        self._socket.close()

    def _listen(self):
        while packet := self._socket.recv(2048):
            self._datagrams.append(Datagram(time.monotonic(), packet))

    def datagrams(self, universe=None):
        """What has come so far, in order."""
        return [d for d in list(self._datagrams) if universe is None or d.universe == universe]

    def forget(self):
        self._datagrams.clear()

    def slots(self, universe):
        known = self.datagrams(universe)
        return known[-1].slots if known else None

    def course(self, universe, slot, channels=1):
        """The levels a slot, or a pair of slots, went through, as (moment, level) of each change.

        The first is what it stood at to begin with.
        """
        course = []
        for datagram in self.datagrams(universe):
            level = int.from_bytes(datagram.slots[slot - 1 : slot - 1 + channels], "big")
            if not course or course[-1][1] != level:
                course.append((datagram.moment, level))
        return course

    def wait_for_count(self, count, universe=None, seconds=DEADLINE):
        """The first `count` datagrams, once so many have come."""
        wait_until(
            lambda: len(self.datagrams(universe)) >= count,
            lambda: f"{count} datagrams, {len(self.datagrams(universe))} came",
            seconds,
        )
        return self.datagrams(universe)[:count]

    def is_silent_for(self, seconds):
        """Whether nothing comes for a stretch of time, which begins now."""
        before = len(self._datagrams)
        deadline = time.monotonic() + seconds
        while time.monotonic() < deadline:
            if len(self._datagrams) != before:
                return False
            time.sleep(0.01)
        return True
