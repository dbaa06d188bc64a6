"""The figures that a build is held to, each beside its goal."""

import itertools
import random
import subprocess
import sys
import time
from contextlib import ExitStack
from pathlib import Path

from bed import Bed
from console import Fader
from cues import new_cue
from figures import Figures, Goal, at_most, percentile
from intervals import TICK, between
from keyboard import Keyboard
from process import Process
from rigs import (SHORTEST_FADE, SLOTS, default_rig, full_universes, moving_faders, rig_of, ten_thousand_cues,
                  title)
from waiting import wait_until

WAKER = Path(__file__).with_name("waker.py")


class Bench:
    def __init__(self, display, build, options):
        self._display = display
        self._bed = Bed(display, build)
        self._options = options
        self._figures = Figures()

    def save(self, path):
        self._figures.save(path)

    def running(self, rig, stack):
        """A console with this rig, in a new home, until the stack ends."""
        console = self._bed.running(rig, stack)
        self._arrivals = self._bed.arrivals
        self._display.settle()
        return console

    # --- What is measured ------------------------------------------------------------------------------

    def start(self, name, rig, milliseconds=None, megabytes=None, starts=None):
        """How soon a console sends, and what memory it holds when its windows stand."""
        times, processor, resident, pictures = [], [], [], []
        for _ in range(starts or self._options.starts):
            with ExitStack() as stack:
                console = self.running(rig, stack)
                process = Process(console.process.pid)
                times.append(console.milliseconds_to_first_datagram)
                processor.append(console.milliseconds_of_processor)
                resident.append(process.megabytes("VmRSS"))
                pictures.append(process.megabytes("RssShmem"))
        self._figures.add(f"{name}: start to first datagram", times, "ms", milliseconds)
        self._figures.add(f"{name}: of it processor time", processor, "ms")
        self._figures.add(f"{name}: resident memory", resident, "MB", megabytes)
        self._figures.add(f"{name}: of it the windows' pictures, shared with the display", pictures, "MB")

    def idle(self, name, rig, percent=None):
        with ExitStack() as stack:
            console = self.running(rig, stack)
            self._processor(f"{name}: idle, windows visible", console, percent)

    def fading(self, name, rig, visible=None, goals=(None, None)):
        """Idle, one fader on the way, all of them; first with the windows named visible, or with all of them, then
        with none."""
        with ExitStack() as stack:
            console = self.running(rig, stack)
            shown = ", windows visible"
            if visible:
                shown = f", {visible[1]} faders visible"
                self._put_away([known for known in rig.titles[1:] if known != visible[0]])
            self._processor(f"{name}: idle{shown}", console)
            self._next_cue()
            self._processor(f"{name}: one fades{shown}", console)
            self._next_cue()
            self._processor(f"{name}: all fade{shown}", console, goals[0])
            self._next_cue()
            self._display.xdotool("set_desktop", 2)
            self._processor(f"{name}: all fade, windows not visible", console, goals[1])
            self._display.xdotool("set_desktop", 0)

    def intervals(self):
        """Between the datagrams of a universe, while 300 faders move on the screen."""
        longest = self._options.seconds
        with ExitStack() as stack:
            self.running(moving_faders(300), stack)
            self._next_cue()
            self._next_cue()
            time.sleep(0.5)
            self._arrivals.forget()
            waker = subprocess.Popen([sys.executable, WAKER, str(longest)],
                                     stdout=subprocess.PIPE, text=True)
            end = time.monotonic() + longest
            # From the second cue to the third and back before a fader comes to its end.
            for key in itertools.cycle(["ctrl+a", "ctrl+r"]):
                time.sleep(max(0, min(SHORTEST_FADE - 0.5, end - time.monotonic())))
                if time.monotonic() >= end:
                    break
                self._display.key(key)
            intervals = between(self._arrivals.moments(0))
            floor = [float(line) for line in waker.communicate(timeout=30)[0].split()]
        name = f"300 visible faders for {longest:g} s: between datagrams"
        self._figures.add(f"{name}, median", intervals, "ms", Goal(33.25, 33.35))
        self._figures.add(f"{name}, p1", percentile(intervals, 1), "ms", Goal(31.8, 34.8))
        self._figures.add(f"{name}, p99", percentile(intervals, 99), "ms", Goal(31.8, 34.8))
        self._figures.add(f"{name}, longest", max(intervals), "ms", at_most(50))
        for part, value in [("p1", percentile(floor, 1)), ("p99", percentile(floor, 99)), ("longest", max(floor))]:
            self._figures.add(f"floor: a process that only wakes, {part}", value, "ms")

    def cue_list(self):
        """Between datagrams while cues are made and stored among ten thousand."""
        with ExitStack() as stack:
            console = self.running(ten_thousand_cues(), stack)
            self._next_cue()
            self._arrivals.forget()
            for number in ("0.5", "5000.5", "10000.5"):
                new_cue(console, number)
                self._display.key("ctrl+w")
                self._display.settle()
            moments = self._arrivals.moments(0)
        self._figures.add("10,000 cues, New Cue and Store Cue: longest between datagrams",
                          max(between(moments)), "ms", at_most(50))

    def keys(self):
        """From the press of a key that steps a fader to the datagram with the new level."""
        delays = []
        with ExitStack() as stack:
            rig = default_rig()
            console = self.running(rig, stack)
            keyboard = stack.enter_context(Keyboard(self._display.name))
            console.select(Fader(title(rig.views[0]), 0, 0))
            for number in range(self._options.presses):
                key, level = [("Right", 1), ("Left", 0)][number % 2]
                time.sleep(random.uniform(0.05, 0.12))  # anywhere between two ticks
                pressed = keyboard.press(key)
                arrived = wait_until(lambda level=level: self._arrivals.level_came_at(0, 1, level),
                                     f"level {level}")
                delays.append((arrived - pressed) * 1e3)
        name = f"key press to datagram, {len(delays)} presses"
        self._figures.add(f"{name}, p50", percentile(delays, 50), "ms")
        self._figures.add(f"{name}, p99", percentile(delays, 99), "ms", at_most(TICK + 3))

    # --- How -------------------------------------------------------------------------------------------

    def _processor(self, name, console, percent=None):
        time.sleep(0.5)
        self._figures.add(name, self._bed.share(console.process.pid, self._options.stretch), "%", percent)

    def _next_cue(self):
        self._bed.next_cue()

    def _put_away(self, titles):
        self._display.put_on_desktop(1, titles)
        self._display.settle()


def measure_all(bench):
    bench.start("default rig", default_rig(), at_most(200), at_most(60))
    bench.start("64 universes", full_universes(64), at_most(1000))
    bench.start("256 universes", full_universes(256), megabytes=at_most(160), starts=1)
    bench.idle("default rig", default_rig(), at_most(0.3))
    four = rig_of([(0, 1, 29), (0, 30, SLOTS - 29), *((universe, 1, SLOTS) for universe in (1, 2, 3))],
                  with_cues=True)
    bench.fading("4 universes", four, visible=(title(four.views[0]), 29), goals=(at_most(3), None))
    bench.fading("64 universes", full_universes(64, with_cues=True), goals=(None, at_most(2.5)))
    bench.intervals()
    bench.cue_list()
    bench.keys()


def measure_quickly(bench):
    bench.start("default rig", default_rig())
    bench.fading("1 fixture", rig_of([(0, 1, 4)], with_cues=True))
    bench.keys()
