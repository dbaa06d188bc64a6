"""The cases in which builds are measured side by side."""

from collections.abc import Callable
from typing import NamedTuple

import case_fades
import case_stalls
import case_starts


class Case(NamedTuple):
    """`measure` yields the readings of one build, and fails after so many seconds. Of several rounds the median counts,
    and the least is shown too; the builds take turns."""

    name: str
    measure: Callable
    seconds: int
    rounds: int = 1

    @property
    def description(self):
        return self.measure.__doc__.strip().split("\n\n")[0].replace("\n    ", " ")


CASES = [
    Case("default-start", case_starts.default_start, 60, rounds=9),
    Case("many-windows", case_starts.many_windows, 240),
    Case("full-start", case_starts.full_start, 120, rounds=3),
    Case("memory", case_starts.memory, 300),
    Case("idle", case_fades.idle, 90),
    Case("headless", case_fades.headless, 90),
    Case("all-fade-visible", case_fades.all_fade_visible, 120),
    Case("all-fade-hidden", case_fades.all_fade_hidden, 120),
    Case("adding", case_fades.adding, 120),
    Case("stopped-display", case_stalls.stopped_display, 120),
    Case("hung-clipboard", case_stalls.hung_clipboard, 120),
    Case("slow-disk", case_stalls.slow_disk, 120),
    Case("full-disk", case_stalls.full_disk, 120),
    Case("limited-files", case_stalls.limited_files, 120),
    Case("full-pipes", case_stalls.full_pipes, 120),
    Case("closed-pipes", case_stalls.closed_pipes, 120),
    Case("mute-bus", case_stalls.mute_bus, 120),
    Case("silent-bus", case_stalls.silent_bus, 300),
]
