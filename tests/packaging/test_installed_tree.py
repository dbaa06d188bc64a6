"""The files of an installed Faderhall: where they are, and that the desktop understands them."""

import gzip
import re
import struct
import unittest

from installed import IDENTIFIER, InstalledTree, output_of

OPTION = re.compile(r"^  (-.*?)  +(\S.*)$", re.MULTILINE)


def words(text):
    return " ".join(text.split())


class InstalledTreeTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.tree = cls.enterClassContext(InstalledTree())
        cls.help = output_of(cls.tree.program, "--help")
        cls.man_page = cls.unpacked("man", "man1", "faderhall.1.gz")

    @classmethod
    def share(cls, *names):
        return cls.tree.prefix.joinpath("share", *names)

    @classmethod
    def unpacked(cls, *names):
        return gzip.decompress(cls.share(*names).read_bytes()).decode()

    def test_every_file_has_its_place(self):
        self.assertEqual([name for name in self.tree.files if not name.startswith("share/doc/")], [
            "bin/faderhall",
            f"share/applications/{IDENTIFIER}.desktop",
            "share/faderhall/configurations.plist",
            "share/faderhall/profiles.plist",
            f"share/icons/hicolor/128x128/apps/{IDENTIFIER}.png",
            f"share/icons/hicolor/256x256/apps/{IDENTIFIER}.png",
            f"share/icons/hicolor/48x48/apps/{IDENTIFIER}.png",
            f"share/icons/hicolor/scalable/apps/{IDENTIFIER}.svg",
            "share/man/man1/faderhall.1.gz",
            f"share/metainfo/{IDENTIFIER}.metainfo.xml",
        ])

    def test_the_documents_come_with_everything_that_they_lead_to(self):
        documents = self.share("doc", "faderhall")
        self.assertTrue((documents / "copyright").is_file())
        self.assertTrue((documents / "docs" / "operator.md").is_file())
        for document in documents.rglob("*.md"):
            for link in re.findall(r"\]\(([^)#]+)(?:#[^)]*)?\)", document.read_text()):
                if not link.startswith("http"):
                    with self.subTest(document=document.name, link=link):
                        self.assertTrue((document.parent / link).exists())

    def test_the_desktop_entry_is_valid(self):
        self.assertEqual(output_of("desktop-file-validate", self.share("applications", f"{IDENTIFIER}.desktop")), "")

    def test_the_desktop_entry_starts_what_is_installed_under_its_own_icon(self):
        entry = self.share("applications", f"{IDENTIFIER}.desktop").read_text().splitlines()
        self.assertIn(f"Exec={self.tree.program.name}", entry)
        self.assertIn(f"Icon={IDENTIFIER}", entry)

    def test_the_metainfo_is_valid_and_tells_the_version_of_the_program(self):
        metainfo = self.share("metainfo", f"{IDENTIFIER}.metainfo.xml")
        self.assertIn("Validation was successful", output_of("appstreamcli", "validate", "--no-net", metainfo))
        version = output_of(self.tree.program, "--version").split()[1]
        self.assertIn(f'<release version="{version}"', metainfo.read_text())

    def test_each_picture_of_the_icon_has_the_size_of_its_folder(self):
        for size in (48, 128, 256):
            with self.subTest(size):
                picture = self.share("icons", "hicolor", f"{size}x{size}", "apps", f"{IDENTIFIER}.png").read_bytes()
                self.assertEqual(struct.unpack(">II", picture[16:24]), (size, size))

    def test_the_man_page_has_no_mistakes(self):
        self.assertEqual(output_of("groff", "-man", "-Tutf8", "-ww", "-z", given=self.man_page), "")

    def test_the_man_page_tells_what_help_tells(self):
        options = OPTION.findall(self.help)
        self.assertEqual([option for option, _ in options], ["-h, --help", "-v, --version", "--resources <DIR>", "--check",
                                                             "--list", "--import <FILE...>", "--mode <NAME>",
                                                             "--into <FILE>"])
        description = self.help.splitlines()[1]
        page = self.man_sections()
        self.assertIn(description, page["DESCRIPTION"])
        self.assertEqual(page["OPTIONS"], " ".join(f"{option} {meaning}" for option, meaning in options))

    def test_the_man_page_tells_the_version_of_the_program(self):
        version = output_of(self.tree.program, "--version").split()[1]
        self.assertIn(f"Faderhall {version}", self.man_page.splitlines()[0])

    def test_the_changelog_of_the_package_is_one_and_tells_its_version(self):
        changelog = self.unpacked("doc", "faderhall", "changelog.gz")
        version = output_of(self.tree.program, "--version").split()[1]
        self.assertEqual(output_of("dpkg-parsechangelog", "-l-", "-S", "Version", given=changelog), f"{version}\n")

    def man_sections(self):
        """The page as a reader with a wide terminal sees it: each section's words by its heading."""
        page = output_of("groff", "-man", "-Tascii", "-P-cbou", "-rHY=0", "-rLL=1000n", given=self.man_page)
        _, *parts = re.split(r"^([A-Z][A-Z ]+)$", page, flags=re.MULTILINE)
        return {heading: words(text) for heading, text in zip(parts[::2], parts[1::2])}


if __name__ == "__main__":
    unittest.main()
