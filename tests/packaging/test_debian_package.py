"""The package for Debian: what it needs and what it brings."""

import re
import tempfile
import unittest
from pathlib import Path

from installed import BUILD, CMAKE, InstalledTree, output_of


class DebianPackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory(prefix="faderhall-package-")))
        cpack = Path(CMAKE).with_name("cpack")
        output_of(cpack, "--config", f"{BUILD}/CPackConfig.cmake", "-G", "DEB", "-B", folder)
        cls.package, = folder.glob("*.deb")

    def field(self, name):
        return output_of("dpkg-deb", "--field", self.package, name).strip()

    def test_its_name_tells_version_and_machine(self):
        self.assertEqual(self.package.name,
                         f"faderhall_{self.field('Version')}_{self.field('Architecture')}.deb")

    def test_it_needs_the_libraries_of_the_program_and_the_windows_of_the_toolkit(self):
        needed = {re.split(r"[ (]", part)[0] for part in self.field("Depends").split(", ")}
        self.assertLessEqual({"qt6-qpa-plugins", "libqt6widgets6", "libqt6dbus6", "libplist3", "libc6"}, needed)
        self.assertFalse({name for name in needed if name.endswith("-dev") or "test" in name}, needed)

    def test_it_brings_the_installed_tree_and_nothing_else(self):
        with InstalledTree() as tree:
            expected = [f"./usr/{name}" for name in tree.files]
        lines = output_of("dpkg-deb", "--contents", self.package).splitlines()
        self.assertEqual(sorted(line.split()[5] for line in lines if not line.endswith("/")), expected)

    def test_everything_belongs_to_root_and_only_the_program_runs(self):
        for line in output_of("dpkg-deb", "--contents", self.package).splitlines():
            mode, owner, *_, name = line.split()
            expected = "drwxr-xr-x" if name.endswith("/") else "-rwxr-xr-x" if "/bin/" in name else "-rw-r--r--"
            self.assertEqual((mode, owner), (expected, "root/root"), name)


if __name__ == "__main__":
    unittest.main()
