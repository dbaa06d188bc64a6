"""A console of the measured build, from the moment in which it is started."""

import os
import signal
import subprocess
import sys
import time
from contextlib import contextmanager
from pathlib import Path

from console import Console
from process import Process
from program import environment
from waiting import wait_until
from x11 import Line

END_SECONDS = 10
PAINTED = Path(__file__).with_name("painted.py")


def end(process):
    """Asks a process to end, and makes it when it does not."""
    if process.poll() is None:
        process.send_signal(signal.SIGCONT)
        process.terminate()
        try:
            process.wait(END_SECONDS)
        except subprocess.TimeoutExpired:
            process.kill()
    process.wait()


class PaintedWatch:
    """Waits beside the measuring for windows to stand painted; made before they are opened."""

    def __init__(self, display, count, seconds):
        self._seconds = seconds
        self._process = subprocess.Popen([sys.executable, PAINTED, display.name, str(count), str(seconds)],
                                         stdout=subprocess.PIPE, text=True)
        self._process.stdout.readline()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        end(self._process)
        self._process.stdout.close()

    def moment(self):
        answer = self._process.communicate(timeout=self._seconds + 5)[0].strip()
        if answer in ("", "late"):
            raise AssertionError("the windows were not painted in time")
        return float(answer)


class Started(Console):
    """A console that notes how long its first datagram took.

    What it says goes to files, or where `streams` leads: standard output and standard error. `prepare` is called in
    the new process before its program. The console is not waited for by its windows when `titles` are nothing.
    """

    def __init__(self, display, home, titles, arrivals, program, streams=None, prepare=None, seconds=60, **changes):
        super().__init__(display, home, titles, program=program, **changes)
        self._arrivals = arrivals
        self._streams = streams
        self._prepare = prepare
        self._seconds = seconds

    def __enter__(self):
        self._stdout = self.home.output / "stdout"
        self._stderr = self.home.output / "stderr"
        with Line(self.display.name) as line, open(self._stdout, "wb") as stdout, open(self._stderr, "wb") as stderr:
            out, err = self._streams or (stdout, stderr)
            self.began = time.time()
            self.process = subprocess.Popen(self._command, env=self._environment, stdin=subprocess.DEVNULL,
                                            stdout=out, stderr=err, preexec_fn=self._prepare)
            try:
                self._wait_for_first_datagram()
                if self._titles:
                    wait_until(lambda: len(line.windows()) >= len(self._titles), "the windows",
                               self._seconds)
            except BaseException:
                end(self.process)
                raise
        return self

    def __exit__(self, *_):
        end(self.process)

    def _wait_for_first_datagram(self):
        # First, since asking for windows takes the processor's time.
        first = self._arrivals.wait_for_count(1, seconds=self._seconds)[0]
        self.milliseconds_to_first_datagram = (first.moment - self.began) * 1e3
        self.milliseconds_of_processor = Process(self.process.pid).first_thread_seconds() * 1e3

    def ended_by(self):
        """What ended the program, or nothing while it runs."""
        status = self.process.poll()
        if status is None:
            return None
        return signal.Signals(-status).name if status < 0 else f"status {status}"


@contextmanager
def without_display(home, program):
    """A program that needs no display, in its home until the block ends."""
    variables = {name: value for name, value in environment(home).items() if name != "DISPLAY"}
    process = subprocess.Popen([program, "--resources", home.resources, "--to", "127.0.0.1"], env=variables,
                               stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        yield process
    finally:
        end(process)


def is_runnable(program):
    return os.access(program, os.X_OK)
