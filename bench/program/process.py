"""What a process costs, as the kernel counts it."""

import os
from pathlib import Path


class Process:
    def __init__(self, pid):
        self._folder = Path("/proc") / str(pid)

    def processor_seconds(self):
        """The time that the process has had a processor since it began, threads that have ended included."""
        ticks = (self._folder / "stat").read_text().rpartition(")")[2].split()
        return (int(ticks[11]) + int(ticks[12])) / os.sysconf("SC_CLK_TCK")

    def first_thread_seconds(self):
        """The part of it that its first thread had, to the nanosecond."""
        return int((self._folder / "schedstat").read_text().split()[0]) * 1e-9

    def megabytes(self, kind):
        """Memory of one kind, by the name that the kernel has for it."""
        status = dict(line.split(":", 1) for line in (self._folder / "status").read_text().splitlines())
        return int(status[kind].split()[0]) / 1024
