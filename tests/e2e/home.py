"""A scratch home: the files that the console finds when it starts and leaves when it ends."""

import plistlib
import tempfile
from pathlib import Path


def read(path):
    """A property list as it stands on the disk; nothing while there is none."""
    try:
        return plistlib.loads(path.read_bytes())
    except FileNotFoundError:
        return None


def write(path, content, kind=plistlib.FMT_XML):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(plistlib.dumps(content, fmt=kind))


class Home:
    """A home folder with resource tables of its own; it goes with the block."""

    def __init__(self, profiles, configurations):
        self._profiles = profiles
        self._configurations = configurations

    def __enter__(self):
        self._scratch = tempfile.TemporaryDirectory(prefix="faderhall-e2e-")
        scratch = Path(self._scratch.name)
        self.folder = scratch / "home"
        self.config = scratch / "config"
        self.runtime = scratch / "runtime"
        self.resources = scratch / "resources"
        self.output = scratch / "output"
        for folder in (self.folder, self.config, self.runtime, self.output):
            folder.mkdir(mode=0o700)
        write(self.resources / "profiles.plist", self._profiles)
        write(self.resources / "configurations.plist", self._configurations)
        return self

    def __exit__(self, *_):
        self._scratch.cleanup()

    @property
    def settings_file(self):
        return (self.folder / "Library" / "Application Support" / "com.KTQ.OrvaneApplications"
                / "Faderhall.plist")

    @property
    def recovery_file(self):
        return self.settings_file.with_name("Faderhall.recovery.plist")

    @property
    def defaults_file(self):
        return self.config / "com.KTQ.OrvaneApplications" / "Faderhall.plist"

    @property
    def settings(self):
        return read(self.settings_file)

    @property
    def defaults(self):
        return read(self.defaults_file)

    @property
    def recovery(self):
        """The recovery file with its settings as a dictionary and its levels by the keys of their controls."""
        kept = read(self.recovery_file)
        if kept:
            kept["settings"] = plistlib.loads(kept["settings"])
            entries = (entry.split(" ", 1) for entry in kept["levels"].decode().split("\0") if entry)
            kept["levels"] = {key: int(level) for level, key in entries}
        return kept
