"""The order of the rooms is kept by the compiler: a room finds no header of a room above it."""

import itertools
import json
import os
import re
import shlex
import subprocess
import tempfile
import unittest
from pathlib import Path

BUILD = Path(os.environ["FADERHALL_BUILD"])
SOURCE = Path(__file__).resolve().parent.parent.parent
APP = SOURCE / "app"

# From the bottom up.
ROOMS = ["clock", "print", "process", "plist", "library", "artnet", "levels", "output", "rig", "settings", "patch",
         "rigging", "cues", "check", "console", "commands", "panels", "window", "adding"]
# Those that know widgets; the others can do without a screen.
WIDGET_ROOMS = {"panels", "window", "adding"}
# Those that do without Qt altogether.
PLAIN_ROOMS = {"clock", "print", "artnet", "levels", "output"}


def compile_command(room):
    """How the build compiles one of the room's sources, up to the name of that source."""
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        if Path(entry["file"]).parent == APP / room:
            words = shlex.split(entry["command"])
            return words[: words.index("-o")]
    raise AssertionError(f"the build compiles nothing of {room}")


def first_header(room):
    return f"{room}/{sorted((APP / room).glob('*.h'))[0].name}"


def preprocess(room, include):
    """What the room's compile command says to a source with that include; empty when it is content."""
    with tempfile.NamedTemporaryFile("w", suffix=".cpp") as source:
        source.write(f"#include {include}\n")
        source.flush()
        command = [*compile_command(room), "-E", "-o", os.devnull, source.name]
        return subprocess.run(command, cwd=BUILD, capture_output=True, text=True).stderr


def words_after(text, keyword):
    """The words that follow the keyword of a build file, up to the next keyword or the end of the call."""
    found = re.search(rf"\b{keyword}\s+([^)A-Z]*)", text)
    return found.group(1).split() if found else []


def built_links():
    """Which rooms each room links by its build file, and under "app" what joins them."""
    links = {room: set(words_after((APP / room / "CMakeLists.txt").read_text(), "ROOMS")) for room in ROOMS}
    joining = re.findall(r"target_link_libraries\(faderhall_(?:app|start)([^)]*)\)", (APP / "CMakeLists.txt").read_text())
    links["app"] = set(" ".join(joining).split()) & set(ROOMS)
    return links


def reachable(links, start):
    """Every room that one comes to by going from link to link."""
    found = set()
    waiting = list(links[start])
    while waiting:
        room = waiting.pop()
        if room not in found:
            found.add(room)
            waiting.extend(links[room])
    return found


def arrows(links):
    """The links that do not follow from others."""
    return {(room, below) for room, linked in links.items() for below in linked
            if not any(below in reachable(links, other) for other in linked - {below})}


class Rooms(unittest.TestCase):
    def test_every_folder_of_the_program_is_a_room_in_the_order(self):
        self.assertEqual(sorted(ROOMS), sorted(path.name for path in APP.iterdir() if path.is_dir()))
        self.assertEqual(ROOMS, re.findall(r"add_subdirectory\((\w+)\)", (APP / "CMakeLists.txt").read_text()))

    def test_a_room_finds_its_own_headers(self):
        for room in ROOMS:
            with self.subTest(room=room):
                self.assertEqual(preprocess(room, f'"{first_header(room)}"'), "")

    def test_the_compiler_refuses_a_header_of_a_room_above(self):
        for room, above in itertools.combinations(ROOMS, 2):
            with self.subTest(room=room, above=above):
                self.assertIn("No such file or directory", preprocess(room, f'"{first_header(above)}"'))

    def test_the_compiler_refuses_widgets_in_a_room_without_any(self):
        for room in ROOMS:
            for header in ("QWidget", "QLabel"):
                with self.subTest(room=room, header=header):
                    said = preprocess(room, f"<{header}>")
                    if room in WIDGET_ROOMS:
                        self.assertEqual(said, "")
                    else:
                        self.assertIn("No such file or directory", said)

    def test_the_compiler_refuses_the_toolkit_in_a_room_that_does_without(self):
        for room in ROOMS:
            with self.subTest(room=room):
                said = preprocess(room, "<QString>")
                if room in PLAIN_ROOMS:
                    self.assertIn("No such file or directory", said)
                else:
                    self.assertEqual(said, "")

    def test_only_the_entry_and_its_own_tests_know_the_delegate(self):
        include = re.compile(r'#\s*include\s*"AppDelegate\.h"')
        knowing = {path.name for path in APP.rglob("*.[ch]*") if include.search(path.read_text())}
        self.assertEqual(knowing, {"main.cpp", "AppDelegate.cpp"})


class Documents(unittest.TestCase):
    """What is told of the rooms is what is built."""

    maxDiff = None

    def setUp(self):
        text = (SOURCE / "docs" / "architecture.md").read_text()
        picture = re.search(r"```mermaid\n(.*?)```", text, re.DOTALL).group(1)
        self.boxes = dict(re.findall(r'^\s*(\w+)\["(.*)"\]$', picture, re.MULTILINE))
        self.drawn = re.findall(r"^\s*(\w+) --> (\w+)$", picture, re.MULTILINE)
        readme = (SOURCE / "README.md").read_text()
        self.folders = dict(re.findall(r"^\| `(app/\w*)/?` \| (.+) \|$", readme, re.MULTILINE))

    def test_every_room_has_a_box_in_the_picture_that_tells_what_it_holds(self):
        self.assertEqual(sorted(self.boxes), sorted([*ROOMS, "app"]))
        for room, label in self.boxes.items():
            with self.subTest(room=room):
                self.assertRegex(label, rf"^{room}/ : \S")

    def test_the_arrows_of_the_picture_are_the_links_of_the_build(self):
        self.assertEqual(sorted(self.drawn), sorted(arrows(built_links())))

    def test_every_room_has_a_row_in_the_table_that_tells_what_it_holds(self):
        self.assertEqual(sorted(self.folders), sorted(["app/", *(f"app/{room}" for room in ROOMS)]))


if __name__ == "__main__":
    unittest.main()
