"""Tells when the windows of a program that is about to start stand painted on a display.

    painted.py DISPLAY WINDOWS SECONDS

Prints "ready", and then, once there are so many windows more than before and nothing has been painted for a while,
the moment of the last painting in seconds of the wall clock; "late" when that does not come true within the time. What
is painted behind other windows cannot be seen and does not count.
"""

import sys
import time

from x11 import Painting

PAUSE = 0.005
QUIET = 0.45  # shorter than the blinking of a text cursor, longer than any pause between two windows


def last_painting(painting, wanted, seconds):
    """The moment of it; nothing when it does not come in time."""
    deadline = time.time() + seconds
    complete = None
    painted = time.time()
    while (now := time.time()) < deadline:
        if painting.happened():
            painted = now
        if complete is None and len(painting.windows()) >= wanted:
            complete = now
        if complete and now - max(painted, complete) > QUIET:
            return max(painted, complete)
        time.sleep(PAUSE)
    return None


def main():
    display, count, seconds = sys.argv[1], int(sys.argv[2]), float(sys.argv[3])
    with Painting(display) as painting:
        wanted = len(painting.windows()) + count
        print("ready", flush=True)
        moment = last_painting(painting, wanted, seconds)
        print("late" if moment is None else f"{moment:.6f}", flush=True)


if __name__ == "__main__":
    main()
