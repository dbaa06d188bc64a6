"""The builds that are measured side by side."""

from pathlib import Path
from typing import NamedTuple

ROOT = Path(__file__).resolve().parents[2]
OWN_PROGRAM = ROOT / "build" / "faderhall"
TOOLS = ROOT / "build" / "bench"

EMPTY_WINDOWS = TOOLS / "faderhall_empty_windows"
FAULTS = TOOLS / "libfaderhall_faults.so"


class Build(NamedTuple):
    """A build by its program. `name` is the column that its figures stand in."""

    name: str
    program: Path

    @classmethod
    def at(cls, name, place):
        """The build of a folder or of a program."""
        place = Path(place).resolve()
        return cls(name, place / "faderhall" if place.is_dir() else place)

    @property
    def headless(self):
        return self.program.with_name("faderhall-headless")

    @property
    def benchmarks(self):
        return self.program.parent / "bench" / "faderhall_bench"
