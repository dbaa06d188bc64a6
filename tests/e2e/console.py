"""The built program, run in a scratch home on a display of its own."""

import os
import signal
import subprocess
from pathlib import Path
from typing import NamedTuple

from display import keys_of
from waiting import wait_until

PROGRAM = Path(os.environ["FADERHALL"])
BUILD = PROGRAM.parent
MAIN_WINDOW = "Faderhall"

# A program with sanitizers needs more of the system than one without, and its leak detector cannot be traced.
INSTRUMENTED = b"__asan_init" in PROGRAM.read_bytes()
TRACEABLE = {"ASAN_OPTIONS": "detect_leaks=0"}

# An instrumented build takes its time.
START_SECONDS = 60
END_SECONDS = 30

ADDRESS_FIELD = (260, 40)  # a point in it

# Points in the cells of the first fixture's row in the table.
NAME_CELL, UNIVERSE_CELL, ADDRESS_CELL = (75, 120), (270, 120), (360, 120)
TABLE_ROW_HEIGHT = 24

COLUMN_WIDTH = 150
ROW_HEIGHT = 19

KEPT_VARIABLES = ("PATH", "LSAN_OPTIONS", "ASAN_OPTIONS", "UBSAN_OPTIONS")


class Fader(NamedTuple):
    """A fader by its window's title and its place in the column layout, both counted from 0."""

    title: str
    column: int
    row: int

    def point(self, across=0.5):
        """A point on the fader, `across` its width from the left."""
        return (COLUMN_WIDTH * self.column + round(COLUMN_WIDTH * across),
                ROW_HEIGHT * self.row + ROW_HEIGHT // 2)


def environment(home, **changes):
    """What the program is started with: nothing of the caller's but the path and the sanitizers' options."""
    kept = {name: os.environ[name] for name in KEPT_VARIABLES if name in os.environ}
    return {
        **kept,
        "HOME": str(home.folder),
        "XDG_CONFIG_HOME": str(home.config),
        "XDG_RUNTIME_DIR": str(home.runtime),
        "LC_ALL": "C.UTF-8",
        "DBUS_SESSION_BUS_ADDRESS": f"unix:path={home.runtime}/no-bus",
        **changes,
    }


class Console:
    """A console that runs from the beginning of a block to its end.

    It has ended as it should when its status is 0 and it wrote nothing to standard error, which is where a
    sanitizer would report. A block that fails leaves a picture of the screen in the current folder.
    """

    def __init__(self, display, home, titles, arguments=None, program=PROGRAM, **changes):
        """`titles` are those of the windows that are there once it has started, the last one in front.

        `changes` are changes to the environment.
        """
        self.display = display
        self.home = home
        self._titles = titles
        self._command = [program, *(["--resources", home.resources] if arguments is None else arguments)]
        self._environment = environment(home, DISPLAY=display.name, **changes)

    def __enter__(self):
        self._stdout = self.home.output / "stdout"
        self._stderr = self.home.output / "stderr"
        with open(self._stdout, "wb") as stdout, open(self._stderr, "wb") as stderr:
            self.process = subprocess.Popen(self._command, env=self._environment, stdin=subprocess.DEVNULL,
                                            stdout=stdout, stderr=stderr)
        try:
            self.wait_for_windows(self._titles)
        except BaseException:
            self._give_up()
            raise
        return self

    def __exit__(self, exception_type, *_):
        if exception_type:
            self._give_up()
        elif self.process.returncode is None:
            self.terminate()

    def _give_up(self):
        if self.process.poll() is None:
            self.display.screenshot(f"failure-{self.process.pid}.png")
            self.process.kill()
        self.process.wait()
        print(f"Console {self.process.pid}, status {self.process.returncode}\n"
              f"standard output:\n{self.stdout}standard error:\n{self.stderr}")

    @property
    def stdout(self):
        return self._stdout.read_text()

    @property
    def stderr(self):
        return self._stderr.read_text()

    # --- Ways to end -----------------------------------------------------------------------------------

    def terminate(self, number=signal.SIGTERM):
        self.process.send_signal(number)
        self.wait_for_end()

    def quit(self):
        self.display.key("ctrl+q")
        self.wait_for_end()

    def close(self):
        """Closes the main window as its title bar does."""
        self.display.activate(MAIN_WINDOW)
        self.display.key("alt+F4")
        self.wait_for_end()

    def kill(self, number=signal.SIGKILL):
        """Ends the program without its doing."""
        self.process.send_signal(number)
        self.process.wait(END_SECONDS)

    def wait_for_end(self):
        status = wait_until(lambda: self._status(), "the end of the program", END_SECONDS)
        if status != "0" or self.stderr:
            raise AssertionError(f"Exit status {status}, standard error:\n{self.stderr}")

    def _status(self):
        status = self.process.poll()
        return None if status is None else str(status)

    # --- What an operator does -------------------------------------------------------------------------

    def wait_for_windows(self, titles):
        """Waits until exactly these windows are there and the last of them has the keys."""
        wait_until(lambda: self._shows(sorted(titles)),
                   lambda: f"windows {sorted(titles)}, there are {self.display.shown_titles()}", START_SECONDS)
        self.display.settle()
        self.display.wait_for_front(titles[-1])

    def _shows(self, titles):
        if self.process.poll() is not None:
            raise AssertionError(f"The program has ended:\n{self.stderr}")
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
