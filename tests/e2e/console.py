"""The built program, run in a scratch home on a display of its own."""

import os
from pathlib import Path
from typing import NamedTuple

from display import keys_of
from program import START_SECONDS, RunningProgram
from waiting import wait_until

PROGRAM = Path(os.environ["FADERHALL"])
BUILD = PROGRAM.parent
MAIN_WINDOW = "Faderhall"

# A program with sanitizers needs more of the system than one without, and its leak detector cannot be traced.
INSTRUMENTED = b"__asan_init" in PROGRAM.read_bytes()
TRACEABLE = {"ASAN_OPTIONS": "detect_leaks=0"}

ADDRESS_FIELD = (260, 40)  # a point in it

# Points in the cells of the first fixture's row in the table.
NAME_CELL, UNIVERSE_CELL, ADDRESS_CELL = (75, 120), (270, 120), (360, 120)
TABLE_ROW_HEIGHT = 24

COLUMN_WIDTH = 150
ROW_HEIGHT = 19


class Fader(NamedTuple):
    """A fader by its window's title and its place in the column layout, both counted from 0."""

    title: str
    column: int
    row: int

    def point(self, across=0.5):
        """A point on the fader, `across` its width from the left."""
        return (COLUMN_WIDTH * self.column + round(COLUMN_WIDTH * across),
                ROW_HEIGHT * self.row + ROW_HEIGHT // 2)


class Console(RunningProgram):
    """A console that runs from the beginning of a block to its end.

    A block that fails leaves a picture of the screen in the current folder.
    """

    def __init__(self, display, home, titles, arguments=None, program=PROGRAM, **changes):
        """`titles` are those of the windows that are there once it has started, the last one in front.

        `changes` are changes to the environment.
        """
        self.display = display
        self._titles = titles
        command = [program, *(["--resources", home.resources] if arguments is None else arguments)]
        super().__init__(home, command, DISPLAY=display.name, **changes)

    def wait_for_start(self):
        self.wait_for_windows(self._titles)

    def keep_traces(self):
        self.display.screenshot(f"failure-{self.process.pid}.png")

    # --- Further ways to end ---------------------------------------------------------------------------

    def quit(self):
        self.display.key("ctrl+q")
        self.wait_for_end()

    def close(self):
        """Closes the main window as its title bar does."""
        self.display.activate(MAIN_WINDOW)
        self.display.key("alt+F4")
        self.wait_for_end()

    # --- What an operator does -------------------------------------------------------------------------

    def wait_for_windows(self, titles):
        """Waits until exactly these windows are there and the last of them has the keys."""
        wait_until(lambda: self._shows(sorted(titles)),
                   lambda: f"windows {sorted(titles)}, there are {self.display.shown_titles()}", START_SECONDS)
        self.display.settle()
        self.display.wait_for_front(titles[-1])

    def _shows(self, titles):
        self.check_runs()
        return self.display.titles() == self.display.shown_titles() == titles

    def select(self, fader):
        """Brings a fader's window to the front and clicks the fader."""
        self.display.activate(fader.title)
        self.display.click(fader.title, *fader.point())

    def enter(self, text, end="Return"):
        """Types a number into the selected fader and ends the entry."""
        self.display.key(*keys_of(text), end)

    def set(self, fader, text):
        self.select(fader)
        self.enter(text)

    def type_address(self, text):
        """Goes to the address field and replaces its text; Return is left to the caller."""
        self.display.activate(MAIN_WINDOW)
        self.display.key("alt+t", "ctrl+a", "BackSpace", *keys_of(text))
