"""The program without windows, run where there is nothing to show a window on."""

import os
import signal
from pathlib import Path

from program import START_SECONDS, RunningProgram
from waiting import wait_until

HEADLESS = Path(os.environ["FADERHALL_HEADLESS"])

# Neither a display nor anything that could draw on one.
NOTHING_TO_SHOW = {"QT_QPA_PLATFORM_PLUGIN_PATH": "/nonexistent", "QT_PLUGIN_PATH": "/nonexistent"}


class Headless(RunningProgram):
    """A console without windows that runs from the beginning of a block to its end."""

    def __init__(self, home, *arguments, program=HEADLESS, tables=True):
        """`tables` is false for those that the program finds by itself."""
        resources = ["--resources", home.resources] if tables else []
        super().__init__(home, [program, *resources, *arguments], **NOTHING_TO_SHOW)

    def wait_for_start(self):
        """Until a signal asks it to quit; before, it would end it."""
        wait_until(self._takes_signals, "a console that is asked by signals", START_SECONDS)

    def _takes_signals(self):
        self.check_runs()
        status = dict(line.split(":\t", 1) for line in Path(f"/proc/{self.process.pid}/status").read_text().splitlines())
        return int(status["SigCgt"], 16) >> (signal.SIGTERM - 1) & 1
