"""An installed Faderhall in a scratch folder."""

import os
import subprocess
import tempfile
from pathlib import Path

BUILD = os.environ["FADERHALL_BUILD"]
CMAKE = os.environ["CMAKE"]
IDENTIFIER = "com.ktq.orvaneapplications.faderhall"
PROGRAM, HEADLESS, COMMON = PARTS = ("faderhall", "faderhall-headless", "faderhall-common")


def output_of(*command, given=""):
    """What a command writes that is given a text; its failure tells all of it."""
    result = subprocess.run(command, text=True, check=False, timeout=120, input=given,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if result.returncode != 0:
        raise AssertionError(f"{command}, status {result.returncode}:\n{result.stdout}")
    return result.stdout


class InstalledTree:
    """What `cmake --install` puts below a prefix, all of it or one part; it goes with the block."""

    def __init__(self, part=None):
        self._part = ["--component", part] if part else []

    def __enter__(self):
        self._scratch = tempfile.TemporaryDirectory(prefix="faderhall-installed-")
        self.prefix = Path(self._scratch.name)
        output_of(CMAKE, "--install", BUILD, "--prefix", self.prefix, *self._part)
        return self

    def __exit__(self, *_):
        self._scratch.cleanup()

    def program(self, name=PROGRAM):
        return self.prefix / "bin" / name

    @property
    def files(self):
        return sorted(str(path.relative_to(self.prefix)) for path in self.prefix.rglob("*") if path.is_file())
