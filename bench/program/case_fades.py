"""Cases of what a console takes while it runs: at rest, fading, with windows and without."""

import itertools
import time
from contextlib import ExitStack

from bed import CannotBeMeasured, Reading
from figures import percentile
from intervals import TICK, each_between, longest_between
from process import Process
from rigs import MAIN, SHORTEST_FADE, default_rig, full_universes, one_universe_fades
from started import is_runnable, without_display
from waiting import wait_until
from x11 import Line

ADDED = 60


def idle(bed):
    """The default rig at rest, windows shown."""
    with ExitStack() as stack:
        console = bed.running(default_rig(), stack)
        time.sleep(1)
        yield Reading("processor", bed.share(console.process.pid, 30), "% of a core")
        yield Reading("resident", Process(console.process.pid).megabytes("VmRSS"), "MB")


def headless(bed):
    """The default rig in the program without windows."""
    if not is_runnable(bed.build.headless):
        raise CannotBeMeasured(f"there is no {bed.build.headless}")
    with ExitStack() as stack:
        home = bed.home(default_rig(), stack)
        began = time.time()
        process = stack.enter_context(without_display(home, bed.build.headless))
        first = bed.arrivals.wait_for_count(1)[0]
        yield Reading("start to first datagram", (first.moment - began) * 1e3, "ms")
        time.sleep(1)
        yield Reading("processor", bed.share(process.pid, 30), "% of a core")
        yield Reading("resident", Process(process.pid).megabytes("VmRSS"), "MB")


def all_fade_visible(bed):
    """64 universes all fading, windows shown."""
    return all_fade(bed, full_universes(64, with_cues=True), visible=True)


def all_fade_hidden(bed):
    """64 universes all fading, fixtures' windows on another desktop."""
    return all_fade(bed, full_universes(64, with_cues=True), visible=False)


def all_fade(bed, rig, visible):
    with ExitStack() as stack:
        console = bed.running(rig, stack)
        if not visible:
            bed.display.put_on_desktop(1, rig.titles[1:])
        bed.next_cue()  # one goes up
        bed.next_cue()  # all go up
        time.sleep(0.5)
        bed.arrivals.forget()
        began = time.time()
        taken = share_while_fading(bed, console.process.pid, 10)
        intervals = each_between(bed.arrivals.datagrams(), began, time.time())
    yield Reading("processor", taken, "% of a core")
    yield from readings_of_intervals(intervals)


def share_while_fading(bed, pid, seconds):
    """The part of a core that is taken while faders turn round before any comes to its end."""
    share = Process(pid).share()
    end = time.monotonic() + bed.stretch(seconds)
    for key in itertools.cycle(["ctrl+a", "ctrl+r"]):
        time.sleep(max(0, min(SHORTEST_FADE - 1, end - time.monotonic())))
        if time.monotonic() >= end:
            return share.percent()
        bed.display.key(key)
    return None


def readings_of_intervals(intervals):
    if not intervals:
        raise AssertionError("nothing was sent")
    for percent in (50, 99):
        yield Reading(f"between datagrams of a universe, p{percent}", percentile(intervals, percent), "ms")
    yield Reading("between datagrams of a universe, longest", max(intervals), "ms")
    off = percentile([abs(interval - TICK) for interval in intervals], 99)
    yield Reading("off the tick, p99", off, "ms")


def adding(bed):
    """60 fixtures added at once while a universe fades."""
    with ExitStack() as stack:
        bed.running(one_universe_fades(30), stack)
        display = bed.display
        line = stack.enter_context(Line(display.name))
        bed.next_cue()
        time.sleep(0.5)
        open_add_sheet(display)
        opened = time.time()
        time.sleep(0.5)
        fill_in("lamp", ADDED, display)
        time.sleep(0.5)
        before = len(line.windows())
        pressed = time.time()
        display.key("Return")
        wait_until(lambda: len(line.windows()) >= before - 1 + ADDED, "the windows", 30)  # the sheet goes
        shown = time.time()
        time.sleep(1)
        moments = bed.arrivals.moments(0)
        yield Reading("typing into the sheet: longest between datagrams", longest_between(moments, opened, pressed),
                      "ms")
        yield Reading("adding them: longest between datagrams", longest_between(moments, pressed, shown + 1), "ms")
        yield Reading("until their windows are there", (shown - pressed) * 1e3, "ms")


def open_add_sheet(display):
    display.activate(MAIN)
    display.key("alt+x")
    wait_until(display.popups, "the menu")
    display.key("a")
    display.wait_for_front("Add Fixture")


def fill_in(words, copies, display):
    display.type(words)
    display.key("alt+c", "ctrl+a")
    display.type(str(copies))
