"""The program without windows, by itself and beside the one with them."""

import signal
import subprocess
import unittest
from pathlib import Path

import stage
from case import ConsoleTestCase, RigTestCase
from console import BUILD, INSTRUMENTED, PROGRAM, Console
from headless import HEADLESS, NOTHING_TO_SHOW, Headless
from home import Home, read, write
from program import environment
from receiver import Receiver
from stage import BACK, BACK_DIMMER, DIMMER, FRONT, MAIN, PAN, RED, STAGE
from waiting import wait_until

OTHER_ADDRESS = "127.0.0.2"
LEVELS = [{"key": "Front.Dimmer", "value": 128, "time": 0}, {"key": "Front.Pan", "value": 0x1234, "time": 0}]


def run(program, home, *arguments, **changes):
    """What a program says that ends by itself."""
    return subprocess.run([program, *arguments], env=environment(home, **NOTHING_TO_SHOW, **changes), check=False,
                          capture_output=True, text=True, stdin=subprocess.DEVNULL, timeout=60)


def libraries(program):
    """All that the linker loads with a program."""
    return subprocess.run(["ldd", program], check=True, capture_output=True, text=True, timeout=60).stdout


class LinkTest(unittest.TestCase):
    def test_it_brings_no_windows_into_the_process(self):
        self.assertIn("libQt6Widgets", libraries(PROGRAM))
        self.assertIn("libQt6Core", libraries(HEADLESS))
        self.assertNotIn("libQt6Widgets", libraries(HEADLESS))


class ArgumentTest(unittest.TestCase):
    def setUp(self):
        self.home = self.enterContext(Home({}, {}))

    def run_program(self, *arguments):
        return run(HEADLESS, self.home, *arguments)

    def test_help_names_the_options(self):
        for option in ["--help", "-h"]:
            answer = self.run_program(option)
            self.assertEqual((answer.returncode, answer.stderr), (0, ""))
            self.assertRegex(answer.stdout, r"^Usage: .*faderhall-headless \[options\]\n")
            for name in ["--help", "--version", "--resources <DIR>", "--to <ADDRESS>"]:
                self.assertIn(name, answer.stdout)

    def test_version_is_one_line_with_the_version_of_the_other_program(self):
        number = run(PROGRAM, self.home, "--version").stdout.split()[1]
        for option in ["--version", "-v"]:
            answer = self.run_program(option)
            self.assertEqual((answer.returncode, answer.stderr), (0, ""))
            self.assertEqual(answer.stdout, f"faderhall-headless {number}\n")

    def test_what_is_not_understood_is_named_and_ends_with_status_1(self):
        for arguments, reason in [
            (["--to", "rack"], "'rack' is no IPv4 address"),
            (["--to", "192.168.1.256"], "'192.168.1.256' is no IPv4 address"),
            (["--to", ""], "'' is no IPv4 address"),
            (["--to"], "to"),
            (["--check"], "check"),
            (["rig.plist"], "rig.plist"),
        ]:
            with self.subTest(arguments):
                answer = self.run_program(*arguments)
                self.assertEqual((answer.returncode, answer.stdout), (1, ""))
                self.assertRegex(answer.stderr,
                                 rf"^faderhall-headless: .*{reason}.*\nTry 'faderhall-headless --help'\.\n$")

    def test_nothing_is_left_in_the_home(self):
        self.run_program("--help")
        self.run_program("--to", "nowhere")
        self.assertEqual(list(self.home.folder.iterdir()) + list(self.home.config.iterdir()), [])

    @unittest.skipIf(INSTRUMENTED, "sanitizers need more than that to begin with")
    def test_it_cannot_start_without_memory_and_says_so(self):
        answer = subprocess.run(["sh", "-c", 'ulimit -v 200000 && exec "$0"', HEADLESS], capture_output=True, text=True,
                                env=environment(self.home), stdin=subprocess.DEVNULL, timeout=60, check=False)
        self.assertEqual(answer.returncode, 1)
        self.assertRegex(answer.stderr, r"^Faderhall cannot start: .*memory.*\n$")


class FirstStartTest(RigTestCase):
    def test_the_default_rig_goes_out_once_a_second_with_nothing_to_show_it_on(self):
        with Headless(self.home):
            fronts = self.receiver.wait_for_count(3, universe=1)
            self.receiver.wait_for_count(3, universe=2)
            self.wait_for_front({})
            self.wait_for_back({})
        self.assertEqual([datagram.sequence for datagram in fronts], [2, 3, 4])
        for earlier, later in zip(fronts, fronts[1:]):
            self.assertGreater(later.moment - earlier.moment, 0.99)
            self.assertLess(later.moment - earlier.moment, 1.5)
        self.assertEqual({datagram.universe for datagram in self.receiver.datagrams()}, {1, 2})

    def test_it_leaves_the_files_that_the_other_program_leaves(self):
        with Headless(self.home):
            self.wait_for_front({})
        self.assertEqual(self.home.settings, STAGE)
        self.assertEqual(self.home.defaults, {"configName": "Stage", "tx_address": "127.0.0.1", "saved_state: Stage": [],
                                              "control_selections": ["", ""]})

    def test_without_the_option_the_tables_beside_the_program_are_taken(self):
        tables = read(HEADLESS.parent / "resources" / "configurations.plist")
        views = tables[tables["_default_configuration"]]["views"]
        with Headless(self.home, tables=False):
            for universe in {int(view["universe"]) for view in views}:
                self.receiver.wait_for_count(1, universe % 256)

    def test_installed_without_the_other_program_it_starts_with_the_tables_installed_beside_it(self):
        prefix = Path(self.home.output) / "installed"
        for part in ["faderhall-headless", "faderhall-common"]:
            subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix, "--component", part], check=True, timeout=60,
                           stdout=subprocess.DEVNULL)
        self.assertEqual([path.name for path in (prefix / "bin").iterdir()], [HEADLESS.name])
        tables = read(prefix / "share" / "faderhall" / "configurations.plist")
        with Headless(self.home, program=prefix / "bin" / HEADLESS.name, tables=False):
            for view in tables[tables["_default_configuration"]]["views"]:
                self.receiver.wait_for_count(1, view["universe"])

    def test_it_says_what_the_other_program_says(self):
        write(self.home.settings_file, {"views": [stage.placement("Front", 1, 1, "Twin")],
                                        "profiles": {"Twin": [{"name": "Red"}, {"name": "Red"}]}})
        with Headless(self.home) as headless:
            self.receiver.wait_for_levels(1, {})
            wait_until(lambda: len(headless.stdout.splitlines()) == 2, lambda: f"two lines, not {headless.stdout}")
            self.assertEqual(headless.stdout.splitlines(),
                             ["Adding user profile: 'Twin'", "DMXControl 'Front.Red' already exists!"])


class AddressTest(RigTestCase):
    def setUp(self):
        super().setUp()
        self.other = self.enterContext(Receiver(OTHER_ADDRESS))

    def assert_sends_to_the_other_address(self):
        self.other.wait_for_count(4)
        self.assertEqual(self.receiver.datagrams(), [])
        self.other.forget()

    def test_it_sends_to_the_address_that_is_told_and_remembers_it(self):
        with Headless(self.home, "--to", OTHER_ADDRESS):
            self.assert_sends_to_the_other_address()
        self.assertEqual(self.home.defaults["tx_address"], OTHER_ADDRESS)
        with Headless(self.home):
            self.assert_sends_to_the_other_address()

    def test_the_address_is_remembered_when_it_is_killed(self):
        with Headless(self.home, "--to", OTHER_ADDRESS) as headless:
            wait_until(lambda: (self.home.defaults or {}).get("tx_address") == OTHER_ADDRESS, "the address on the disk")
            headless.kill()
        with Headless(self.home):
            self.other.forget()
            self.assert_sends_to_the_other_address()

    def test_a_refused_address_changes_nothing(self):
        with Headless(self.home):
            self.wait_for_front({})
        before = self.home.defaults_file.read_bytes()
        self.receiver.forget()
        self.assertEqual(run(HEADLESS, self.home, "--to", "127.0.0.300").returncode, 1)
        self.assertEqual(self.receiver.datagrams() + self.other.datagrams(), [])
        self.assertEqual(self.home.defaults_file.read_bytes(), before)


class EndTest(RigTestCase):
    def test_every_signal_to_quit_saves_the_show(self):
        for number in [signal.SIGTERM, signal.SIGINT, signal.SIGHUP]:
            with self.subTest(number):
                write(self.home.defaults_file, {"saved_state: Stage": LEVELS, "theme": "dark"})
                with Headless(self.home) as headless:
                    self.wait_for_front({1: 128, 2: 0x12, 3: 0x34})
                    headless.terminate(number)
                self.assertEqual(self.home.settings, STAGE)
                defaults = self.home.defaults
                self.assertEqual(sorted(defaults["saved_state: Stage"], key=lambda record: record["key"]), LEVELS)
                self.assertEqual((defaults["configName"], defaults["tx_address"], defaults["theme"]),
                                 ("Stage", "127.0.0.1", "dark"))
                self.assertFalse(self.home.recovery_file.exists())
                self.home.settings_file.unlink()

    def test_after_a_kill_the_next_one_starts_with_the_same_levels(self):
        write(self.home.settings_file, STAGE)
        write(self.home.defaults_file, {"configName": "Stage", "saved_state: Stage": LEVELS})
        for _ in range(2):
            self.receiver.forget()
            with Headless(self.home) as headless:
                self.wait_for_front({1: 128, 2: 0x12, 3: 0x34})
                self.assertEqual(self.levels_of(1, 1), [128])
                headless.kill()

    def test_a_request_for_the_main_window_disturbs_nobody(self):
        with Headless(self.home) as headless:
            headless.process.send_signal(signal.SIGUSR1)
            self.receiver.forget()
            self.receiver.wait_for_count(4)


class BothProgramsTest(ConsoleTestCase):
    """The same files, one program after the other."""

    def test_what_the_desktop_program_saved_goes_out_and_is_kept_as_it_was(self):
        with self.console() as console:
            console.set(PAN, "4660")
            console.set(BACK_DIMMER, "77")
            console.select(RED)
            self.receiver.wait_for_levels(1, {**stage.FRONT_DEFAULTS, 2: 0x12, 3: 0x34})
            self.wait_for_back({101: 77})
            console.quit()
        settings, defaults = self.home.settings, self.home.defaults
        self.assertEqual((defaults["mainWindowTitle"], defaults["control_selections"]),
                         (FRONT, ["Front.Red", "Back.Dimmer"]))
        self.receiver.forget()
        with Headless(self.home):
            self.receiver.wait_for_levels(1, {**stage.FRONT_DEFAULTS, 2: 0x12, 3: 0x34})
            self.wait_for_back({101: 77})
            self.assertEqual((self.levels_of(1, 2, channels=2), self.levels_of(2, 101)), ([0x1234], [77]))
        self.assertEqual((self.home.settings, self.home.defaults), (settings, defaults))
        with self.console([MAIN, BACK, FRONT]) as console:
            console.enter("9")  # into the fader that was selected
            self.receiver.wait_for_levels(1, {**stage.FRONT_DEFAULTS, 2: 0x12, 3: 0x34, 8: 9})

    def test_what_the_program_without_windows_saved_goes_out_of_the_desktop_program(self):
        other = self.enterContext(Receiver(OTHER_ADDRESS))
        write(self.home.defaults_file, {"saved_state: Stage": LEVELS})
        with Headless(self.home, "--to", OTHER_ADDRESS):
            other.wait_for_count(1)
        other.forget()
        with self.console():
            other.wait_for_levels(1, {**stage.FRONT_DEFAULTS, 1: 128, 2: 0x12, 3: 0x34})
            other.wait_for_levels(2, stage.BACK_DEFAULTS)
        self.assertEqual(self.receiver.datagrams(), [])

    def test_a_show_that_ended_badly_is_taken_up_until_one_has_ended_well(self):
        write(self.home.settings_file, STAGE)
        write(self.home.defaults_file, {"configName": "Stage"})
        with self.console() as console:
            console.set(DIMMER, "128")
            wait_until(lambda: (self.home.recovery or {}).get("levels") == {"Front.Dimmer": 128}, "the show to be kept")
            console.kill()
        for end in ["kill", "kill", "terminate"]:
            self.receiver.forget()
            with Headless(self.home) as headless:
                self.wait_for_front({1: 128})
                self.assertEqual(self.levels_of(1, 1), [128])
                getattr(headless, end)()
        self.assertFalse(self.home.recovery_file.exists())
        self.assertEqual(self.home.defaults["saved_state: Stage"], [{"key": "Front.Dimmer", "value": 128, "time": 0}])


class OneConsoleTest(ConsoleTestCase):
    """One lock for both programs: a second one of either kind says so, sends nothing and ends well."""

    def assert_only_one_sends(self, second, said):
        self.receiver.forget()
        self.assertEqual((second.returncode, second.stderr), (0, ""))
        self.assertEqual(second.stdout, said)
        sequences = [datagram.sequence for datagram in self.receiver.wait_for_count(3, universe=1)]
        self.assertEqual(sequences, list(range(sequences[0], sequences[0] + 3)))

    def start_second(self, program):
        return run(program, self.home, "--resources", self.home.resources, DISPLAY=self.display.name)

    def test_beside_one_without_windows(self):
        for program in [HEADLESS, PROGRAM]:
            with self.subTest(program.name), Headless(self.home):
                self.assert_only_one_sends(self.start_second(program), "Faderhall is running already, without windows.\n")

    def test_beside_one_with_windows_which_comes_to_the_front(self):
        with self.console():
            self.display.activate(BACK)
            self.assert_only_one_sends(
                self.start_second(HEADLESS),
                "Faderhall is running already; its main window is brought to the front.\n")
            self.display.wait_for_front(MAIN)

    def test_the_lock_goes_with_its_console(self):
        lock = self.home.settings_file.with_name("Faderhall.lock")
        with Headless(self.home):
            self.assertTrue(lock.exists())
        self.assertFalse(lock.exists())
        with Headless(self.home) as headless:
            headless.kill()
        with Console(self.display, self.home, stage.WINDOWS):
            pass


if __name__ == "__main__":
    unittest.main()
