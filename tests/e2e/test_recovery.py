"""A run that does not reach its end, and what the next one makes of it."""

import signal
import subprocess
import unittest

import stage
from case import ConsoleTestCase
from console import ADDRESS_CELL, PROGRAM, TRACEABLE, UNIVERSE_CELL, Console
from cues import new_cue
from display import Display
from home import write
from injection import injected
from program import environment
from stage import BACK, BACK_DIMMER, DIMMER, MAIN, STAGE
from waiting import wait_until

MOVED = "Front Univ: 3 Addr: 11"


class RecoveryTestCase(ConsoleTestCase):
    def make_show(self, console):
        """Levels, a cue and a moved fixture, other than what is saved."""
        console.set(DIMMER, "128")
        console.set(BACK_DIMMER, "7")
        new_cue(console, "2.5")
        self.display.key("ctrl+w")
        self.display.activate(MAIN)
        self.display.double_click(MAIN, *UNIVERSE_CELL)
        self.display.key("3", "Return")
        self.display.double_click(MAIN, *ADDRESS_CELL)
        self.display.key("1", "1", "Return")
        self.wait_until_kept()

    def wait_until_kept(self):
        wait_until(self.is_kept, lambda: f"the show in the recovery file, which holds {self.home.recovery}")

    def is_kept(self):
        kept = self.home.recovery
        return (kept and kept.get("currCue") == "2.5" and kept["settings"]["views"][0]["address"] == 11
                and kept["levels"] == {"Front.Dimmer": 128, "Back.Dimmer": 7}
                and isinstance(kept["settings"]["cues"]["2.5"], list))

    def assert_show_is_back(self, display):
        self.receiver.forget()
        with Console(display, self.home, [MAIN, MOVED, BACK]) as console:
            self.receiver.wait_for_levels(3, {11: 128, 17: 32})
            self.receiver.wait_for_levels(2, {101: 7, 107: 32})
            # From the first datagram on, and on no other universe.
            self.assertEqual({datagram.slots for datagram in self.receiver.datagrams(2)},
                             {self.receiver.slots(2)})
            self.assertEqual({datagram.universe for datagram in self.receiver.datagrams()}, {2, 3})
            console.quit()
        self.assertEqual([record["key"] for record in self.home.settings["cues"]["2.5"]],
                         ["Back.Dimmer", "Front.Dimmer"])
        self.assertFalse(self.home.recovery_file.exists())


class CrashTest(RecoveryTestCase):
    def setUp(self):
        super().setUp()
        write(self.home.settings_file, STAGE)

    def test_the_show_is_back_after_a_kill(self):
        for number in [signal.SIGKILL, signal.SIGSEGV, signal.SIGABRT]:
            with self.subTest(number):
                with self.console() as console:
                    self.make_show(console)
                    console.kill(number)
                self.assertEqual(self.home.settings, STAGE)  # written at quit only
                self.assert_show_is_back(self.display)
            self.home.defaults_file.unlink()
            write(self.home.settings_file, STAGE)

    def test_the_show_is_back_after_the_display_has_died(self):
        with Display() as doomed:
            self.display = doomed  # for this test alone
            with self.console() as console:
                self.make_show(console)
                doomed.kill()
                console.process.wait(30)
        self.assertNotEqual(console.process.returncode, 0)
        with Display() as other:
            self.display = other
            self.assert_show_is_back(other)

    def test_going_back_brings_the_saved_rig(self):
        with self.console() as console:
            self.make_show(console)
            console.kill()
        with self.console([MAIN, MOVED, BACK]) as console:
            self.display.activate(MAIN)
            self.display.key("alt+b")
            console.wait_for_windows(stage.WINDOWS)
            self.wait_for_front({})
            console.quit()
        self.assertEqual(self.home.settings, STAGE)
        self.assertEqual(len(list(self.home.settings_file.parent.glob("Faderhall.recovery.plist.kept-*"))), 1)

    def test_other_settings_hold(self):
        with self.console() as console:
            self.make_show(console)
            console.kill()
        write(self.home.settings_file, {"views": [stage.placement("Copied", 9, 1)]})
        with self.console([MAIN, "Copied Univ: 9 Addr: 1"]) as console:
            self.receiver.wait_for_levels(9, {7: 32})
            console.quit()

    def test_files_of_a_killed_writer_are_taken_away(self):
        strays = [self.home.settings_file.with_name("Faderhall.plist.unfinished-aBcDeF"),
                  self.home.recovery_file.with_name("Faderhall.recovery.plist.unfinished-XyZxYz")]
        for stray in strays:
            stray.write_bytes(b"half of a li")
        with self.console():
            self.assertEqual([stray.exists() for stray in strays], [False, False])


class KilledQuitTest(RecoveryTestCase):
    """A quit writes the user defaults, the settings, the defaults again, and takes the recovery file away."""

    def test_the_show_is_back_wherever_its_quit_was_killed(self):
        for call in ("rename", "unlink"):
            kills = 0
            while self.kill_quit_at(call, kills + 1):
                kills += 1
                self.assert_show_is_back(self.display)
            self.assertGreater(kills, 1, f"the quit was hardly killed at {call}")

    def kill_quit_at(self, call, nth):
        """True while there is an nth such call to be killed at."""
        write(self.home.settings_file, STAGE)
        self.home.defaults_file.unlink(missing_ok=True)
        with self.console(**TRACEABLE) as console:
            self.make_show(console)
            self.display.activate(BACK)  # which is remembered too
            with injected(console.process, call, f"signal=KILL:when={nth}"):
                console.process.send_signal(signal.SIGTERM)
                return console.process.wait(30) == -signal.SIGKILL


class OneConsoleTest(ConsoleTestCase):
    def start_second(self):
        return subprocess.run([PROGRAM, "--resources", self.home.resources], capture_output=True, text=True,
                              env=environment(self.home, DISPLAY=self.display.name), check=False, timeout=60,
                              stdin=subprocess.DEVNULL)

    def test_a_second_one_brings_the_first_to_the_front_and_sends_nothing(self):
        with self.console() as console:
            console.set(DIMMER, "9")
            self.wait_for_front({1: 9})
            self.display.activate(BACK)
            second = self.start_second()
            self.assertEqual((second.returncode, second.stderr), (0, ""))
            self.assertIn("running already", second.stdout)
            self.display.wait_for_front(MAIN)
            # The sequence tells one sender from two, and a second one would send defaults first.
            sequences = [datagram.sequence for datagram in self.receiver.datagrams(2)]
            self.assertEqual(sequences, list(range(2, 2 + len(sequences))))
            console.quit()

    def test_after_a_kill_the_next_one_starts(self):
        with self.console() as console:
            console.kill()
        with self.console() as console:
            console.quit()

    def test_the_lock_goes_with_its_console(self):
        lock = self.home.settings_file.with_name("Faderhall.lock")
        with self.console():
            self.assertTrue(lock.exists())
        self.assertFalse(lock.exists())


if __name__ == "__main__":
    unittest.main()
