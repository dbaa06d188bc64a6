"""What a case is measured on: a display, a build, and a home of its own for each console."""

import time
from typing import NamedTuple

from arrivals import Arrivals
from display import Display
from home import Home, write
from process import Process
from rigs import MAIN
from started import Started
from waiting import wait_until
from x11 import Line


class Screen(Display):
    """A display whose windows are put where they are to be measured."""

    def wait_until_empty(self):
        """Waits until the window manager has let go of the windows of programs that have ended."""
        with Line(self.name) as line:
            wait_until(lambda: not line.windows(), "an empty display", 60)

    def put_on_desktop(self, desktop, titles):
        """Puts windows on another desktop, all in one go."""
        commands = [part for window, title in self.windows().items() if title in titles
                    for part in ("set_desktop_for_window", window, desktop)]
        self.xdotool(*commands)


class Reading(NamedTuple):
    """One figure of a case: a number in a unit, or a text where there is no number."""

    name: str
    value: float | str
    unit: str


class CannotBeMeasured(Exception):
    """A build or a machine lacks what a case needs."""


class Bed:
    """`hurry` shortens every stretch of time over which something is measured."""

    def __init__(self, display, build, hurry=1.0):
        self.display = display
        self.build = build
        self._hurry = hurry

    def stretch(self, seconds):
        return seconds * self._hurry

    def home(self, rig, stack):
        """A new home with this rig until the stack ends, and an empty display; what is sent meanwhile is kept."""
        self.display.wait_until_empty()
        home = stack.enter_context(Home(rig.profiles, rig.configurations))
        self.put_rig(home, rig)
        self.arrivals = stack.enter_context(Arrivals())
        return home

    @staticmethod
    def put_rig(home, rig):
        """Leaves the settings in the home, as a run before would have."""
        if rig.settings:
            write(home.settings_file, rig.settings)

    def running(self, rig, stack, **options):
        """A console with this rig until the stack ends, its windows being there."""
        return self.running_in(self.home(rig, stack), rig, stack, **options)

    def running_in(self, home, rig, stack, **options):
        options = {"titles": rig.titles, **options}
        return stack.enter_context(
            Started(self.display, home, arrivals=self.arrivals, program=self.build.program, **options))

    def share(self, pid, seconds):
        """The part of one core that a process takes, over so many seconds."""
        share = Process(pid).share()
        time.sleep(self.stretch(seconds))
        return share.percent()

    def next_cue(self):
        self.display.activate(MAIN)
        self.display.key("ctrl+a")
