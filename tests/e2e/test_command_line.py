"""What the program is started with: arguments, homes, files and locales, good and bad."""

import plistlib
import subprocess
import unittest
from pathlib import Path

import stage
from case import ConsoleTestCase
from console import PROGRAM
from home import Home, read, write
from program import environment
from stage import DIMMER

GARBAGE = b"<?xml version='1.0'?><plist><dict><key>views</key>"


class ArgumentTest(unittest.TestCase):
    """None of this needs a display."""

    def setUp(self):
        self.home = self.enterContext(Home({}, {}))

    def run_program(self, *arguments):
        return subprocess.run([PROGRAM, *arguments], env=environment(self.home), capture_output=True,
                              text=True, check=False, stdin=subprocess.DEVNULL, timeout=60)

    def test_help_names_the_options(self):
        for option in ["--help", "-h"]:
            answer = self.run_program(option)
            self.assertEqual((answer.returncode, answer.stderr), (0, ""))
            self.assertRegex(answer.stdout, r"^Usage: .*faderhall \[options\]\n")
            for name in ["--help", "--version", "--resources <DIR>", "--import <FILE...>", "--mode <NAME>", "--into <FILE>"]:
                self.assertIn(name, answer.stdout)

    def test_version_is_one_line(self):
        for option in ["--version", "-v"]:
            answer = self.run_program(option)
            self.assertEqual((answer.returncode, answer.stderr), (0, ""))
            self.assertRegex(answer.stdout, r"\Afaderhall \d+\.\d+\.\d+\n\Z")

    def test_what_is_not_understood_is_named_and_ends_with_status_1(self):
        for arguments, reason in [
            (["--univers"], "univers"),
            (["-x"], "x"),
            (["rig.plist"], "rig.plist"),
            (["--resources"], "resources"),
            (["--help=me"], "help"),
        ]:
            with self.subTest(arguments):
                answer = self.run_program(*arguments)
                self.assertEqual((answer.returncode, answer.stdout), (1, ""))
                self.assertRegex(answer.stderr, rf"^faderhall: .*{reason}.*\nTry 'faderhall --help'\.\n$")

    def test_nothing_is_left_in_the_home(self):
        self.run_program("--help")
        self.run_program("--nothing")
        self.assertEqual(list(self.home.folder.iterdir()) + list(self.home.config.iterdir()), [])


class ResourcesTest(ConsoleTestCase):
    def test_without_the_option_the_tables_beside_the_program_are_taken(self):
        tables = read(PROGRAM.parent / "resources" / "configurations.plist")
        views = tables[tables["_default_configuration"]]["views"]
        titles = [f"{view['name']} Univ: {view['universe']} Addr: {view['address']}" for view in views]
        with self.console(["Faderhall", *titles], arguments=[]):
            for universe in {int(view["universe"]) for view in views}:
                self.receiver.wait_for_count(1, universe % 256)

    def test_a_broken_table_of_profiles_leaves_fixtures_without_faders(self):
        (self.home.resources / "profiles.plist").write_bytes(GARBAGE)
        with self.console():
            self.receiver.wait_for_levels(1, {})
            self.receiver.wait_for_levels(2, {})

    def test_a_broken_table_of_configurations_leaves_the_main_window(self):
        (self.home.resources / "configurations.plist").write_bytes(GARBAGE)
        with self.console(["Faderhall"]):
            pass
        self.assertIsNone(self.home.settings)
        self.assertEqual(self.home.defaults["configName"], "unknown_config")

    def test_a_folder_that_is_not_there_leaves_the_main_window(self):
        with self.console(["Faderhall"], arguments=["--resources", "/nowhere"]):
            pass

    def test_a_rig_of_its_own_needs_no_configurations(self):
        (self.home.resources / "configurations.plist").unlink()
        write(self.home.settings_file, stage.STAGE)
        with self.console():
            self.wait_for_front({})
        self.assertEqual(self.home.defaults["configName"], "unknown_config")


class HomeTest(ConsoleTestCase):
    def below_a_file(self):
        obstacle = self.home.output / "file"
        obstacle.write_text("in the way")
        return obstacle / "home"

    def test_a_home_that_cannot_be_written_disturbs_nobody(self):
        with self.console(HOME=str(self.below_a_file())) as console:
            console.set(DIMMER, "7")
            self.wait_for_front({1: 7})
        self.assertEqual(self.home.defaults["configName"], "Stage")

    def test_user_defaults_that_cannot_be_written_disturb_nobody(self):
        with self.console(XDG_CONFIG_HOME=str(self.below_a_file())) as console:
            console.set(DIMMER, "7")
            self.wait_for_front({1: 7})
        self.assertEqual(self.home.settings, stage.STAGE)

    def test_an_unreadable_rig_is_kept_aside_and_the_default_taken(self):
        for content in [GARBAGE, b"", b"bplist00 and no more", plistlib.dumps(["a", "list"])]:
            with self.subTest(content):
                self.home.settings_file.parent.mkdir(parents=True, exist_ok=True)
                self.home.settings_file.write_bytes(content)
                with self.console():
                    self.wait_for_front({})
                self.assertEqual(self.home.settings, stage.STAGE)
                aside, = self.home.settings_file.parent.glob("Faderhall.plist.unreadable-*")
                self.assertEqual(aside.read_bytes(), content)
                aside.unlink()

    def test_unreadable_user_defaults_are_kept_aside_and_begun_anew(self):
        self.home.defaults_file.parent.mkdir(parents=True)
        self.home.defaults_file.write_bytes(GARBAGE)
        with self.console():
            self.wait_for_front({})
        self.assertEqual(self.home.defaults["tx_address"], "127.0.0.1")
        aside, = self.home.defaults_file.parent.glob("Faderhall.plist.unreadable-*")
        self.assertEqual(aside.read_bytes(), GARBAGE)


class CommaLocaleTest(ConsoleTestCase):
    """Where the decimal sign is a comma, numbers are typed and stored as everywhere else."""

    def setUp(self):
        super().setUp()
        locales = self.home.output / "locales"
        locales.mkdir()
        subprocess.run(["localedef", "--no-archive", "-i", "de_DE", "-f", "UTF-8", locales / "de_DE.UTF-8"],
                       check=True, timeout=60, stdout=subprocess.DEVNULL)
        self.locale = {"LC_ALL": "de_DE.UTF-8", "LOCPATH": str(locales)}

    def test_a_point_is_typed_as_decimal_sign(self):
        with self.console(**self.locale) as console:
            console.set(DIMMER, "12.6")
            self.wait_for_front({1: 13})
            console.enter("0.8", "s")
            console.enter("200")
            self.wait_for_front({1: 200})
            self.assertGreater(len(self.levels_of(1, 1)), 5)

    def test_stored_numbers_survive(self):
        rig = {**stage.STAGE,
               "cues": {"1": [{"key": "Front.Dimmer", "value": 128, "time": 2.5}]}, "weight": 0.125}
        write(self.home.settings_file, rig)
        with self.console(**self.locale):
            self.wait_for_front({})
        self.assertEqual(self.home.settings, rig)
        self.assertIn("<real>0.125", self.home.settings_file.read_text())


if __name__ == "__main__":
    unittest.main()
