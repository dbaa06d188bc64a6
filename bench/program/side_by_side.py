"""Measures cases with one build or two and prints a table of them."""

import json
import signal
import statistics
import subprocess
import sys
from contextlib import contextmanager

from bed import Bed, CannotBeMeasured

LABEL = 78
COLUMN = 14


class OutOfTime(Exception):
    pass


@contextmanager
def time_limit(seconds):
    """Ends what the block does when it takes longer."""
    def ring(*_):
        raise OutOfTime(f"not within {seconds} s")

    before = signal.signal(signal.SIGALRM, ring)
    signal.alarm(seconds)
    try:
        yield
    finally:
        signal.alarm(0)
        signal.signal(signal.SIGALRM, before)


def readings(case, bed, problems):
    """What could be read of one round, by name; why the rest could not goes to the problems."""
    found = {}
    try:
        with time_limit(case.seconds):
            for reading in case.measure(bed):
                found[reading.name] = reading
    except (AssertionError, CannotBeMeasured, OutOfTime, OSError, subprocess.SubprocessError) as problem:
        problems.append(f"{case.name}, {bed.build.name}: {str(problem) or type(problem).__name__}")
    return found


class Table:
    """Prints a row for each figure as soon as its case has been measured. `builds` are the baseline and the present
    one, or only that."""

    def __init__(self, display, builds, hurry=1.0):
        self._beds = [Bed(display, build, hurry) for build in builds]
        self._quick = hurry < 1
        self._rows = []
        self.problems = []
        names = [build.name for build in builds] + (["ratio"] if len(builds) > 1 else [])
        print(f"{'case':{LABEL}}" + "".join(f"{name:>{COLUMN}}" for name in names), flush=True)

    def measure(self, case):
        problems = []
        rounds = [[readings(case, bed, problems) for bed in self._beds]
                  for _ in range(1 if self._quick else case.rounds)]
        of_builds = [[of_all[number] for of_all in rounds] for number in range(len(self._beds))]
        for name, unit in self._figures(of_builds):
            values = [values_of(name, of_build) for of_build in of_builds]
            self._row(case, name, unit, [summary(of_one, statistics.median) for of_one in values], values)
            if len(rounds) > 1:
                self._row(case, f"{name}, least of {len(rounds)}", unit, [summary(of_one, min) for of_one in values],
                          values)
        for problem in problems:
            print(problem, file=sys.stderr, flush=True)
        self.problems += problems
        if not any(any(of_build) for of_build in of_builds):
            self._row(case, "not measured", "", ["-"] * len(self._beds), [])

    @staticmethod
    def _figures(of_builds):
        """The names of all figures with their units, in order."""
        return list({name: (name, reading.unit) for of_build in of_builds for found in of_build
                     for name, reading in found.items()}.values())

    def _row(self, case, name, unit, shown, values):
        label = f"{case.name}: {name}" + (f", {unit}" if unit else "")
        columns = [f"{value:.2f}" if isinstance(value, float) else value for value in shown]
        if len(shown) > 1:
            columns.append(ratio(*shown))
        self._rows.append({"case": case.name, "figure": name, "unit": unit,
                           "builds": dict(zip([bed.build.name for bed in self._beds], shown)), "readings": values})
        print(f"{label:{LABEL}}" + "".join(f"{column:>{COLUMN}}" for column in columns), flush=True)

    def save(self, path):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(json.dumps(self._rows, indent=1) + "\n")


def values_of(name, rounds):
    return [found[name].value for found in rounds if name in found]


def summary(values, of_numbers):
    """A number if there are any, else the first text, else a dash."""
    numbers = [float(value) for value in values if not isinstance(value, str)]
    if numbers:
        return of_numbers(numbers)
    return values[0] if values else "-"


def ratio(baseline, now):
    if isinstance(baseline, str) or isinstance(now, str) or baseline <= 0:
        return "-"
    return f"{now / baseline:.3f}"
