"""Cases in which something holds the console up while a universe fades: how long no datagram came, and how far the fade
was from its line."""

import fcntl
import os
import resource
import signal
import subprocess
import time
from contextlib import ExitStack, contextmanager

from bed import CannotBeMeasured, Reading
from builds import FAULTS
from case_fades import fill_in, open_add_sheet
from console import Fader
from cues import new_cue
from intervals import farthest_from_line, longest_between
from rigs import MAIN, one_universe_fades, title
from silentbus import SilentBus
from started import PaintedWatch

FADE_SECONDS = 20
WATCHED_SECONDS = 16  # less than the fade takes
STALL_SECONDS = 5
LEAST_PIPE = 4096
DISK_BYTES = 1 << 20


# --- What all of them do -----------------------------------------------------------------------------------


def readings_of_fade(bed, console, trouble):
    """Starts the fade, makes the trouble, and watches until the fade is nearly over.

    Whatever the trouble cannot do with a console that no longer answers is left undone.
    """
    bed.next_cue()
    began = time.time()
    time.sleep(0.3)
    begin = time.time()
    operated = attempted(trouble)
    time.sleep(max(0, began + bed.stretch(WATCHED_SECONDS) - time.time()))
    end = min(time.time(), began + WATCHED_SECONDS)
    ended_by = console.ended_by()
    yield Reading("longest between datagrams", longest_between(bed.arrivals.moments(0), begin, end), "ms")
    off = farthest_from_line(bed.arrivals.datagrams(0), begin, end, FADE_SECONDS)
    yield Reading("fade off its line by", "-" if off is None else off, "ms")
    yield Reading("could be operated", "yes" if operated else "no", "")
    if ended_by:
        yield Reading("ended by", ended_by, "")


def attempted(trouble):
    """Whether all of it could be done."""
    try:
        trouble()
    except (AssertionError, subprocess.SubprocessError):
        return False
    return True


def add_fixtures(display, words, copies):
    open_add_sheet(display)
    fill_in(words, copies, display)
    display.key("Return")


def move_windows(display, rig, seconds):
    """Moves the fixtures' windows to and fro."""
    windows = [display.window(title(view)) for view in rig.views]
    end = time.monotonic() + seconds
    step = 0
    while time.monotonic() < end:
        step += 1
        for number, window in enumerate(windows):
            place = (100 + 200 * number + step % 7 * 10, 120 + step % 5 * 10)
            display.run("xdotool", "windowmove", window, *map(str, place), stderr=subprocess.DEVNULL)
        time.sleep(0.4)


# --- The display -------------------------------------------------------------------------------------------


def stopped_display(bed):
    """The display server is stopped for 5 s."""
    def trouble():
        with bed.display.stopped():
            time.sleep(bed.stretch(STALL_SECONDS))

    rig = one_universe_fades(FADE_SECONDS)
    with ExitStack() as stack:
        console = bed.running(rig, stack)
        yield from readings_of_fade(bed, console, trouble)


def hung_clipboard(bed):
    """The owner of the clipboard is stopped, and Ctrl+V is pressed on a fader."""
    rig = one_universe_fades(FADE_SECONDS)
    with ExitStack() as stack:
        console = bed.running(rig, stack)
        console.select(Fader(title(rig.views[0]), 0, 3))
        for selection in ("clipboard", "primary"):
            stack.enter_context(bed.display.hung_owner(selection))

        def trouble():
            bed.display.activate(title(rig.views[0]))
            bed.display.key("ctrl+v")

        yield from readings_of_fade(bed, console, trouble)


# --- Disks -------------------------------------------------------------------------------------------------


def slow_disk(bed):
    """Every sync of a file takes 4 s while windows are moved."""
    rig = one_universe_fades(FADE_SECONDS)
    with ExitStack() as stack:
        home = bed.home(rig, stack)
        console = bed.running_in(home, rig, stack, **with_faults(home))

        def trouble():
            (home.output / "slow-sync").touch()
            move_windows(bed.display, rig, bed.stretch(WATCHED_SECONDS) - 2)

        yield from readings_of_fade(bed, console, trouble)
        (home.output / "slow-sync").unlink()


def with_faults(home):
    """Changes to the environment by which files in the home's output folder bring about faults."""
    if not FAULTS.exists():
        raise CannotBeMeasured(f"{FAULTS} is not built")
    return {"LD_PRELOAD": str(FAULTS), "FADERHALL_FAULTS": str(home.output)}


def full_disk(bed):
    """Nothing more can be written to the disk of the settings and the user defaults, while windows are moved and a cue
    is stored."""
    rig = one_universe_fades(FADE_SECONDS)
    with ExitStack() as stack:
        home = bed.home(rig, stack)
        disks = [home.config, home.settings_file.parent]
        for disk in disks:
            stack.enter_context(small_disk(disk))
        bed.put_rig(home, rig)
        console = bed.running_in(home, rig, stack)

        def trouble():
            for disk in disks:
                fill(disk)
            change_what_is_kept(bed, console, rig)

        yield from readings_of_fade(bed, console, trouble)


@contextmanager
def small_disk(folder):
    """A small disk of its own in place of a folder."""
    folder.mkdir(parents=True, exist_ok=True)
    mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={DISK_BYTES}", "tmpfs", folder],
                             stderr=subprocess.DEVNULL, check=False)
    if "FADERHALL_OWN_NETWORK" not in os.environ or mounted.returncode:
        raise CannotBeMeasured("no disk of its own is to be had here")
    try:
        yield
    finally:
        subprocess.run(["umount", "--lazy", folder], check=True)


def fill(disk):
    with open(disk / "filling", "wb", buffering=0) as filling:
        try:
            while True:
                filling.write(bytes(4096))
        except OSError:
            pass


def change_what_is_kept(bed, console, rig):
    """What the settings, the user defaults and the recovery file hold."""
    move_windows(bed.display, rig, 2)
    bed.display.activate(MAIN)
    new_cue(console, "7")
    bed.display.key("ctrl+w")
    move_windows(bed.display, rig, 2)


def limited_files(bed):
    """The program may no longer write to files (RLIMIT_FSIZE), while windows are moved and a cue is stored."""
    rig = one_universe_fades(FADE_SECONDS)
    with ExitStack() as stack:
        console = bed.running(rig, stack)

        def trouble():
            resource.prlimit(console.process.pid, resource.RLIMIT_FSIZE, (0, resource.RLIM_INFINITY))
            change_what_is_kept(bed, console, rig)

        yield from readings_of_fade(bed, console, trouble)


# --- Standard output and standard error --------------------------------------------------------------------


def full_pipes(bed):
    """Standard output and standard error lead to a pipe that is full and that nobody reads."""
    reading, writing = full_pipe()
    try:
        yield from speaking(bed, writing)
    finally:
        os.close(reading)
        os.close(writing)


def full_pipe():
    reading, writing = os.pipe()
    fcntl.fcntl(writing, fcntl.F_SETPIPE_SZ, LEAST_PIPE)
    os.set_blocking(writing, False)
    try:
        while os.write(writing, b"."):
            pass
    except BlockingIOError:
        pass
    os.set_blocking(writing, True)
    return reading, writing


def closed_pipes(bed):
    """Standard output and standard error lead to a pipe whose reader has gone."""
    reading, writing = os.pipe()
    os.close(reading)
    try:
        yield from speaking(bed, writing)
    finally:
        os.close(writing)


def speaking(bed, stream):
    """The console has something to say: a universe that cannot be sent and can be again, and faders of one name."""
    rig = one_universe_fades(FADE_SECONDS)
    with ExitStack() as stack:
        home = bed.home(rig, stack)
        console = bed.running_in(home, rig, stack, streams=(stream, stream), **with_faults(home))

        def trouble():
            refusal = home.output / "refusal"
            refusal.touch()
            time.sleep(bed.stretch(2.5))
            refusal.unlink()
            time.sleep(bed.stretch(2.5))
            add_fixtures(bed.display, "twin", 2)

        yield from readings_of_fade(bed, console, trouble)


# --- The message bus ---------------------------------------------------------------------------------------


def mute_bus(bed):
    """A session bus that takes connections and says nothing at all."""
    return start_beside_bus(bed, greets=False, seconds=40)


def silent_bus(bed):
    """A session bus that lets programs in and answers nothing that they ask."""
    return start_beside_bus(bed, greets=True, seconds=200)


def start_beside_bus(bed, greets, seconds):
    rig = one_universe_fades(FADE_SECONDS)
    with ExitStack() as stack:
        home = bed.home(rig, stack)
        bus = stack.enter_context(SilentBus(home.runtime / "bus", greets))
        watch = stack.enter_context(PaintedWatch(bed.display, len(rig.titles), seconds))
        try:
            console = bed.running_in(home, rig, stack, seconds=seconds, DBUS_SESSION_BUS_ADDRESS=bus.address)
        except AssertionError:
            yield Reading("start to first datagram", f"> {seconds * 1000}", "ms")
            return
        yield Reading("start to first datagram", console.milliseconds_to_first_datagram, "ms")
        yield Reading("start to all windows painted", (watch.moment() - console.began) * 1e3, "ms")
        yield from readings_of_fade(bed, console, lambda: time.sleep(bed.stretch(STALL_SECONDS)))
