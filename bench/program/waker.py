"""A process that only wakes with every tick: how evenly this machine lets anyone do so at the time.

    waker.py SECONDS    prints the milliseconds between its wakings, one per line
"""

import sys
import time

TICK = 0.0333


def main():
    start = time.monotonic()
    moments = []
    while (now := time.monotonic()) < start + float(sys.argv[1]):
        moments.append(now)
        time.sleep(max(0, start + len(moments) * TICK - time.monotonic()))
    print(*((later - earlier) * 1e3 for earlier, later in zip(moments, moments[1:])), sep="\n")


if __name__ == "__main__":
    main()
