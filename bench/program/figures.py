"""Figures beside the goals that they are held to."""

import json
import statistics
from typing import NamedTuple


def percentile(values, percent):
    """The value that so many percent of all do not exceed."""
    ordered = sorted(values)
    return ordered[min(len(ordered) - 1, int(len(ordered) * percent / 100))]


class Goal(NamedTuple):
    """Between these two, the ends included."""

    lowest: float
    highest: float

    def __str__(self):
        return f"{self.lowest:g} to {self.highest:g}" if self.lowest else f"at most {self.highest:g}"


def at_most(highest):
    return Goal(0, highest)


class Figures:
    """Prints each figure as it comes and keeps all of them."""

    def __init__(self):
        self._rows = []
        print(f"{'figure':66}{'measured':>10} {'unit':6}goal", flush=True)

    def add(self, name, value, unit, goal=None):
        """`value` may be several readings; the median of them counts."""
        readings = value if isinstance(value, list) else [value]
        value = statistics.median(readings)
        verdict = "" if goal is None else "met" if goal.lowest <= value <= goal.highest else "MISSED"
        self._rows.append({"name": name, "value": value, "unit": unit, "readings": readings,
                           "goal": goal and list(goal), "verdict": verdict})
        print(f"{name:66}{value:10.2f} {unit:6}{goal or ''} {verdict}".rstrip(), flush=True)

    def save(self, path):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(json.dumps(self._rows, indent=1) + "\n")
