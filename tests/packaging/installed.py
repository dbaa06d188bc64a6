"""An installed Faderhall in a scratch folder."""

import os
import subprocess
import tempfile
from pathlib import Path

BUILD = os.environ["FADERHALL_BUILD"]
CMAKE = os.environ["CMAKE"]
IDENTIFIER = "com.ktq.orvaneapplications.faderhall"


def output_of(*command, given=""):
    """What a command writes that is given a text; its failure tells all of it."""
    result = subprocess.run(command, text=True, check=False, timeout=120, input=given,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if result.returncode != 0:
        raise AssertionError(f"{command}, status {result.returncode}:\n{result.stdout}")
    return result.stdout


class InstalledTree:
    """What `cmake --install` puts below a prefix; it goes with the block."""

    def __enter__(self):
        self._scratch = tempfile.TemporaryDirectory(prefix="faderhall-installed-")
        self.prefix = Path(self._scratch.name)
        output_of(CMAKE, "--install", BUILD, "--prefix", self.prefix)
        return self

    def __exit__(self, *_):
        self._scratch.cleanup()

    @property
    def program(self):
        return self.prefix / "bin" / "faderhall"

    @property
    def files(self):
        return sorted(str(path.relative_to(self.prefix)) for path in self.prefix.rglob("*") if path.is_file())
