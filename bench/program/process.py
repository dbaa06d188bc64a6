"""What a process costs, as the kernel counts it."""

from pathlib import Path


class Process:
    def __init__(self, pid):
        self._folder = Path("/proc") / str(pid)

    def processor_seconds(self):
        """The time that its threads have spent on a processor, to the nanosecond."""
        return sum(int((task / "schedstat").read_text().split()[0])
                   for task in (self._folder / "task").iterdir()) * 1e-9

    def megabytes(self, kind):
        """Memory of one kind, by the name that the kernel has for it."""
        status = dict(line.split(":", 1) for line in (self._folder / "status").read_text().splitlines())
        return int(status[kind].split()[0]) / 1024
