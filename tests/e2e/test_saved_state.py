"""What stands in the files after the console has ended, to the type of each value."""

import plistlib
import signal
import unittest
from datetime import datetime

import cues
import stage
from case import ConsoleTestCase
from console import ADDRESS_CELL
from cues import PLACEHOLDER, new_cue
from home import write
from stage import BACK, BACK_DIMMER, DIMMER, FRONT, MAIN, PAN, SHUTTER, STAGE
from waiting import wait_until

# One value of each type, and numbers that a careless reader would take for another type.
EVERY_TYPE = {
    "text": "Grüße & <b>1</b>", "empty": "", "yes": True, "no": False, "one": 1, "zero": 0, "one as a real": 1.0,
    "half": 0.5, "below": -7, "beyond 32 bits": 1 << 40, "data": bytes(range(256)), "no data": b"",
    "date": datetime(2026, 2, 28, 23, 59, 58), "list": [1, 1.0, True, "1", [], {}], "table": {"": {"a.b": []}},
}


def typed(value):
    """A value in which 1, 1.0 and true are three different things."""
    if isinstance(value, dict):
        return {key: typed(member) for key, member in value.items()}
    if isinstance(value, list):
        return [typed(member) for member in value]
    return type(value).__name__, value


class SavedStateTestCase(ConsoleTestCase):
    def assert_typed_equal(self, left, right):
        self.assertEqual(typed(left), typed(right))


class SettingsFileTest(SavedStateTestCase):
    def test_holds_fixtures_and_cues_and_nothing_else(self):
        with self.console() as console:
            new_cue(console, "1.5")
            console.set(DIMMER, "200")
            console.select(PAN)
            console.enter("2", "s")
            console.set(SHUTTER, "0")
            self.display.key("ctrl+w")
            new_cue(console, "2")
            console.quit()
        settings = {**self.home.settings, "cues": cues.sorted_records(self.home.settings["cues"])}
        self.assert_typed_equal(settings, {
            "views": [
                {"name": "Front", "universe": 1, "address": 1, "layer": 1, "profiles": [{"profile": "Spot"}]},
                {"name": "Back", "universe": 2, "address": 101, "layer": 1, "profiles": [{"profile": "Spot"}]},
            ],
            "cues": {
                "1.5": [{"key": "Front.Dimmer", "value": 200, "time": 0.0},
                        {"key": "Front.Pan", "value": 0, "time": 2.0},
                        {"key": "Front.Shutter", "value": 0, "time": 0.0}],
                "2": PLACEHOLDER,
            },
        })

    def test_keeps_what_nobody_knows_to_the_type(self):
        views = [{**stage.placement("Front", 1, 1), "gel": EVERY_TYPE}, stage.placement("Back", 2, 101)]
        rig = {**EVERY_TYPE, "views": views, "profiles": {}, "cues": {"1": [{**EVERY_TYPE, "key": "Nobody"}]}}
        write(self.home.settings_file, rig)
        with self.console() as console:
            new_cue(console, "2")
            console.quit()
        self.assert_typed_equal(self.home.settings, {**rig, "cues": {**rig["cues"], "2": PLACEHOLDER}})

    def test_may_be_a_binary_list(self):
        rig = {**EVERY_TYPE, **STAGE, "cues": {"1": cues.cue({"Front.Dimmer": (90, 0.1)})}}
        write(self.home.settings_file, rig, plistlib.FMT_BINARY)
        with self.console() as console:
            self.display.activate(FRONT)
            self.display.key("ctrl+a")
            self.wait_for_front({1: 90})
            console.quit()
        self.assert_typed_equal(self.home.settings, rig)

    def test_reads_numbers_from_texts(self):
        write(self.home.settings_file, {
            "views": [{**stage.placement("Front", "3", "11"), "layer": "2"}],
            "cues": {"1": [{"key": "Front.Dimmer", "value": "70", "time": "0.1"}]}})
        with self.console([MAIN, "Front Univ: 3 Addr: 11"]):
            self.receiver.wait_for_levels(3, {17: 32})
            self.display.key("ctrl+a")
            self.receiver.wait_for_levels(3, {11: 70, 17: 32})


class UserDefaultsTest(SavedStateTestCase):
    def test_hold_name_window_address_selections_levels_and_places(self):
        with self.console() as console:
            console.set(PAN, "65535")
            console.set(BACK_DIMMER, "1")
            self.wait_for_back({101: 1})
            console.quit()
        defaults = self.home.defaults
        defaults["saved_state: Stage"].sort(key=lambda record: record["key"])
        self.assert_typed_equal({key: value for key, value in defaults.items() if "_window" not in key}, {
            "configName": "Stage",
            "mainWindowTitle": BACK,
            "tx_address": "127.0.0.1",
            "control_selections": ["Front.Pan", "Back.Dimmer"],
            "saved_state: Stage": [{"key": "Back.Dimmer", "value": 1, "time": 0},
                                   {"key": "Front.Pan", "value": 65535, "time": 0}],
        })

    def test_keep_what_nobody_knows_to_the_type(self):
        others = {"every type": EVERY_TYPE, "saved_state: Tour": [{"key": "Truss.Red", "value": 9, "time": 0}]}
        write(self.home.defaults_file, {**others, "control_selections": ["Nobody.Red", "Back.Red", "surplus"]})
        with self.console() as console:
            console.quit()
        defaults = self.home.defaults
        self.assert_typed_equal({key: defaults[key] for key in others}, others)
        self.assertEqual(defaults["control_selections"], ["", "Back.Red"])

    def test_may_be_a_binary_list(self):
        write(self.home.defaults_file, {"mainWindowTitle": MAIN, "saved_state: Stage": [
            {"key": "Front.Dimmer", "value": 44, "time": 0}]}, plistlib.FMT_BINARY)
        with self.console([BACK, FRONT, MAIN]):
            self.wait_for_front({1: 44})

    def test_name_the_window_under_the_sheet_that_is_open_at_the_end(self):
        with self.console() as console:
            self.display.key("ctrl+n")
            self.display.wait_for_front(cues.SHEET)
            console.terminate(signal.SIGHUP)
        self.assertEqual(self.home.defaults["mainWindowTitle"], MAIN)


class EndTest(SavedStateTestCase):
    """The end comes in the middle of something."""

    def assert_saves_the_dimmer(self, console, level, number=signal.SIGTERM):
        console.terminate(number)
        self.assertEqual(self.home.defaults["saved_state: Stage"],
                         [{"key": "Front.Dimmer", "value": level, "time": 0}])

    def test_of_a_drag(self):
        with self.console() as console:
            self.display.activate(FRONT)
            self.display.point(FRONT, *DIMMER.point(0))
            with self.display.pressed():
                self.display.point(FRONT, *DIMMER.point(0.4))
                self.wait_for_front({1: 102})
                self.assert_saves_the_dimmer(console, 102)

    def test_of_a_look_at_a_menu(self):
        with self.console() as console:
            console.set(DIMMER, "7")
            self.wait_for_front({1: 7})
            self.display.activate(MAIN)
            self.display.key("alt+w")
            wait_until(self.display.popups, "a menu")
            self.assert_saves_the_dimmer(console, 7, signal.SIGINT)

    def test_of_editing_a_cell_which_moves_nothing(self):
        with self.console() as console:
            console.set(DIMMER, "7")
            self.wait_for_front({1: 7})
            self.display.activate(MAIN)
            self.display.double_click(MAIN, *ADDRESS_CELL)
            self.display.type("9")
            self.display.settle()
            self.assert_saves_the_dimmer(console, 7, signal.SIGHUP)
        self.assertEqual(self.home.settings, STAGE)


if __name__ == "__main__":
    unittest.main()
