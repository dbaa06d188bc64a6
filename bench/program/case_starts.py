"""Cases of the start: first datagrams, windows and memory."""

import os
import subprocess
import time
from contextlib import ExitStack

from bed import CannotBeMeasured, Reading
from builds import EMPTY_WINDOWS
from intervals import TICK, each_between
from process import Process
from rigs import default_rig, full_universes, many_fixtures
from started import PaintedWatch, end, is_runnable

REFRESH = 1000  # milliseconds from one datagram of a universe at rest to the next
REFRESHES_SEEN = 2.5  # seconds that are watched on once the windows stand
WINDOW_SECONDS = 90
COLUMN_WIDTH, ROW_HEIGHT = 150, 19


def default_start(bed):
    """The default rig, from its start to the first datagram."""
    with ExitStack() as stack:
        console = bed.running(default_rig(), stack)
        yield Reading("start to first datagram", console.milliseconds_to_first_datagram, "ms")
        yield Reading("of it processor time", console.milliseconds_of_processor, "ms")


def many_windows(bed, fixtures=500, faders=24):
    """Fixtures with a window each: first datagram, windows painted, and refreshes meanwhile."""
    rig = many_fixtures(fixtures, faders)
    empty = milliseconds_of_empty_windows(bed, len(rig.titles), faders)
    with ExitStack() as stack:
        console, painted = start_and_paint(bed, rig, stack)
        yield Reading("start to first datagram", console.milliseconds_to_first_datagram, "ms")
        yield Reading("start to the first datagram of the last universe",
                      (last_of_firsts(bed.arrivals.datagrams()) - console.began) * 1e3, "ms")
        yield Reading("start to all windows painted", painted, "ms")
        yield Reading("as many empty windows of the toolkit", empty, "ms")
        yield Reading("painted, times the empty windows", painted / empty, "x")
        time.sleep(REFRESHES_SEEN)
        intervals = each_between(bed.arrivals.datagrams(), console.began, time.time())
        yield Reading("refreshes while windows come: latest by", max(intervals) - REFRESH, f"ms, {TICK:g} is a tick")


def last_of_firsts(datagrams):
    """When the last of all universes came for the first time."""
    firsts = {}
    for datagram in datagrams:
        firsts.setdefault(datagram.universe, datagram.moment)
    return max(firsts.values())


def full_start(bed):
    """64 universes of 512 faders, windows shown."""
    rig = full_universes(64)
    with ExitStack() as stack:
        console, painted = start_and_paint(bed, rig, stack)
        yield Reading("start to first datagram", console.milliseconds_to_first_datagram, "ms")
        yield Reading("start to all windows painted", painted, "ms")


def memory(bed):
    """131,072 faders: resident memory."""
    yield Reading("benchmarks' rig, windows not mapped", megabytes_of_benchmark_rig(bed.build), "MB")
    rig = full_universes(256)
    with ExitStack() as stack:
        console = bed.running(rig, stack, QT_QPA_PLATFORM="offscreen", titles=())
        time.sleep(1)
        yield Reading("program without a display", Process(console.process.pid).megabytes("VmRSS"), "MB")
    with ExitStack() as stack:
        console, _ = start_and_paint(bed, rig, stack)
        process = Process(console.process.pid)
        resident, pictures = process.megabytes("VmRSS"), process.megabytes("RssShmem")
        yield Reading("program, windows shown", resident, "MB")
        yield Reading("of it the windows' pictures, shared with the display", pictures, "MB")
        yield Reading("without them", resident - pictures, "MB")


def start_and_paint(bed, rig, stack):
    """A console, and the milliseconds after which its windows stood painted."""
    home = bed.home(rig, stack)
    watch = stack.enter_context(PaintedWatch(bed.display, len(rig.titles), WINDOW_SECONDS))
    console = bed.running_in(home, rig, stack, titles=())
    return console, (watch.moment() - console.began) * 1e3


def milliseconds_of_empty_windows(bed, count, rows):
    if not is_runnable(EMPTY_WINDOWS):
        raise CannotBeMeasured(f"{EMPTY_WINDOWS} is not built")
    bed.display.wait_until_empty()
    with PaintedWatch(bed.display, count, WINDOW_SECONDS) as watch:
        began = time.time()
        process = subprocess.Popen([EMPTY_WINDOWS, str(count), str(COLUMN_WIDTH), str(ROW_HEIGHT * rows)],
                                   env={**os.environ, "DISPLAY": bed.display.name, "QT_QPA_PLATFORM": "xcb"},
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            return (watch.moment() - began) * 1e3
        finally:
            end(process)


def megabytes_of_benchmark_rig(build):
    """The most that faderhall_bench holds while it builds 256 universes of 512 faders; "-" without one."""
    if not is_runnable(build.benchmarks):
        return "-"
    process = subprocess.Popen(
        [build.benchmarks, "--benchmark_filter=^buildFullRig$", "--benchmark_min_time=0"],
        env={**os.environ, "QT_QPA_PLATFORM": "offscreen", "QT_LOGGING_RULES": "*.warning=false"},
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = status
    return usage.ru_maxrss / 1024 if status == 0 else "-"
