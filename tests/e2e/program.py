"""A program that runs in a scratch home from the beginning of a block to its end."""

import os
import signal
import subprocess

from waiting import wait_until

# An instrumented build takes its time.
START_SECONDS = 60
END_SECONDS = 30

KEPT_VARIABLES = ("PATH", "LSAN_OPTIONS", "ASAN_OPTIONS", "UBSAN_OPTIONS")


def environment(home, **changes):
    """What the program is started with: nothing of the caller's but the path and the sanitizers' options."""
    kept = {name: os.environ[name] for name in KEPT_VARIABLES if name in os.environ}
    return {
        **kept,
        "HOME": str(home.folder),
        "XDG_CONFIG_HOME": str(home.config),
        "XDG_RUNTIME_DIR": str(home.runtime),
        "LC_ALL": "C.UTF-8",
        "DBUS_SESSION_BUS_ADDRESS": f"unix:path={home.runtime}/no-bus",
        **changes,
    }


class RunningProgram:
    """It has ended as it should when its status is 0 and it wrote nothing to standard error, which is where a
    sanitizer would report.
    """

    def __init__(self, home, command, **changes):
        """`changes` are changes to the environment."""
        self.home = home
        self._command = command
        self._environment = environment(home, **changes)

    def __enter__(self):
        self._stdout = self.home.output / "stdout"
        self._stderr = self.home.output / "stderr"
        with open(self._stdout, "wb") as stdout, open(self._stderr, "wb") as stderr:
            self.process = subprocess.Popen(self._command, env=self._environment, stdin=subprocess.DEVNULL,
                                            stdout=stdout, stderr=stderr)
        try:
            self.wait_for_start()
        except BaseException:
            self._give_up()
            raise
        return self

    def __exit__(self, exception_type, *_):
        if exception_type:
            self._give_up()
        elif self.process.returncode is None:
            self.terminate()

    def wait_for_start(self):
        """Returns once the program can be worked with."""
        raise NotImplementedError

    def keep_traces(self):
        """Called before a program that still runs is given up."""

    def _give_up(self):
        if self.process.poll() is None:
            self.keep_traces()
            self.process.kill()
        self.process.wait()
        print(f"Console {self.process.pid}, status {self.process.returncode}\n"
              f"standard output:\n{self.stdout}standard error:\n{self.stderr}")

    @property
    def stdout(self):
        return self._stdout.read_text()

    @property
    def stderr(self):
        return self._stderr.read_text()

    def check_runs(self):
        if self.process.poll() is not None:
            raise AssertionError(f"The program has ended:\n{self.stderr}")

    # --- Ways to end -----------------------------------------------------------------------------------

    def terminate(self, number=signal.SIGTERM):
        self.process.send_signal(number)
        self.wait_for_end()

    def kill(self, number=signal.SIGKILL):
        """Ends the program without its doing."""
        self.process.send_signal(number)
        self.process.wait(END_SECONDS)

    def wait_for_end(self):
        status = wait_until(lambda: self._status(), "the end of the program", END_SECONDS)
        if status != "0" or self.stderr:
            raise AssertionError(f"Exit status {status}, standard error:\n{self.stderr}")

    def _status(self):
        status = self.process.poll()
        return None if status is None else str(status)
