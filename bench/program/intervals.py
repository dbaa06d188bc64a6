"""What the moments of datagrams tell: how far apart they are, and whether a fade stays on its line."""

import statistics

TICK = 33.3  # milliseconds


def between(moments):
    """The milliseconds from each moment to the next."""
    return [(later - earlier) * 1e3 for earlier, later in zip(moments, moments[1:])]


def longest_between(moments, begin, end):
    """The longest time without a datagram from one moment to another, in milliseconds, the open one at the end too."""
    inside = [moment for moment in moments if begin <= moment <= end]
    before = max((moment for moment in moments if moment < begin), default=begin)
    return max(between([before, *inside, end]))


def each_between(datagrams, begin, end):
    """The milliseconds between the datagrams of each universe, all in one list."""
    moments = {}
    for datagram in datagrams:
        if begin <= datagram.moment <= end:
            moments.setdefault(datagram.universe, []).append(datagram.moment)
    return [interval for of_one in moments.values() for interval in between(of_one)]


def farthest_from_line(datagrams, begin, end, seconds):
    """How far a fade of 16 bits over slots 1 and 2 that goes all the way up in so many seconds is from its line: the
    milliseconds by which the level of a datagram is early or late, at most."""
    begins = [datagram.moment - int.from_bytes(datagram.slots[:2], "big") / 65535 * seconds
              for datagram in datagrams
              if begin <= datagram.moment <= end and 0 < int.from_bytes(datagram.slots[:2], "big") < 65535]
    if not begins:
        return None
    middle = statistics.median(begins)
    return max(abs(moment - middle) for moment in begins) * 1e3
