"""The console as a screen reader and other assistive technology find it."""

import plistlib
import tempfile
import unittest
from pathlib import Path

from accessibility import Accessibility
from case import ConsoleTestCase
from console import ADDRESS_CELL, TABLE_ROW_HEIGHT
from home import Home
from waiting import wait_until

RESOURCES = Path(__file__).resolve().parent.parent.parent / "resources"

WINDOWS = ["Faderhall", "Front Univ: 0 Addr: 1", "Par 1 Univ: 0 Addr: 11", "Par 2 Univ: 0 Addr: 16",
           "Par 3 Univ: 0 Addr: 21", "Par 4 Univ: 0 Addr: 26", "Head 1 Univ: 1 Addr: 1", "Head 2 Univ: 1 Addr: 21",
           "Bar Univ: 1 Addr: 101"]

HEAD = ["Pan", "Tilt", "Move Speed", "Dimmer", "Shutter", "Zoom", "Focus", "Iris", "Gobo", "Gobo Rotation", "Prism",
        "Cyan", "Magenta", "Yellow", "Colour Wheel", "Function"]
SLIDERS = [
    *[f"Front Dimmer {number}" for number in range(1, 7)],
    *[f"Par {number} {name}" for number in range(1, 5) for name in ("Dimmer", "Red", "Green", "Blue", "White")],
    *[f"Head {number} {name}" for number in (1, 2) for name in HEAD],
    *[f"Bar Cell {number} {name}" for number in range(1, 9) for name in ("Red", "Green", "Blue")],
]


class AccessibilityTest(ConsoleTestCase):
    """With the rig that comes with the program."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        folder = cls.enterClassContext(tempfile.TemporaryDirectory(prefix="faderhall-bus-"))
        cls.accessibility = cls.enterClassContext(Accessibility(cls.display, Path(folder)))

    def setUp(self):
        super().setUp()
        tables = [plistlib.loads((RESOURCES / f"{name}.plist").read_bytes()) for name in ("profiles", "configurations")]
        self.home = self.enterContext(Home(*tables))
        self.running = self.enterContext(self.console(WINDOWS, **self.accessibility.environment))

    def slider(self, name):
        return self.accessibility.find("slider", name)

    def test_every_fader_is_a_slider_by_name(self):
        self.assertEqual(self.accessibility.names("slider"), SLIDERS)

    def test_a_slider_tells_its_level_its_range_and_its_slots(self):
        pan = self.slider("Head 1 Pan")
        value = pan.queryValue()
        self.assertEqual((value.currentValue, value.minimumValue, value.maximumValue), (32768, 0, 65535))
        self.assertEqual(pan.description, "Universe 1, slots 1 and 2")
        white = self.slider("Par 2 White")
        self.assertEqual(white.queryValue().maximumValue, 255)
        self.assertEqual(white.description, "Universe 0, slot 20")

    def test_a_slider_that_is_set_moves_its_light(self):
        self.slider("Par 2 White").queryValue().currentValue = 200
        self.receiver.wait_for_levels(0, {20: 200})
        self.assertEqual(self.slider("Par 2 White").queryValue().currentValue, 200)

    def test_a_slider_can_be_given_the_keys(self):
        self.slider("Par 2 White").queryComponent().grabFocus()
        self.display.wait_for_front("Par 2 Univ: 0 Addr: 16")
        self.display.type("77")
        self.display.key("Return")
        self.receiver.wait_for_levels(0, {20: 77})

    def test_the_table_tells_the_fixtures(self):
        self.assertEqual([cell.name for cell in self.accessibility.all("table cell")][:6],
                         ["Front", "0", "1", "Par 1", "0", "11"])
        self.assertEqual([column.name for column in self.accessibility.all("table column header")],
                         ["Fixture", "Universe", "Address"])

    def test_a_mark_in_the_table_is_told_with_the_fixture_that_carries_it(self):
        par_2_address = (ADDRESS_CELL[0], ADDRESS_CELL[1] + 2 * TABLE_ROW_HEIGHT)
        self.display.activate("Faderhall")
        self.display.double_click("Faderhall", *par_2_address)
        self.display.type("14")
        self.display.key("Return")
        told = ["Par 1, warning: Overlaps Par 2 in slots 14 to 15", "Par 2, warning: Overlaps Par 1 in slots 14 to 15"]
        wait_until(lambda: [cell.name for cell in self.accessibility.all("table cell")][3:9:3] == told, "the warnings")

    def test_a_level_is_announced_of_the_fader_with_the_keys(self):
        self.slider("Par 2 White").queryComponent().grabFocus()
        self.display.wait_for_front("Par 2 Univ: 0 Addr: 16")
        announced = self.accessibility.levels_announced(lambda: self.display.key("Right"), 1)
        self.assertEqual(announced, [("Par 2 White", 1)])

    def test_the_focus_is_announced_of_the_fader_with_the_keys(self):
        self.slider("Par 2 White").queryComponent().grabFocus()
        self.display.wait_for_front("Par 2 Univ: 0 Addr: 16")
        self.accessibility.focus_announced(lambda: self.display.key("Up"), "Par 2 Blue")

    def test_the_focus_is_announced_of_the_selected_fader_when_its_window_comes_to_the_front(self):
        self.slider("Par 2 White").queryComponent().grabFocus()
        self.display.wait_for_front("Par 2 Univ: 0 Addr: 16")
        self.display.activate("Faderhall")
        self.accessibility.focus_announced(lambda: self.display.activate("Par 2 Univ: 0 Addr: 16"), "Par 2 White")

    def test_labels_are_text(self):
        labels = self.accessibility.names("label")
        for label in ("Position", "Intensity", "Cell 8"):
            self.assertIn(label, labels)

    def test_the_address_field_and_the_menus_have_names(self):
        self.assertEqual(self.accessibility.names("text"), ["Art-Net destination address"])
        menus = self.accessibility.names("menu item")
        for menu in ("File", "Edit", "Configurations", "Cues", "Window", "Help", "Next Cue", "Store Cue", "Small Stage"):
            self.assertIn(menu, menus)

    def test_the_status_line_tells_what_goes_out(self):
        wait_until(lambda: "Sending 2 universes to 127.0.0.1 (2 datagrams/s)" in self.accessibility.names("label"),
                   lambda: f"the status among {self.accessibility.names('label')}")

    def test_a_sheet_names_its_field(self):
        self.display.key("ctrl+n")
        self.display.wait_for_front("Enter new cue number")
        self.accessibility.find("text", "Cue number")
        self.display.key("Escape")


if __name__ == "__main__":
    unittest.main()
