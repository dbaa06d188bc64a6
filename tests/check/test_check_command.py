"""`faderhall --check` and `--list` on rigs in files: every planted fault is named, and nothing else."""

import os
import plistlib
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

PROGRAM = Path(os.environ["FADERHALL"])
HERE = Path(__file__).resolve().parent
RIGS = HERE / "rigs"
TREE = HERE.parent.parent

DIMMER = {"Dimmer": [{"name": "Dimmer"}]}


def fixture(name, address, profile="Dimmer", universe=1):
    return {"name": name, "universe": universe, "address": address, "profiles": [{"profile": profile}]}


class CheckTestCase(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(prefix="faderhall-check-")))
        self.tables = self.folder / "tables"
        self.tables.mkdir()
        company = "com.KTQ.OrvaneApplications"
        self.settings = self.folder / "home/Library/Application Support" / company / "Faderhall.plist"
        self.defaults = self.folder / "config" / company / "Faderhall.plist"
        for file in [self.settings, self.defaults]:
            file.parent.mkdir(parents=True)

    def take(self, rig):
        """Puts the files of a rig where the program looks for them."""
        for name, place in [("profiles.plist", self.tables), ("configurations.plist", self.tables),
                            ("settings.plist", self.settings), ("defaults.plist", self.defaults)]:
            if (rig / name).exists():
                shutil.copy(rig / name, place)

    def write(self, path, value):
        path.write_bytes(plistlib.dumps(value))

    def write_tables(self, configurations=None, profiles=None):
        self.write(self.tables / "profiles.plist", profiles or DIMMER)
        self.write(self.tables / "configurations.plist", configurations or {})

    def run_program(self, *arguments):
        environment = {"HOME": str(self.folder / "home"), "XDG_CONFIG_HOME": str(self.folder / "config"),
                       "QT_QPA_PLATFORM": "none such", "LC_ALL": "C.UTF-8"}
        for kept in ["ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"]:
            if kept in os.environ:
                environment[kept] = os.environ[kept]
        return subprocess.run([PROGRAM, "--resources", self.tables, *arguments], env=environment,
                              capture_output=True, text=True, check=False, stdin=subprocess.DEVNULL, timeout=100)

    def named(self, output):
        """The lines with short names for the files."""
        for path, name in [(self.settings, "settings"), (self.defaults, "defaults"), (f"{self.tables}/", "")]:
            output = output.replace(str(path), name)
        return output.splitlines()

    def check(self):
        """What the check says, its exit status before it."""
        answer = self.run_program("--check")
        self.assertEqual(answer.stderr, "")
        return answer.returncode, self.named(answer.stdout)

    def contents(self):
        return {path: (path.stat().st_mtime_ns, path.read_bytes() if path.is_file() else None)
                for path in self.folder.rglob("*")}


class BrokenRigs(CheckTestCase):
    def test_every_planted_fault_is_named_and_nothing_else(self):
        rigs = sorted(RIGS.iterdir())
        self.assertEqual(len(rigs), 10)
        for rig in rigs:
            with self.subTest(rig.name):
                for file in [*self.tables.iterdir(), self.settings, self.defaults]:
                    file.unlink(missing_ok=True)
                self.take(rig)
                before = self.contents()
                self.assertEqual(self.check(), (1, (rig / "problems.txt").read_text().splitlines()))
                self.assertEqual(self.contents(), before)


class SoundRigs(CheckTestCase):
    def test_the_tables_that_come_with_the_program_are_in_order(self):
        self.take(TREE / "resources")
        self.assertEqual(self.check(), (0, []))

    def test_the_examples_are_in_order(self):
        examples = TREE / "docs/examples"
        self.take(examples)
        shutil.copy(examples / "Faderhall.plist", self.settings)
        self.assertEqual(self.check(), (0, []))

    def test_numbers_may_be_texts_of_digits(self):
        self.write_tables(profiles={"Spot": [{"name": "Pan", "channels": "2", "default": "500", "header": "yes"}]})
        self.write(self.settings, {"views": [{"name": "Spot", "universe": "1", "address": "7", "layer": "0",
                                              "profiles": [{"profile": "Spot"}]}],
                                   "cues": {"1": [{"key": "Spot.Pan", "value": "12", "time": "0.5"}]}})
        self.assertEqual(self.check(), (0, []))

    def test_a_rig_with_settings_needs_no_configurations(self):
        self.write(self.tables / "profiles.plist", DIMMER)
        self.write(self.settings, {"views": [fixture("Spot", 1)]})
        self.assertEqual(self.check(), (0, []))

    def test_keys_that_nobody_reads_may_hold_anything(self):
        self.write_tables({"Stage": {"views": [], "notes": [True]}})
        self.write(self.settings, {"weight": 0.5, "views": [{**fixture("Spot", 1), "colour": {}}]})
        self.write(self.defaults, {"other": 5, "saved_state": 7})
        self.assertEqual(self.check(), (0, []))


class Looking(CheckTestCase):
    def assert_not_looked(self, path, reason):
        answer = self.run_program("--check")
        self.assertEqual((answer.returncode, answer.stderr), (2, f"faderhall: {path}: {reason}\n"))
        return self.named(answer.stdout)

    def test_a_folder_of_tables_that_is_not_there_ends_with_status_2(self):
        self.tables.rmdir()
        self.assertEqual(self.assert_not_looked(self.tables, "No such folder"), [])

    def test_missing_tables_are_named(self):
        self.assertEqual(self.check(), (1, [
            "profiles.plist: is missing, and without it no fixture has faders; put it there",
            "configurations.plist: is missing, and there are no settings either; put it there"]))

    def test_what_is_no_file_ends_with_status_2_and_the_rest_is_checked(self):
        self.write_tables({"Stage": {"views": 5}})
        self.settings.mkdir()
        self.assertEqual(self.assert_not_looked(self.settings, "It is no file"), [
            "configurations.plist: configuration 'Stage': 'views' is 5, which reads as nothing; make it an array"])

    def test_a_pipe_is_not_waited_for(self):
        self.write_tables()
        os.mkfifo(self.defaults)
        self.assertEqual(self.assert_not_looked(self.defaults, "It is no file"), [])

    def test_a_link_without_an_end_ends_with_status_2(self):
        self.write_tables()
        self.settings.symlink_to(self.settings)
        self.assertEqual(self.assert_not_looked(self.settings, "Too many levels of symbolic links"), [])

    @unittest.skipIf(os.geteuid() == 0, "root may read everything")
    def test_a_file_that_may_not_be_read_ends_with_status_2(self):
        self.write_tables()
        self.write(self.settings, {})
        self.settings.chmod(0)
        self.assertEqual(self.assert_not_looked(self.settings, "Permission denied"), [])

    def test_a_table_that_is_no_property_list_is_told_once_and_not_by_what_follows_from_it(self):
        self.write_tables({"Stage": {"views": [fixture("Spot", 600)], "cues": {"1": [{"key": "Spot.Dimmer"}]}}})
        (self.tables / "profiles.plist").write_text("{}")
        self.assertEqual(self.check(), (1, [
            "profiles.plist: is no property list, or a damaged one; put a copy that is whole in its place"]))

    def test_a_file_that_is_too_large_is_named(self):
        self.write_tables()
        with self.settings.open("wb") as file:
            file.truncate(16 * 1024 * 1024 + 1)
        self.assertEqual(self.check(), (1, [
            "settings: is larger than 16 MiB; put a copy that is whole in its place"]))


class HostileRigs(CheckTestCase):
    def test_a_name_cannot_break_its_line(self):
        self.write_tables()
        self.write(self.settings, {"views": [fixture("A\nB\u202e", 513)]})
        status, lines = self.check()
        self.assertEqual(status, 1)
        self.assertEqual(len(lines), 1)
        self.assertIn("fixture 1 'A\ufffdB\ufffd': slot 513 outside", lines[0])

    def test_a_profile_without_end_is_named(self):
        levels = {str(level): [{"profile": str(level + 1)}] * 10 for level in range(9)}
        self.write_tables(profiles={**levels, "9": [{"label": "x"}]})
        self.write(self.settings, {"views": [fixture("Bomb", 1, "0")]})
        self.assertEqual(self.check(), (1, [
            "settings: fixture 1 'Bomb': comes to more faders than a fixture, or a rig, may have; take some out"]))

    def test_configurations_without_number_end_with_status_2(self):
        wall = {"Row": [{"label": "x"}] * 100, "Wall": [{"profile": "Row"}] * 80}
        rig = {"views": [fixture("Wall", 1, "Wall")] * 64}
        self.write_tables({str(number): rig for number in range(40)}, wall)
        answer = self.run_program("--check")
        self.assertEqual((answer.returncode, answer.stderr),
                         (2, f"faderhall: {self.tables}: More rigs than can be gone through\n"))

    def test_profiles_of_configurations_without_number_end_with_status_2(self):
        own = {"views": [fixture("Spot", 1, "Own")], "profiles": {"Own": [{"name": "Dimmer"}]}}
        self.write_tables({str(number): own for number in range(2000)},
                          {str(number): [{"label": "x"}] * 100 for number in range(200)})
        answer = self.run_program("--check")
        self.assertEqual((answer.returncode, answer.stdout, answer.stderr),
                         (2, "", f"faderhall: {self.tables}: More rigs than can be gone through\n"))

    def test_a_thousand_fixtures_on_one_slot_are_one_line(self):
        self.write_tables()
        self.write(self.settings, {"views": [fixture(f"Spot {number}", 1) for number in range(1000)]})
        status, lines = self.check()
        self.assertEqual((status, len(lines)), (1, 1))
        self.assertIn("universe 1, slot 1: shared by fixture 1 'Spot 0', fixture 2 'Spot 1',", lines[0])
        self.assertIn("fixture 10 'Spot 9' and 990 more, of which the last is heard", lines[0])

    def test_profiles_that_nest_deep_are_gone_through(self):
        chain = {str(level): [{"profile": str(level + 1)}] for level in range(5000)}
        self.write_tables(profiles={**chain, "5000": [{"profile": "0"}]})
        status, lines = self.check()
        self.assertEqual((status, len(lines)), (1, 1))
        self.assertIn("profile '0', entry 1: contains itself", lines[0])


class Listing(CheckTestCase):
    def test_fixtures_and_cues_are_listed_in_their_orders(self):
        self.take(RIGS / "wrong-cues")
        answer = self.run_program("--list")
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        self.assertEqual(answer.stdout.splitlines(), [
            "Fixture  Universe  Address  Slots  Faders  Profile",
            "Head     1         1        1-4    2       Head",
            "",
            "Cue  Faders  Longest fade",
            "2    1       0 s",
            "3    -       never stored",
            "4    -       never stored",
            "5    -       never stored",
            "10   2       1.5 s"])

    def test_without_settings_the_default_configuration_is_listed(self):
        self.take(RIGS / "wrong-cues")
        self.settings.unlink()
        answer = self.run_program("--list")
        self.assertEqual(answer.stdout.splitlines()[1], "Front    0         1        1      1       Dimmer")

    def test_a_folder_of_tables_that_is_not_there_ends_with_status_2(self):
        self.tables.rmdir()
        self.write(self.settings, {"views": [fixture("Spot", 1)]})
        answer = self.run_program("--list")
        self.assertEqual((answer.returncode, answer.stderr), (2, f"faderhall: {self.tables}: No such folder\n"))
        self.assertEqual(answer.stdout.splitlines()[1].split()[0], "Spot")

    def test_without_anything_the_lists_are_empty(self):
        answer = self.run_program("--list")
        self.assertEqual((answer.returncode, answer.stdout.splitlines()), (0, [
            "Fixture  Universe  Address  Slots  Faders  Profile", "", "Cue  Faders  Longest fade"]))

    def test_what_could_not_be_read_ends_with_status_2(self):
        self.write_tables()
        self.settings.mkdir()
        answer = self.run_program("--list")
        self.assertEqual((answer.returncode, answer.stderr), (2, f"faderhall: {self.settings}: It is no file\n"))

    def test_nothing_is_written(self):
        self.take(RIGS / "no-property-list")
        before = self.contents()
        self.run_program("--list")
        self.assertEqual(self.contents(), before)


if __name__ == "__main__":
    unittest.main()
