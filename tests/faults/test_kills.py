#!/usr/bin/env python3
"""Kills a program at random moments of saving: test_kills.py [number of kills, by default 200]."""

import random
import sys
import tempfile
import time
from pathlib import Path

from saver import Saver, generation_in

ENDLESS = 1_000_000_000
LONGEST = 0.02  # seconds until a kill; several saves fit in


class Tally:
    def __init__(self):
        self.strays = 0
        self.saved = 0


def kill_one(path, tally):
    """Lets a saver run for a moment and holds the files to what it said before it was killed."""
    before = generation_in(path) or 0
    saver = Saver(path, ENDLESS)
    left_over = [name.name for name in path.parent.iterdir() if ".unfinished-" in name.name]
    if left_over:
        raise AssertionError(f"The saver left {left_over} of its predecessor")
    saver.begin()
    time.sleep(random.uniform(0, LONGEST))
    saver.process.kill()
    _, said = saver.end()
    last = said[-1] if said else before
    found = generation_in(path) or 0
    if found not in (last, last + 1):
        raise AssertionError(f"Generation {found} stands where {last} was saved")
    previous = generation_in(path.with_name(path.name + ".previous"))
    if previous is not None and previous not in (found, found - 1):
        raise AssertionError(f"Generation {previous} is kept beside {found}")
    tally.saved += len(said)
    tally.strays += sum(".unfinished-" in name.name for name in path.parent.iterdir())


def main():
    kills = int(sys.argv[1]) if len(sys.argv) > 1 else 200
    seed = random.randrange(1_000_000)
    random.seed(seed)
    print(f"Seed {seed}", flush=True)
    tally = Tally()
    with tempfile.TemporaryDirectory(prefix="faderhall-kills-") as folder:
        for _ in range(kills):
            kill_one(Path(folder, "Faderhall.plist"), tally)
    print(f"{kills} kills among {tally.saved} saves: 0 files torn, 0 empty, 0 lost; "
          f"{tally.strays} unfinished files were left and taken away by the next start")


if __name__ == "__main__":
    main()
