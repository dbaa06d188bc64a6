"""Adding, importing and removing fixtures, and undoing it, by keys."""

import unittest

from case import ConsoleTestCase
from console import ADDRESS_CELL, NAME_CELL, TABLE_ROW_HEIGHT, Fader
from cues import new_cue
from home import Home
from stage import BACK, DIMMER, FRONT, GREEN, MAIN, RED, placement
from waiting import wait_until

HEAD = """<!DOCTYPE FixtureDefinition><FixtureDefinition>
<Manufacturer>Acme</Manufacturer><Model>Head</Model><Type>Moving Head</Type>
<Channel Name="Pan" Preset="PositionPan"/><Channel Name="Pan Fine" Preset="PositionPanFine"/>
<Channel Name="Dimmer" Preset="IntensityMasterDimmer"/>
<Mode Name="Long"><Channel Number="0">Pan</Channel><Channel Number="1">Pan Fine</Channel>
<Channel Number="2">Dimmer</Channel></Mode>
</FixtureDefinition>"""

EMPTY = {"_default_configuration": "Empty", "Empty": {"views": []}}
LAMP = {"Lamp": [{"name": "Level"}]}

HEADS = [f"Acme Head {number} Univ: 0 Addr: {1 + 3 * (number - 1)}" for number in range(1, 5)]
LAMPS = [f"Lamp {number} Univ: 0 Addr: {12 + number}" for number in range(1, 7)]


class PatchingTestCase(ConsoleTestCase):
    def choose(self, key):
        """Chooses an item of the Fixtures menu."""
        self.display.activate(MAIN)
        self.display.key("alt+x")
        wait_until(self.display.popups, "the menu")
        self.display.key(key)

    def add(self, words, copies=1):
        self.choose("a")
        self.display.wait_for_front("Add Fixture")
        self.display.type(words)
        self.display.key("alt+c", "ctrl+a")
        self.display.type(str(copies))
        self.display.key("Return")

    def set_address(self, row, text):
        x, y = ADDRESS_CELL
        self.display.activate(MAIN)
        self.display.double_click(MAIN, x, y + TABLE_ROW_HEIGHT * row)
        self.display.type(text)
        self.display.key("Return")


class NewRigTest(PatchingTestCase):
    def setUp(self):
        self.home = self.enterContext(Home(LAMP, EMPTY))
        self.receiver = self.enterContext(self.make_receiver())

    def import_head(self):
        path = self.home.folder / "head.qxf"
        path.write_text(HEAD)
        self.choose("i")
        self.display.wait_for_front("Import Fixture")
        self.display.type(str(path))
        self.display.key("Return")
        self.display.wait_for_front("Acme Head was imported")
        self.display.key("Return")
        self.display.wait_for_front(MAIN)

    def patch(self, console):
        """Four heads and six lamps, out of an empty rig."""
        self.import_head()
        self.add("long acme", copies=4)
        console.wait_for_windows([MAIN, *HEADS])
        self.add("lamp", copies=6)
        console.wait_for_windows([MAIN, *HEADS, *LAMPS])

    def test_a_rig_is_patched_shown_and_there_again(self):
        with self.console([MAIN]) as console:
            self.patch(console)
            console.set(Fader(HEADS[0], 0, 0), "258")
            console.set(Fader(LAMPS[0], 0, 0), "40")
            self.receiver.wait_for_levels(0, {1: 1, 2: 2, 13: 40})
            self.set_address(4, "3")
            self.receiver.wait_for_levels(0, {1: 1, 2: 2, 3: 40})
            self.set_address(4, "100")
            self.receiver.wait_for_levels(0, {1: 1, 2: 2, 100: 40})
            self.display.key("ctrl+z", "ctrl+z")
            console.wait_for_windows([*HEADS, *LAMPS, MAIN])
            self.receiver.wait_for_levels(0, {1: 1, 2: 2, 13: 40})
            new_cue(console, "1")
            self.display.key("ctrl+w")
            console.set(Fader(HEADS[3], 0, 1), "255")
            new_cue(console, "2")
            self.display.key("ctrl+w")
            self.display.activate(HEADS[0])
            console.quit()
        self.receiver.forget()
        with self.console([MAIN, *HEADS[1:], *LAMPS, HEADS[0]]):
            self.receiver.wait_for_levels(0, {1: 1, 2: 2, 12: 255, 13: 40})
            self.display.key("ctrl+a")
            self.receiver.wait_for_levels(0, {1: 1, 2: 2, 13: 40})
            self.display.key("ctrl+a")
            self.receiver.wait_for_levels(0, {1: 1, 2: 2, 12: 255, 13: 40})

    def test_an_import_and_an_add_are_undone_and_leave_nothing(self):
        with self.console([MAIN]) as console:
            self.import_head()
            self.add("long")
            console.wait_for_windows([MAIN, "Acme Head Univ: 0 Addr: 1"])
            self.display.key("1", "2")  # a number that is being typed
            self.display.key("ctrl+z")  # from the window that goes with it
            console.wait_for_windows([MAIN])
            self.display.key("ctrl+z")
            self.display.settle()
            console.quit()
        self.assertEqual(self.home.settings, {"views": [], "profiles": {}})

    def test_a_file_that_is_no_fixture_is_refused(self):
        with self.console([MAIN]):
            path = self.home.folder / "notes.qxf"
            path.write_text("remember the milk")
            self.choose("i")
            self.display.wait_for_front("Import Fixture")
            self.display.type(str(path))
            self.display.key("Return")
            self.display.wait_for_front("The fixture was not imported")
            self.display.key("Return")
            self.display.wait_for_front(MAIN)
        self.assertNotIn("profiles", self.home.settings)


class RemovingTest(PatchingTestCase):
    def remove(self, row=0, answer="Return"):
        x, y = NAME_CELL
        self.display.activate(MAIN)
        self.display.click(MAIN, x, y + TABLE_ROW_HEIGHT * row)
        self.display.key("Delete")
        self.display.wait_for_front("Remove this fixture?")
        self.display.key(answer)

    def test_a_removed_fixture_is_gone_and_comes_back_with_its_levels(self):
        with self.console() as console:
            console.set(DIMMER, "128")
            self.wait_for_front({1: 128})
            self.remove()
            console.wait_for_windows([BACK, MAIN])
            self.receiver.forget()
            self.receiver.wait_for_count(2, universe=2)
            self.assertLessEqual(len(self.receiver.datagrams(1)), 1)
            self.display.key("ctrl+z")
            console.wait_for_windows([MAIN, BACK, FRONT])
            self.wait_for_front({1: 128})
        self.assertEqual(self.home.settings["views"], [placement("Front", 1, 1), placement("Back", 2, 101)])

    def test_a_question_that_is_cancelled_removes_nothing(self):
        with self.console() as console:
            self.remove(answer="Escape")
            console.wait_for_windows([FRONT, BACK, MAIN])

    def test_a_removal_during_a_fade_takes_its_slots_to_0(self):
        with self.console() as console:
            self.set_address(1, "20")
            x, y = NAME_CELL
            self.display.double_click(MAIN, x + 195, y + TABLE_ROW_HEIGHT)  # the universe
            self.display.type("1")
            self.display.key("Return")
            self.receiver.wait_for_levels(1, {7: 32, 26: 32})
            console.select(RED)
            console.enter("9", "s")
            console.enter("255")
            console.select(GREEN)
            self.display.key("5")
            self.remove()
            console.wait_for_windows(["Back Univ: 1 Addr: 20", MAIN])
            self.receiver.wait_for_levels(1, {26: 32})
            self.display.key("ctrl+z")
            console.wait_for_windows([MAIN, "Back Univ: 1 Addr: 20", FRONT])

    def test_the_cues_keep_their_records(self):
        with self.console() as console:
            console.set(DIMMER, "128")
            new_cue(console, "1")
            self.display.key("ctrl+w")
            self.remove()
            console.wait_for_windows([BACK, MAIN])
            console.quit()
        self.assertEqual(self.home.settings["cues"], {"1": [{"key": "Front.Dimmer", "value": 128, "time": 0.0}]})
        self.assertEqual(self.home.settings["views"], [placement("Back", 2, 101)])


if __name__ == "__main__":
    unittest.main()
