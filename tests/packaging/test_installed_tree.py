"""The files of an installed Faderhall: where they are, and that the desktop understands them."""

import gzip
import re
import shutil
import struct
import tempfile
import unittest
from pathlib import Path

from installed import COMMON, HEADLESS, IDENTIFIER, PARTS, PROGRAM, InstalledTree, output_of

OPTIONS = {
    PROGRAM: ["-h, --help", "-v, --version", "--resources <DIR>", "--check", "--list", "--import <FILE...>",
              "--mode <NAME>", "--into <FILE>"],
    HEADLESS: ["-h, --help", "-v, --version", "--resources <DIR>", "--to <ADDRESS>"],
}
OPTION = re.compile(r"^  (-.*?)  +(\S.*)$", re.MULTILINE)


def words(text):
    return " ".join(text.split())


class InstalledTreeTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.tree = cls.enterClassContext(InstalledTree())
        cls.help = {name: output_of(cls.tree.program(name), "--help") for name in OPTIONS}
        cls.version = output_of(cls.tree.program(), "--version").split()[1]
        cls.man_pages = {name: cls.unpacked("man", "man1", f"{name}.1.gz") for name in OPTIONS}

    @classmethod
    def share(cls, *names):
        return cls.tree.prefix.joinpath("share", *names)

    @classmethod
    def unpacked(cls, *names):
        return gzip.decompress(cls.share(*names).read_bytes()).decode()

    def test_every_file_has_its_place(self):
        self.assertEqual([name for name in self.tree.files if not name.startswith("share/doc/")], [
            "bin/faderhall",
            "bin/faderhall-headless",
            "lib/systemd/user/faderhall-headless.service",
            f"share/applications/{IDENTIFIER}.desktop",
            "share/faderhall/configurations.plist",
            "share/faderhall/profiles.plist",
            f"share/icons/hicolor/128x128/apps/{IDENTIFIER}.png",
            f"share/icons/hicolor/256x256/apps/{IDENTIFIER}.png",
            f"share/icons/hicolor/48x48/apps/{IDENTIFIER}.png",
            f"share/icons/hicolor/scalable/apps/{IDENTIFIER}.svg",
            "share/man/man1/faderhall-headless.1.gz",
            "share/man/man1/faderhall.1.gz",
            f"share/metainfo/{IDENTIFIER}.metainfo.xml",
        ])

    def test_each_program_comes_with_what_is_its_own_and_shares_the_rest(self):
        parts = {}
        for part in PARTS:
            with InstalledTree(part) as tree:
                parts[part] = [name for name in tree.files if not name.startswith("share/doc/")]
        self.assertEqual(parts[HEADLESS], ["bin/faderhall-headless", "lib/systemd/user/faderhall-headless.service",
                                           "share/man/man1/faderhall-headless.1.gz"])
        self.assertEqual(parts[COMMON], ["share/faderhall/configurations.plist", "share/faderhall/profiles.plist"])
        together = sorted(name for names in parts.values() for name in names)
        self.assertEqual(together, [name for name in self.tree.files if not name.startswith("share/doc/")])

    def test_the_documents_come_with_everything_that_they_lead_to(self):
        documents = self.share("doc", "faderhall")
        for part in PARTS:
            self.assertTrue((self.share("doc", part) / "copyright").is_file())
        for document in ("operator.md", "headless.md"):
            self.assertTrue((documents / "docs" / document).is_file())
        for document in documents.rglob("*.md"):
            for link in re.findall(r"\]\(([^)#]+)(?:#[^)]*)?\)", document.read_text()):
                if not link.startswith("http"):
                    with self.subTest(document=document.name, link=link):
                        self.assertTrue((document.parent / link).exists())

    def test_the_desktop_entry_is_valid(self):
        self.assertEqual(output_of("desktop-file-validate", self.share("applications", f"{IDENTIFIER}.desktop")), "")

    def test_the_desktop_entry_starts_what_is_installed_under_its_own_icon(self):
        entry = self.share("applications", f"{IDENTIFIER}.desktop").read_text().splitlines()
        self.assertIn(f"Exec={self.tree.program().name}", entry)
        self.assertIn(f"Icon={IDENTIFIER}", entry)

    def test_the_metainfo_is_valid_and_tells_the_version_of_the_program(self):
        metainfo = self.share("metainfo", f"{IDENTIFIER}.metainfo.xml")
        self.assertIn("Validation was successful", output_of("appstreamcli", "validate", "--no-net", metainfo))
        self.assertIn(f'<release version="{self.version}"', metainfo.read_text())

    def test_each_picture_of_the_icon_has_the_size_of_its_folder(self):
        for size in (48, 128, 256):
            with self.subTest(size):
                picture = self.share("icons", "hicolor", f"{size}x{size}", "apps", f"{IDENTIFIER}.png").read_bytes()
                self.assertEqual(struct.unpack(">II", picture[16:24]), (size, size))

    def test_the_man_pages_have_no_mistakes(self):
        for name, page in self.man_pages.items():
            with self.subTest(name):
                self.assertEqual(output_of("groff", "-man", "-Tutf8", "-ww", "-z", given=page), "")

    def test_the_man_pages_tell_what_help_tells(self):
        for name, expected in OPTIONS.items():
            with self.subTest(name):
                options = OPTION.findall(self.help[name])
                self.assertEqual([option for option, _ in options], expected)
                description = self.help[name].splitlines()[1]
                page = self.man_sections(name)
                self.assertIn(description, page["DESCRIPTION"])
                self.assertEqual(page["OPTIONS"], " ".join(f"{option} {meaning}" for option, meaning in options))

    def test_the_man_pages_tell_the_version_of_the_programs(self):
        for name, page in self.man_pages.items():
            self.assertEqual(output_of(self.tree.program(name), "--version"), f"{name} {self.version}\n")
            self.assertIn(f"Faderhall {self.version}", page.splitlines()[0])

    def test_the_changelogs_of_the_packages_are_ones_and_tell_the_version(self):
        for part in PARTS:
            changelog = self.unpacked("doc", part, "changelog.gz")
            self.assertEqual(output_of("dpkg-parsechangelog", "-l-", "-S", "Version", given=changelog),
                             f"{self.version}\n")

    def test_the_service_starts_what_is_installed_and_tells_where_to_read(self):
        lines = self.service.read_text().splitlines()
        self.assertIn(f"ExecStart={HEADLESS}", lines)
        self.assertIn(f"Documentation=man:{HEADLESS}(1)", lines)

    @unittest.skipUnless(shutil.which("systemd-analyze"), "there is no systemd here to ask")
    def test_the_service_is_valid(self):
        with tempfile.TemporaryDirectory(prefix="faderhall-unit-") as folder:
            unit = Path(folder) / self.service.name
            unit.write_text(self.service.read_text().replace("ExecStart=", f"ExecStart={self.tree.prefix}/bin/"))
            self.assertEqual(output_of("env", f"XDG_RUNTIME_DIR={folder}", "systemd-analyze", "--user", "--man=no",
                                       "verify", unit), "")

    @property
    def service(self):
        return self.tree.prefix / "lib" / "systemd" / "user" / "faderhall-headless.service"

    def man_sections(self, name):
        """The page as a reader with a wide terminal sees it: each section's words by its heading."""
        page = output_of("groff", "-man", "-Tascii", "-P-cbou", "-rHY=0", "-rLL=1000n", given=self.man_pages[name])
        _, *parts = re.split(r"^([A-Z][A-Z ]+)$", page, flags=re.MULTILINE)
        return {heading: words(text) for heading, text in zip(parts[::2], parts[1::2])}


if __name__ == "__main__":
    unittest.main()
