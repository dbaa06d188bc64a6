"""The order of the rooms is kept by the compiler: a room finds no header of a room above it."""

import json
import os
import re
import shlex
import subprocess
import tempfile
import unittest
from pathlib import Path

BUILD = Path(os.environ["FADERHALL_BUILD"])
APP = Path(__file__).resolve().parent.parent.parent / "app"

# From the bottom up.
ROOMS = ["clock", "print", "process", "plist", "library", "widgets", "artnet", "controls", "fixtures", "patch",
         "settings", "rigging", "cues", "check", "commands", "window", "adding"]


def compile_command(room):
    """How the build compiles one of the room's sources, up to the name of that source."""
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        if Path(entry["file"]).parent == APP / room:
            words = shlex.split(entry["command"])
            return words[: words.index("-o")]
    raise AssertionError(f"the build compiles nothing of {room}")


def first_header(room):
    return f"{room}/{sorted((APP / room).glob('*.h'))[0].name}"


def preprocess(room, header):
    """What the room's compile command says to a source that includes the header; empty when it is content."""
    with tempfile.NamedTemporaryFile("w", suffix=".cpp") as source:
        source.write(f'#include "{header}"\n')
        source.flush()
        command = [*compile_command(room), "-E", "-o", os.devnull, source.name]
        return subprocess.run(command, cwd=BUILD, capture_output=True, text=True).stderr


class Rooms(unittest.TestCase):
    def test_every_folder_of_the_program_is_a_room_in_the_order(self):
        self.assertEqual(sorted(ROOMS), sorted(path.name for path in APP.iterdir() if path.is_dir()))

    def test_a_room_finds_its_own_headers(self):
        for room in ROOMS:
            with self.subTest(room=room):
                self.assertEqual(preprocess(room, first_header(room)), "")

    def test_the_compiler_refuses_a_header_of_a_room_above(self):
        for index, room in enumerate(ROOMS):
            for above in ROOMS[index + 1 :]:
                with self.subTest(room=room, above=above):
                    self.assertIn("No such file or directory", preprocess(room, first_header(above)))

    def test_only_the_entry_and_its_own_tests_know_the_delegate(self):
        include = re.compile(r'#\s*include\s*"AppDelegate\.h"')
        knowing = {path.name for path in APP.rglob("*.[ch]*") if include.search(path.read_text())}
        self.assertEqual(knowing, {"main.cpp", "AppDelegate.cpp"})


if __name__ == "__main__":
    unittest.main()
