"""The packages for Debian: what each needs and what it brings."""

import re
import tempfile
import unittest
from pathlib import Path

from installed import BUILD, CMAKE, COMMON, HEADLESS, PARTS, PROGRAM, InstalledTree, output_of


class DebianPackageTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory(prefix="faderhall-package-")))
        cpack = Path(CMAKE).with_name("cpack")
        output_of(cpack, "--config", f"{BUILD}/CPackConfig.cmake", "-G", "DEB", "-B", folder)
        cls.packages = {package.name.split("_")[0]: package for package in folder.glob("*.deb")}

    def field(self, part, name):
        return output_of("dpkg-deb", "--field", self.packages[part], name).strip()

    def needed(self, part):
        return {re.split(r"[ (]", need)[0] for need in self.field(part, "Depends").split(", ")}

    def contents(self, part):
        return output_of("dpkg-deb", "--contents", self.packages[part]).splitlines()

    def files(self, part):
        return sorted(line.split()[5] for line in self.contents(part) if not line.endswith("/"))

    def test_each_part_is_a_package_whose_name_tells_version_and_machine(self):
        machine = output_of("dpkg", "--print-architecture").strip()
        machines = {PROGRAM: machine, HEADLESS: machine, COMMON: "all"}
        self.assertEqual(sorted(package.name for package in self.packages.values()),
                         sorted(f"{part}_{self.field(part, 'Version')}_{machines[part]}.deb" for part in PARTS))
        for part in PARTS:
            self.assertEqual((self.field(part, "Package"), self.field(part, "Architecture")), (part, machines[part]))

    def test_the_desktop_program_needs_its_libraries_and_the_windows_of_the_toolkit(self):
        self.assertLessEqual({"qt6-qpa-plugins", "libqt6widgets6", "libqt6dbus6", "libplist3", "libc6"},
                             self.needed(PROGRAM))

    def test_the_program_without_windows_needs_its_libraries_and_no_windows(self):
        needed = self.needed(HEADLESS)
        self.assertLessEqual({"libqt6core6", "libplist3", "libc6"}, needed)
        self.assertFalse({"qt6-qpa-plugins", "libqt6widgets6", PROGRAM} & needed, needed)

    def test_no_program_needs_what_builds_or_tests_it(self):
        for part in (PROGRAM, HEADLESS):
            needed = self.needed(part)
            self.assertFalse({name for name in needed if name.endswith("-dev") or "test" in name}, needed)

    def test_each_program_needs_the_tables_of_its_own_version_which_need_nothing(self):
        for part in (PROGRAM, HEADLESS):
            self.assertIn(f"{COMMON} (= {self.field(COMMON, 'Version')})", self.field(part, "Depends").split(", "))
        self.assertEqual(self.field(COMMON, "Depends"), "")

    def test_each_tells_in_a_line_of_its_own_what_it_is(self):
        lines = [self.field(part, "Description").splitlines()[0] for part in PARTS]
        self.assertEqual(len(set(lines)), len(PARTS))
        for line in lines:
            self.assertRegex(line, r"^lighting console.{2,64}$")

    def test_together_they_bring_the_installed_tree_and_nothing_twice(self):
        with InstalledTree() as tree:
            expected = [f"./usr/{name}" for name in tree.files]
        self.assertEqual(sorted(name for part in PARTS for name in self.files(part)), expected)

    def test_each_brings_its_own_part(self):
        for part in PARTS:
            with self.subTest(part), InstalledTree(part) as tree:
                self.assertEqual(self.files(part), [f"./usr/{name}" for name in tree.files])
                self.assertLessEqual({f"./usr/share/doc/{part}/copyright", f"./usr/share/doc/{part}/changelog.gz"},
                                     set(self.files(part)))

    def test_everything_belongs_to_root_and_only_programs_run(self):
        for line in [line for part in PARTS for line in self.contents(part)]:
            mode, owner, *_, name = line.split()
            expected = "drwxr-xr-x" if name.endswith("/") else "-rwxr-xr-x" if "/bin/" in name else "-rw-r--r--"
            self.assertEqual((mode, owner), (expected, "root/root"), name)


if __name__ == "__main__":
    unittest.main()
