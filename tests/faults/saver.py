"""The program that saves, and what is on the disk after it."""

import os
import plistlib
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PROGRAM = Path(os.environ.get("SAVER", ROOT / "build/tests/faults/saver"))

# strace and the leak detector cannot trace one program at once. What a sanitizer finds has a status of its own.
SANITIZERS = {"ASAN_OPTIONS": "detect_leaks=0:exitcode=99", "UBSAN_OPTIONS": "exitcode=99"}

SKIPPED = 77  # an exit status that CTest takes for a skipped test


def filling(number):
    """What the generation of that number is filled with."""
    return str(number % 10) * ((number % 7 + 1) * 8192)


def generation_in(path):
    """The number of the generation that a file holds whole; None for a missing file.

    A torn or an empty file raises what the reader says of it.
    """
    try:
        content = plistlib.loads(path.read_bytes())
    except FileNotFoundError:
        return None
    if content != {"generation": content["generation"], "filling": filling(content["generation"])}:
        raise AssertionError(f"{path} holds parts of generation {content['generation']}")
    return content["generation"]


class Saver:
    """A saver that waits for its start."""

    def __init__(self, path, count):
        self.process = subprocess.Popen([PROGRAM, path, str(count)], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, env={**os.environ, **SANITIZERS})
        if self.process.stdout.readline() != b"ready\n":
            raise AssertionError("The saver did not start")

    def begin(self):
        self.process.stdin.write(b"\n")
        self.process.stdin.flush()

    def end(self):
        """Waits for its end; returns its status and the generations that it says it saved."""
        output, _ = self.process.communicate(timeout=60)
        # What a killed one had not finished printing is no number of its own.
        return self.process.returncode, [int(line) for line in output.split(b"\n")[:-1]]


def save(path):
    """Saves one generation after the other that is there; whether the saver says that it did."""
    saver = Saver(path, 1)
    saver.begin()
    status, _ = saver.end()
    if status not in (0, 1):
        raise AssertionError(f"The saver ended with status {status}")
    return status == 0
