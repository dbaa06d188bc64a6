"""A desktop on which things are missing: the console starts or says why not, and keeps the show."""

import contextlib
import os
import pty
import resource
import signal
import socket
import subprocess
import termios
import time
import unittest

import stage
from case import ConsoleTestCase
from console import INSTRUMENTED, PROGRAM, Console
from display import Display
from home import write
from program import environment
from stage import DIMMER, FRONT, STAGE
from waiting import wait_until

MEBIBYTE = 1 << 20

# The toolkit would wait for 25 seconds and more.
SOON = 15


@contextlib.contextmanager
def silent_bus(home):
    """The address of a message bus that takes connections and never says a word."""
    path = home.output / "bus"
    with socket.socket(socket.AF_UNIX) as listening:
        listening.bind(str(path))
        listening.listen()
        try:
            yield f"unix:path={path}"
        finally:
            path.unlink()


class StartTest(ConsoleTestCase):
    def assert_works(self, **changes):
        """Starts, takes keys, sends, and ends. What libraries say on standard error is theirs."""
        with self.console(**changes) as console:
            self.display.activate(FRONT)
            self.display.key("Tab", "9", "Return")
            self.wait_for_front({1: 9})
            console.kill(signal.SIGTERM)
        self.assertEqual(console.process.returncode, 0)
        self.assertEqual(self.home.defaults["saved_state: Stage"], [{"key": "Front.Dimmer", "value": 9, "time": 0}])

    def test_no_fonts(self):
        nothing = self.home.output / "fonts.conf"
        nothing.write_text("<fontconfig></fontconfig>")
        self.assert_works(FONTCONFIG_FILE=str(nothing))

    def test_no_session_bus_and_no_runtime_folder(self):
        self.assert_works(DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere", XDG_RUNTIME_DIR="/proc/nowhere")

    def test_a_session_bus_that_does_not_answer(self):
        for variable in ("DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS"):
            with self.subTest(variable), silent_bus(self.home) as address:
                started = time.monotonic()
                self.assert_works(**{variable: address})
                self.assertLess(self.receiver.datagrams()[0].moment - started, SOON)
                self.forget()

    def test_every_scale(self):
        for factor in ["1", "1.25", "2", "3"]:
            with self.subTest(factor):
                self.assert_works(QT_SCALE_FACTOR=factor)
            self.forget()

    def forget(self):
        self.receiver.forget()
        self.home.settings_file.unlink()
        self.home.defaults_file.unlink()


class BareTest(ConsoleTestCase):
    """Consoles that are not waited for by their windows."""

    def setUp(self):
        super().setUp()
        write(self.home.settings_file, STAGE)

    def start(self, prepare=None, **changes):
        variables = {name: value for name, value in environment(self.home, **changes).items() if value is not None}
        return subprocess.Popen([PROGRAM, "--resources", self.home.resources], env=variables, preexec_fn=prepare,
                                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)

    def end(self, process):
        """Ends it as an operator would; its status and what it said."""
        process.send_signal(signal.SIGTERM)
        _, said = process.communicate(timeout=30)
        return process.returncode, said

    def test_no_display(self):
        for name in (None, ":4711"):
            with self.subTest(name):
                process = self.start(DISPLAY=name)
                _, said = process.communicate(timeout=30)
                self.assertEqual(process.returncode, 1)
                self.assertIn("Faderhall finds no display", said.splitlines()[-1])
        self.assertEqual(self.home.settings, STAGE)

    def test_no_window_manager(self):
        with Display(window_manager=False) as bare:
            process = self.start(DISPLAY=bare.name)
            self.wait_for_front({})
            self.assertEqual(self.end(process)[0], 0)

    def assert_says_why(self, reason, **options):
        process = self.start(DISPLAY=self.display.name, **options)
        _, said = process.communicate(timeout=30)
        self.assertEqual((process.returncode, said), (1, f"Faderhall cannot start: {reason}.\n"))
        self.assertEqual(self.home.settings, STAGE)

    def test_a_home_whose_name_is_no_text(self):
        folder = os.fsencode(self.home.folder.parent) + b"/caf\xe9"
        os.mkdir(folder)
        self.assert_says_why("the folder that HOME names is no UTF-8 text", HOME=os.fsdecode(folder))
        self.assertEqual(os.listdir(folder), [])

    def test_few_descriptors(self):
        def limit():
            resource.setrlimit(resource.RLIMIT_NOFILE, (20, 63))

        self.assert_says_why("it may not open 64 files (ulimit -n)", prepare=limit)

    def test_a_low_limit_of_descriptors_that_may_be_raised(self):
        process = self.start(lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (10, 64)), DISPLAY=self.display.name)
        self.wait_for_front({})
        self.assertEqual(self.end(process), (0, ""))

    @unittest.skipIf(INSTRUMENTED, "an instrumented program reserves more than any limit")
    def test_little_memory(self):
        def limited_to(mebibytes):
            return lambda: resource.setrlimit(resource.RLIMIT_AS, (mebibytes * MEBIBYTE, mebibytes * MEBIBYTE))

        for size in (100, 200, 299):
            with self.subTest(mebibytes=size):
                self.assert_says_why("it may not use 300 MiB of memory (ulimit -v)", prepare=limited_to(size))
        process = self.start(limited_to(500), DISPLAY=self.display.name)
        self.wait_for_front({})
        self.assertEqual(self.end(process), (0, ""))


class OutputTest(ConsoleTestCase):
    """Consoles whose standard output and error, which are one and the same, are not read."""

    def setUp(self):
        super().setUp()
        # Each profile of the rig's own is told of: more than a pipe takes.
        self.names = [f"Profile {number:05}" for number in range(3000)]
        write(self.home.settings_file, {**STAGE, "profiles": {name: [] for name in self.names}})

    @contextlib.contextmanager
    def running(self, output, prepare=None):
        """A console that starts, sends, takes a key and quits with nobody to read what it says."""
        process = subprocess.Popen([PROGRAM, "--resources", self.home.resources], preexec_fn=prepare,
                                   env=environment(self.home, DISPLAY=self.display.name), stdin=subprocess.DEVNULL,
                                   stdout=output, stderr=output)
        try:
            self.wait_for_front({})
            wait_until(lambda: self.display.titles() == sorted(stage.WINDOWS), "the windows")
            self.display.activate(FRONT)
            self.display.key("Tab", "9", "Return")
            self.wait_for_front({1: 9})
            yield
            process.send_signal(signal.SIGTERM)
            self.assertEqual(process.wait(30), 0)
        finally:
            process.kill()
            process.wait()

    def test_a_pipe_that_nobody_reads(self):
        reading, writing = os.pipe()
        with self.running(writing):
            pass
        os.close(writing)
        os.close(reading)

    def test_a_reader_that_comes_back_reads_every_line(self):
        reading, writing = os.pipe()
        with open(reading, encoding="utf-8") as lines, self.running(writing):
            os.close(writing)
            for name in self.names:
                self.assertEqual(lines.readline(), f"Adding user profile: '{name}'\n")

    def test_a_reader_that_is_gone(self):
        reading, writing = os.pipe()
        os.close(reading)
        with self.running(writing):
            pass
        os.close(writing)

    def test_a_terminal_that_stands_still(self):
        leader, terminal = pty.openpty()
        termios.tcflow(terminal, termios.TCOOFF)
        with self.running(terminal):
            pass
        os.close(terminal)
        os.close(leader)

    def test_streams_that_are_closed(self):
        def close():
            os.close(1)
            os.close(2)

        with self.running(subprocess.DEVNULL, close):
            pass

    def test_a_file_that_may_not_grow(self):
        with open(self.home.output / "log", "wb") as log:
            with self.running(log, lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000))):
                wait_until(lambda: os.fstat(log.fileno()).st_size == 1000, "a full file")


class RunTest(ConsoleTestCase):
    @unittest.skipIf(INSTRUMENTED, "the sanitizers need descriptors to look at an object")
    def test_without_descriptors_a_running_show_goes_on_and_is_back_at_the_next_start(self):
        write(self.home.settings_file, STAGE)
        with self.console() as console:
            console.set(DIMMER, "9")
            self.wait_for_front({1: 9})
            wait_until(lambda: self.home.recovery and list(self.home.recovery["levels"].values()) == [9],
                       "the show to be kept")
            resource.prlimit(console.process.pid, resource.RLIMIT_NOFILE, (3, 3))
            console.enter("10")
            self.wait_for_front({1: 10})
            console.kill(signal.SIGTERM)
            self.assertEqual(console.process.returncode, 0)
        self.assertEqual(self.home.settings, STAGE)
        self.receiver.forget()
        with self.console():
            self.wait_for_front({1: 9})  # as it was when it could last be kept


if __name__ == "__main__":
    unittest.main()
