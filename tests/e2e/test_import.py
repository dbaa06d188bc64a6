"""Fixtures from a library: imported by a command that needs no display, and right on the wire."""

import os
import plistlib
import stat
import subprocess
import unittest
from pathlib import Path

from case import ConsoleTestCase
from console import PROGRAM, Fader
from home import Home, read, write
from program import environment
from stage import placement
from waiting import wait_until

FIXTURES = Path(__file__).resolve().parent.parent / "library"
HEAD = FIXTURES / "qxf" / "moving-head.qxf"
PIXELS = FIXTURES / "ofl" / "pixels.json"
CHANGING = FIXTURES / "qxf" / "meaning-that-changes.qxf"
REFUSED = FIXTURES / "qxf" / "refused-default.qxf"

BASIC = "Acme Head - Basic"
EXTENDED = "Acme Head - Extended"


def run_import(home, *arguments, **changes):
    return subprocess.run([PROGRAM, "--import", *arguments], env=environment(home, **changes), capture_output=True,
                          text=True, check=False, stdin=subprocess.DEVNULL, timeout=60)


class ImportCommandTest(unittest.TestCase):
    """None of this needs a display."""

    def setUp(self):
        self.home = self.enterContext(Home({}, {}))
        self.settings = self.home.output / "show.plist"

    def run_import(self, *arguments, **changes):
        return run_import(self.home, *arguments, **changes)

    def assert_refused(self, answer, *reasons):
        self.assertEqual((answer.returncode, answer.stdout), (1, ""))
        for reason in reasons:
            self.assertIn(reason, answer.stderr)

    def test_profiles_are_printed_as_one_property_list(self):
        answer = self.run_import(HEAD, PIXELS)
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        profiles = plistlib.loads(answer.stdout.encode())["profiles"]
        self.assertEqual(sorted(profiles), [BASIC, EXTENDED, f"{EXTENDED}, Head", "acme Lamp - M", "acme Lamp - M, Head"])
        self.assertEqual(profiles[BASIC], [{"name": "Pan", "default": 128}, {"name": "Tilt", "default": 127},
                                           {"name": "Dimmer"}])

    def test_a_mode_is_taken_by_its_name(self):
        answer = self.run_import(HEAD, "--mode", "Basic")
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        self.assertEqual(list(plistlib.loads(answer.stdout.encode())["profiles"]), [BASIC])

    def test_a_mode_that_is_not_there_is_refused_with_those_that_are(self):
        self.assert_refused(self.run_import(HEAD, "--mode", "basic"), str(HEAD), "'basic'", "'Extended', 'Basic'")

    def test_remarks_stand_on_standard_error(self):
        answer = self.run_import(CHANGING)
        self.assertEqual(answer.returncode, 0)
        self.assertRegex(answer.stderr, r"\AAcme Lamp - M: 'Speed' is 'Sensitivity' at some levels .*\n\Z")

    def test_what_can_be_imported_is_when_another_file_is_refused(self):
        answer = self.run_import(REFUSED, HEAD)
        self.assertEqual(answer.returncode, 1)
        self.assertEqual(answer.stderr, f"faderhall: {REFUSED}: line 7: a default that is no number from 0 to 255\n")
        self.assertIn(BASIC, plistlib.loads(answer.stdout.encode())["profiles"])

    def test_one_profile_from_two_files_is_refused_the_second_time(self):
        answer = self.run_import(HEAD, HEAD, "--mode", "Basic")
        self.assertEqual(answer.returncode, 1)
        self.assertIn(f"'{BASIC}' is taken from another file already", answer.stderr)

    def test_what_cannot_be_printed_is_told(self):
        with open("/dev/full", "wb") as full:
            status = subprocess.run([PROGRAM, "--import", HEAD], env=environment(self.home), stdout=full, check=False,
                                    stderr=subprocess.DEVNULL, timeout=60).returncode
        self.assertEqual(status, 1)

    def test_profiles_are_added_to_a_settings_file_that_keeps_the_rest(self):
        before = {"views": [placement("Hall", 1, 1)], "cues": {"1": [{"key": "Hall.Red", "value": 3, "time": 0.5}]},
                  "profiles": {"Mine": [{"name": "Red"}], BASIC: []}, "other": [1.5, True, b"\0"]}
        write(self.settings, before, plistlib.FMT_BINARY)
        os.chmod(self.settings, 0o640)
        answer = self.run_import(HEAD, "--mode", "Basic", "--into", self.settings, LC_ALL="de_DE.UTF-8")
        self.assertEqual((answer.returncode, answer.stdout), (0, f"Added the profile '{BASIC}'\n"))
        self.assertEqual(answer.stderr, f"The profile '{BASIC}' replaces another one of that name\n")
        after = read(self.settings)
        self.assertEqual(len(after["profiles"].pop(BASIC)), 3)
        before["profiles"].pop(BASIC)
        self.assertEqual(after, before)
        self.assertEqual(stat.S_IMODE(self.settings.stat().st_mode), 0o640)

    def test_a_settings_file_is_made_when_there_is_none(self):
        settings = self.home.output / "new" / "show.plist"
        self.assertEqual(self.run_import(HEAD, "--into", settings).returncode, 0)
        self.assertEqual(sorted(read(settings)["profiles"]), [BASIC, EXTENDED, f"{EXTENDED}, Head"])

    def test_a_file_that_is_no_property_list_is_left_as_it_is(self):
        for content in [b"<plist>", b"", plistlib.dumps([1]), plistlib.dumps({"profiles": [1]})]:
            with self.subTest(content):
                self.settings.write_bytes(content)
                self.assert_refused(self.run_import(HEAD, "--into", self.settings), str(self.settings), "left as it is")
                self.assertEqual(self.settings.read_bytes(), content)
                self.assertEqual([path.name for path in self.home.output.iterdir()], ["show.plist"])

    def test_where_nothing_can_be_written_is_told(self):
        self.assert_refused(self.run_import(HEAD, "--into", "/dev/null/show.plist"), "it cannot be written")

    def test_the_settings_of_this_home_may_be_taken(self):
        self.assertEqual(self.run_import(HEAD, "--into", self.home.settings_file).returncode, 0)
        self.assertIn(BASIC, self.home.settings["profiles"])
        self.assertEqual([path.name for path in self.home.settings_file.parent.iterdir()], ["Faderhall.plist"])

    def test_without_import_the_other_options_are_refused(self):
        for option in ["--mode", "--into"]:
            answer = subprocess.run([PROGRAM, option, "x"], env=environment(self.home), capture_output=True, text=True,
                                    check=False, timeout=60)
            self.assert_refused(answer, f"'{option}' needs '--import'.")


class ImportedFixtureTest(ConsoleTestCase):
    TITLE = "Spot Univ: 1 Addr: 11"
    PAN, TILT, DIMMER = Fader(TITLE, 0, 0), Fader(TITLE, 0, 1), Fader(TITLE, 0, 3)
    SECOND_GREEN, FOCUS = Fader(TITLE, 0, 9), Fader(TITLE, 0, 10)
    # Slots from 11: Pan, Tilt, one unused, Shutter, Dimmer, two heads of red and green, Focus.
    DEFAULTS = {11: 128, 12: 0, 13: 127, 14: 255, 16: 32, 23: 100}

    def setUp(self):
        super().setUp()
        write(self.home.settings_file, {"views": [placement("Spot", 1, 11, EXTENDED)]})
        self.assertEqual(run_import(self.home, HEAD, "--into", self.home.settings_file).returncode, 0)

    def wait_for(self, slots):
        self.receiver.wait_for_levels(1, {**self.DEFAULTS, **slots})

    def test_every_slot_is_driven_by_its_fader(self):
        with self.console(["Faderhall", self.TITLE]) as console:
            self.wait_for({})
            console.set(self.PAN, "4660")
            self.wait_for({11: 0x12, 12: 0x34})
            console.set(self.TILT, "65535")
            console.set(self.DIMMER, "258")
            self.wait_for({11: 0x12, 12: 0x34, 13: 255, 14: 255, 17: 1, 18: 2})
            console.set(self.SECOND_GREEN, "7")
            console.set(self.FOCUS, "0")
            self.wait_for({11: 0x12, 12: 0x34, 13: 255, 14: 255, 17: 1, 18: 2, 22: 7, 23: 0})
        levels = {record["key"]: record["value"] for record in self.home.defaults["saved_state: unknown_config"]}
        self.assertEqual(levels, {"Spot.Pan": 4660, "Spot.Tilt": 65535, "Spot.Dimmer": 258, "Spot.Head 2.Green": 7,
                                  "Spot.Focus": 0})

    def test_a_running_console_keeps_its_settings_to_itself(self):
        link = self.home.output / "link.plist"
        link.symlink_to(self.home.settings_file)
        before = self.home.settings
        with self.console(["Faderhall", self.TITLE]):
            for path in [self.home.settings_file, link]:
                answer = run_import(self.home, PIXELS, "--into", path)
                self.assertEqual(answer.returncode, 1)
                self.assertIn("a console is running", answer.stderr)
            self.assertEqual(run_import(self.home, PIXELS, "--into", self.home.output / "other.plist").returncode, 0)
        self.assertEqual(self.home.settings, before)

    def dimmer_is_kept(self):
        kept = self.home.recovery
        return kept and kept["levels"].get("Spot.Dimmer") == 258

    def test_the_show_of_a_run_that_ended_badly_is_taken_up_first(self):
        with self.console(["Faderhall", self.TITLE]) as console:
            console.set(self.DIMMER, "258")
            wait_until(self.dimmer_is_kept, "the level in the recovery file")
            console.kill(9)
        before = self.home.settings
        answer = run_import(self.home, PIXELS, "--into", self.home.settings_file)
        self.assertEqual(answer.returncode, 1)
        self.assertIn("waits to be taken up", answer.stderr)
        self.assertEqual(self.home.settings, before)
        with self.console(["Faderhall", self.TITLE]):
            self.wait_for({17: 1, 18: 2})
        self.assertEqual(run_import(self.home, PIXELS, "--into", self.home.settings_file).returncode, 0)


if __name__ == "__main__":
    unittest.main()
