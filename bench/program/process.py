"""What a process costs, as the kernel counts it."""

import os
import time
from pathlib import Path


class Process:
    def __init__(self, pid):
        self._folder = Path("/proc") / str(pid)

    def processor_seconds(self):
        """The time that the process has had a processor since it began, threads that have ended included."""
        ticks = (self._folder / "stat").read_text().rpartition(")")[2].split()
        return (int(ticks[11]) + int(ticks[12])) / os.sysconf("SC_CLK_TCK")

    def threads_seconds(self):
        """The same to the nanosecond, without the threads that have ended."""
        return sum(int(path.read_text().split()[0]) for path in self._folder.glob("task/*/schedstat")) * 1e-9

    def first_thread_seconds(self):
        """The part of it that its first thread had, to the nanosecond."""
        return int((self._folder / "schedstat").read_text().split()[0]) * 1e-9

    def share(self):
        return Share(self)

    def megabytes(self, kind):
        """Memory of one kind, by the name that the kernel has for it."""
        status = dict(line.split(":", 1) for line in (self._folder / "status").read_text().splitlines())
        return int(status[kind].split()[0]) / 1024


class Share:
    """The part of one core that a process takes, in percent, from when this is made."""

    def __init__(self, process):
        self._process = process
        self._began = time.monotonic()
        self._before = self._readings()

    def _readings(self):
        return self._process.threads_seconds(), self._process.processor_seconds()

    def percent(self):
        fine, coarse = (now - before for now, before in zip(self._readings(), self._before))
        # Threads that ended meanwhile are missing in the fine reading; the coarse one has steps of 10 ms.
        taken = coarse if coarse > fine + 0.02 else fine
        return taken / (time.monotonic() - self._began) * 100
