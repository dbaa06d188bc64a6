"""Tells when the windows of a program that is about to start stand painted on a display.

    painted.py DISPLAY WINDOWS SECONDS

Prints "ready", and then, once there are so many windows, the moment in seconds of the wall clock at which they were
painted; "late" when that does not come true within the time. They are painted when the program has answered twice since
they were there, the second time after all that it had to paint when it first answered, and when nothing on the screen
has been painted for a while.
"""

import sys
import time

from x11 import Watcher

PAUSE = 0.005
ANSWERS = 2
QUIET = 0.45  # seconds; a text cursor blinks every half second


def last_painting(watcher, wanted, seconds):
    """The moment of it; nothing when it does not come in time."""
    deadline = time.time() + seconds
    asked = 0
    last = None
    while (now := time.time()) < deadline:
        answers = watcher.answers
        watcher.look()
        if watcher.was_painted or watcher.answers > answers:
            last = now
        if asked == watcher.answers < ANSWERS and len(windows := watcher.windows()) >= wanted:
            watcher.ask(windows[-1])
            asked += 1
        if watcher.answers == ANSWERS and now - last > QUIET:
            return last
        time.sleep(PAUSE)
    return None


def main():
    display, count, seconds = sys.argv[1], int(sys.argv[2]), float(sys.argv[3])
    with Watcher(display) as watcher:
        print("ready", flush=True)
        moment = last_painting(watcher, count, seconds)
        print("late" if moment is None else f"{moment:.6f}", flush=True)


if __name__ == "__main__":
    main()
