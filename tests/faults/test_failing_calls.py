#!/usr/bin/env python3
"""Lets every system call of a save fail, one at a time: the first, the second, until there are no more."""

import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from saver import SKIPPED, Saver, generation_in

CALLS = ("open", "openat", "read", "write", "fsync", "fchmod", "rename", "renameat", "renameat2", "link", "linkat",
         "unlink", "mkdir")
ERRORS = ("EIO", "ENOSPC", "EINTR", "EMFILE")

# Those that a signal may interrupt are made again.
INTERRUPTIBLE = ("open", "openat", "read", "write", "fsync", "fchmod", "rename", "renameat", "renameat2")
# Without these a save goes on, and keeps the generation before only if it can.
FOR_PREVIOUS = ("link", "rename", "renameat", "renameat2")

# More calls of one kind than a save can make.
TOO_MANY = 200


class CannotAttach(Exception):
    """This system lets nobody trace a program."""


def prepared(folder):
    """A folder with two generations saved; the path of the file."""
    path = Path(folder, "Faderhall.plist")
    for name in path.parent.iterdir():
        name.unlink()
    saver = Saver(path, 2)
    saver.begin()
    saver.end()
    return path


def save_with_failure(path, call, error, number):
    """Saves with that call of its kind failing. Returns whether it was made at all, and whether it says it saved."""
    saver = Saver(path, 1)
    log = path.with_name("strace")
    with subprocess.Popen(["strace", "-p", str(saver.process.pid), "-o", log, "-e", f"trace={call}",
                           "-e", f"inject={call}:error={error}:when={number}"],
                          stderr=subprocess.PIPE, text=True) as strace:
        while "attached" not in (line := strace.stderr.readline()):
            if not line:
                raise CannotAttach
        saver.begin()
        status, _ = saver.end()
        strace.wait(30)
    was_hit = "(INJECTED)" in log.read_text()
    log.unlink()
    if status not in (0, 1):
        raise AssertionError(f"status {status}")
    return was_hit, status == 0


def readable_generations(folder):
    """Those of all files but strays that wait for the next start."""
    return [generation_in(path) for path in folder.iterdir() if ".unfinished-" not in path.name]


def check(path, saved, call, error):
    """The file is whole and the one that the saver told of, and the one before is not lost."""
    found = generation_in(path)
    if saved and found != 3:
        raise AssertionError(f"generation {found} stands where a save was told of")
    if found not in (2, 3):
        raise AssertionError(f"generation {found} stands in the file")
    if not saved and error == "EINTR" and call in INTERRUPTIBLE:
        raise AssertionError("an interrupted call was not made again")
    if call not in FOR_PREVIOUS and 2 not in readable_generations(path.parent):
        raise AssertionError("the generation before is lost")


def check_next(path):
    """After the failure has gone the next save succeeds and nothing unfinished is left."""
    before = generation_in(path)
    saver = Saver(path, 1)
    saver.begin()
    saver.end()
    if generation_in(path) != before + 1 or any(".unfinished-" in name.name for name in path.parent.iterdir()):
        raise AssertionError("the next save did not put things right")


def fail_every(folder, call, error):
    """How many calls of that kind there were to fail."""
    for number in range(1, TOO_MANY):
        path = prepared(folder)
        was_hit, saved = save_with_failure(path, call, error, number)
        if not was_hit:
            return number - 1
        try:
            check(path, saved, call, error)
            check_next(path)
        except AssertionError as failure:
            raise AssertionError(f"{error} from {call} number {number}: {failure}") from failure
    raise AssertionError(f"{call} does not come to an end")


def can_attach():
    if not shutil.which("strace"):
        return False
    with tempfile.TemporaryDirectory(prefix="faderhall-strace-") as folder:
        try:
            save_with_failure(prepared(folder), "fsync", "EIO", TOO_MANY)
        except CannotAttach:
            return False
    return True


def main():
    if not can_attach():
        print("Skipped: strace cannot attach to a program here")
        sys.exit(SKIPPED)
    calls = sys.argv[1:] or CALLS
    total = 0
    with tempfile.TemporaryDirectory(prefix="faderhall-failing-") as folder:
        for call in calls:
            counts = {error: fail_every(folder, call, error) for error in ERRORS}
            total += sum(counts.values())
            if any(counts.values()):
                print(f"{call}: {counts}", flush=True)
    print(f"{total} failing calls: 0 files torn, empty or lost")


if __name__ == "__main__":
    main()
