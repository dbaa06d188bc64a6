"""A signal to quit, whatever the console is doing: the show is saved as at any other quit.

One signal for each state; with FADERHALL_EVERY_SIGNAL in the environment every signal for every state.
"""

import contextlib
import itertools
import os
import signal
import unittest

from case import ConsoleTestCase
from console import TRACEABLE, UNIVERSE_CELL
from cues import SHEET
from injection import injected
from stage import DIMMER, MAIN, PAN
from waiting import wait_until

SIGNALS = [signal.SIGTERM, signal.SIGINT, signal.SIGHUP]


def a_sheet_is_open(console):
    console.display.key("ctrl+n")
    console.display.wait_for_front(SHEET)
    console.display.type("7")


def a_cell_is_edited(console):
    console.display.activate(MAIN)
    console.display.double_click(MAIN, *UNIVERSE_CELL)
    console.display.type("9")
    console.display.settle()


def a_menu_is_open(console):
    console.display.activate(MAIN)
    console.display.key("alt+w")
    wait_until(console.display.popups, "a menu")


def a_number_is_half_typed(console):
    console.select(PAN)
    console.display.type("12")
    console.display.settle()


def a_fade_is_running(console):
    console.select(PAN)
    console.enter("60", "s")
    console.enter("60000")


STATES = [a_sheet_is_open, a_cell_is_edited, a_menu_is_open, a_number_is_half_typed, a_fade_is_running]


class SignalTest(ConsoleTestCase):
    @contextlib.contextmanager
    def show(self, **options):
        """A console with a level to be saved; afterwards it is."""
        with self.console(**options) as console:
            console.set(DIMMER, "128")
            self.wait_for_front({1: 128})
            yield console
        self.assertFalse(self.home.recovery_file.exists())
        self.assertEqual([placement["universe"] for placement in self.home.settings["views"]], [1, 2])
        saved = {record["key"]: record["value"] for record in self.home.defaults["saved_state: Stage"]}
        self.assertEqual(saved["Front.Dimmer"], 128)
        self.home.settings_file.unlink()
        self.home.defaults_file.unlink()
        self.receiver.forget()

    def test_every_state(self):
        pairs = zip(STATES, itertools.cycle(SIGNALS))
        if "FADERHALL_EVERY_SIGNAL" in os.environ:
            pairs = itertools.product(STATES, SIGNALS)
        for state, number in pairs:
            with self.subTest(state=state.__name__, signal=number.name), self.show() as console:
                state(console)
                console.terminate(number)

    def test_during_a_drag(self):
        with self.show() as console:
            console.select(PAN)
            self.display.point(PAN.title, *PAN.point(0.2))
            with self.display.pressed():
                self.display.point(PAN.title, *PAN.point(0.4))
                self.display.point(PAN.title, *PAN.point(0.7))
                console.terminate(signal.SIGTERM)

    def test_while_the_recovery_file_is_written(self):
        with self.show(**TRACEABLE) as console:
            with slow_disk(console.process):
                console.set(PAN, "5")
                wait_until(lambda: list(self.home.recovery_file.parent.glob("*.recovery.plist*")), "the writing")
                console.set(PAN, "6")
                console.terminate(signal.SIGTERM)
        with self.console() as console:  # with nothing left of it
            self.assertEqual(list(self.home.settings_file.parent.glob("*unfinished*")), [])

    def test_a_second_signal_ends_at_once(self):
        with self.console() as console:
            console.set(DIMMER, "128")
            with slow_disk(console.process, seconds=5):
                console.process.send_signal(signal.SIGTERM)
                self.receiver.forget()
                wait_until(lambda: self.receiver.is_silent_for(1.5), "the quit sequence, which sends nothing")
                console.kill(signal.SIGTERM)
            self.assertEqual(console.process.returncode, -signal.SIGTERM)


def slow_disk(process, seconds=0.7):
    """Every sync of the process takes so long meanwhile."""
    return injected(process, "fsync", f"delay_enter={round(seconds * 1e6)}")


if __name__ == "__main__":
    unittest.main()
