"""Loading another rig by the configuration menu, in the middle of everything."""

import unittest

import stage
from case import ConsoleTestCase
from console import ADDRESS_CELL, Fader
from cues import PLACEHOLDER, CueMenu, cue, new_cue
from display import keys_of
from home import write
from menu import Menu
from stage import BACK, BACK_DIMMER, CONFIGURATIONS, DIMMER, FRONT, MAIN, PAN, RED, STAGE, TOUR
from waiting import wait_until

SHEET = "Load Configuration"
TRUSS = "Truss Univ: 5 Addr: 1"
TRUSS_DIMMER = DIMMER._replace(title=TRUSS)

# The configurations menu: a point in its title, and its rows from the end.
MENU_TITLE = (188, 10)
ROWS = {"Stage": 2, "Tour": 1}


class ConfigurationTestCase(ConsoleTestCase):
    def setUp(self):
        super().setUp()
        self.menu = Menu(self.display, MENU_TITLE)

    def ask(self, name):
        """Chooses a configuration in the menu."""
        self.menu.choose(ROWS[name])
        self.display.wait_for_front(SHEET)

    def answer(self, offset="", end="Return"):
        self.display.key(*keys_of(offset), end)
        wait_until(lambda: SHEET not in self.display.titles(), "the sheet to go")

    def load(self, console, name, *titles, offset=""):
        """Loads a configuration whose fixtures' windows have these titles."""
        self.ask(name)
        self.answer(offset)
        console.wait_for_windows([MAIN, *titles])

    def wait_for_truss(self, slots):
        self.receiver.wait_for_levels(5, {7: 32, **slots})


class LoadTest(ConfigurationTestCase):
    def test_ok_replaces_the_rig(self):
        with self.console() as console:
            self.load(console, "Tour", TRUSS)
            self.wait_for_truss({})
            console.set(TRUSS_DIMMER, "12")
            self.wait_for_truss({1: 12})
            self.display.key("ctrl+0")
            self.display.wait_for_front(MAIN)
            self.display.key("ctrl+1")
            self.display.wait_for_front(TRUSS)
            self.receiver.forget()
            self.receiver.wait_for_count(3, universe=5)
            for universe in [1, 2]:
                self.assertLessEqual(len(self.receiver.datagrams(universe)), 1)  # that was due when it was left
            console.terminate()
        self.assertEqual(self.home.settings, TOUR)
        self.assertEqual(self.home.defaults["configName"], "Tour")
        self.assertEqual(self.home.defaults["saved_state: Tour"],
                         [{"key": "Truss.Dimmer", "value": 12, "time": 0}])
        self.assertEqual(self.home.defaults["control_selections"], ["Truss.Dimmer"])

    def test_the_offset_shifts_every_fixture_and_starts_at_0_each_time(self):
        with self.console() as console:
            self.load(console, "Stage", "Front Univ: 3 Addr: 1", "Back Univ: 4 Addr: 101", offset="2")
            self.receiver.wait_for_levels(4, {107: 32})
            self.load(console, "Stage", FRONT, BACK)
            self.load(console, "Tour", "Truss Univ: 2 Addr: 1", offset="-3")
            self.receiver.wait_for_levels(2, {7: 32})
            console.terminate()
        self.assertEqual(self.home.settings, {"views": [stage.placement("Truss", 2, 1)]})

    def test_an_emptied_offset_is_0(self):
        with self.console() as console:
            self.ask("Tour")
            self.display.key("2", "BackSpace", "Return")
            console.wait_for_windows([MAIN, TRUSS])

    def test_escape_leaves_everything_as_it_was(self):
        with self.console() as console:
            console.set(DIMMER, "55")
            self.wait_for_front({1: 55})
            self.ask("Tour")
            self.answer("4", end="Escape")
            console.wait_for_windows([FRONT, BACK, MAIN])
            self.display.activate(FRONT)
            self.display.key("Right")
            self.wait_for_front({1: 56})
            console.terminate()
        self.assertEqual(self.home.settings, STAGE)
        self.assertEqual(self.home.defaults["configName"], "Stage")

    def test_datagrams_go_on_and_faders_can_be_set_while_it_asks(self):
        with self.console() as console:
            self.ask("Tour")
            self.receiver.forget()
            self.receiver.wait_for_count(2, universe=1)
            console.set(DIMMER, "9")
            self.wait_for_front({1: 9})
            self.display.activate(SHEET)
            self.answer()
            console.wait_for_windows([MAIN, TRUSS])

    def test_every_configuration_that_was_loaded_keeps_its_check_mark(self):
        with self.console() as console:
            self.assert_checked("Stage")
            self.ask("Stage")
            self.answer(end="Escape")
            self.assert_checked("Stage")
            self.load(console, "Tour", TRUSS)
            self.assert_checked("Stage", "Tour")

    def assert_checked(self, *names):
        self.assertEqual(self.menu.checked(ROWS.values()), [ROWS[name] for name in names])


class MemoryTest(ConfigurationTestCase):
    def test_levels_of_the_last_quit_are_back_and_those_of_the_rig_that_is_left_are_lost(self):
        write(self.home.defaults_file, {"saved_state: Stage": [{"key": "Front.Red", "value": 8, "time": 0}],
                                        "saved_state: Tour": [{"key": "Truss.Red", "value": 9, "time": 0}]})
        with self.console() as console:
            self.wait_for_front({8: 8})
            console.set(DIMMER, "55")
            self.wait_for_front({1: 55, 8: 8})
            self.load(console, "Tour", TRUSS)
            self.wait_for_truss({8: 9})
            self.load(console, "Stage", FRONT, BACK)
            self.wait_for_front({8: 8})
            console.terminate()
        self.assertEqual(self.home.defaults["saved_state: Tour"],
                         [{"key": "Truss.Red", "value": 9, "time": 0}])

    def test_windows_take_the_places_of_those_before_them(self):
        with self.console() as console:
            self.display.move(FRONT, 150, 100)
            self.display.move(BACK, 700, 650)
            self.load(console, "Tour", TRUSS)
            self.assertEqual(self.display.place(TRUSS), (150, 100))
            self.load(console, "Stage", FRONT, BACK)
            self.assertEqual(self.display.place(FRONT), (150, 100))
            self.assertEqual(self.display.place(BACK), (700, 650))


    def test_the_window_that_was_in_front_at_the_last_quit_comes_to_the_front(self):
        write(self.home.defaults_file, {"mainWindowTitle": MAIN})
        with self.console([FRONT, BACK, MAIN]) as console:
            self.ask("Tour")
            self.answer()
            console.wait_for_windows([TRUSS, MAIN])


class InTheMiddleTest(ConfigurationTestCase):
    def test_of_a_fade(self):
        with self.console() as console:
            console.select(PAN)
            console.enter("60", "s")
            console.enter("65535")
            self.receiver.wait_for_count(20, universe=1)
            self.load(console, "Stage", FRONT, BACK)
            self.wait_for_front({})
            console.set(PAN, "5")
            self.wait_for_front({3: 5})

    def test_of_an_entry(self):
        with self.console() as console:
            console.select(BACK_DIMMER)
            self.display.type("12")
            self.load(console, "Tour", TRUSS)
            console.set(TRUSS_DIMMER, "34")
            self.wait_for_truss({1: 34})
            self.display.type("56")
            self.load(console, "Stage", FRONT, BACK)
            console.set(RED, "7")
            self.wait_for_front({8: 7})
            self.wait_for_back({})

    def test_of_a_drag(self):
        with self.console() as console:
            self.ask("Tour")
            self.display.activate(FRONT)
            self.display.point(FRONT, *DIMMER.point(0))
            with self.display.pressed():
                self.display.point(FRONT, *DIMMER.point(0.4))
                self.wait_for_front({1: 102})
                self.display.activate(SHEET)
                self.answer()
                console.wait_for_windows([MAIN, TRUSS])
                self.display.point(TRUSS, *DIMMER.point(0.8))
            console.set(TRUSS_DIMMER, "5")
            self.wait_for_truss({1: 5})
            self.assertEqual(self.levels_of(5, 1), [0, 5])

    def test_of_editing_a_cell(self):
        with self.console() as console:
            self.display.activate(MAIN)
            self.display.double_click(MAIN, *ADDRESS_CELL)
            self.display.type("9")
            self.load(console, "Tour", TRUSS)
            self.display.activate(MAIN)
            self.display.double_click(MAIN, *ADDRESS_CELL)
            self.display.type("3")
            self.display.key("Return")
            console.wait_for_windows(["Truss Univ: 5 Addr: 3", MAIN])
            console.terminate()
        self.assertEqual(self.home.settings, {"views": [stage.placement("Truss", 5, 3)]})


class CuesTest(ConfigurationTestCase):
    def test_come_with_the_configuration_and_those_before_are_lost(self):
        tour = {**TOUR, "cues": {"7": cue({"Truss.Dimmer": 77})}}
        write(self.home.resources / "configurations.plist", {**CONFIGURATIONS, "Tour": tour})
        with self.console() as console:
            new_cue(console, "1")
            self.load(console, "Tour", TRUSS)
            # 1 stays current and is in no list: there is none after it and none before it.
            self.display.key("ctrl+a", "ctrl+r")
            console.set(TRUSS_DIMMER, "5")
            self.wait_for_truss({1: 5})
            self.assertEqual(self.levels_of(5, 1), [0, 5])
            self.display.key("ctrl+x", "ctrl+a")
            self.wait_for_truss({1: 77})
            new_cue(console, "8")
            console.terminate()
        self.assertEqual(self.home.settings, {**tour, "cues": {**tour["cues"], "8": PLACEHOLDER}})

    def test_the_menu_lists_those_before_until_it_is_made_anew(self):
        tour = {**TOUR, "cues": {"7": cue({"Truss.Dimmer": 77})}}
        write(self.home.resources / "configurations.plist", {**CONFIGURATIONS, "Tour": tour})
        menu = CueMenu(self.display)
        with self.console() as console:
            new_cue(console, "1")
            self.load(console, "Tour", TRUSS)
            menu.choose(1)
            self.assertEqual(menu.checked([1]), [1])
            menu.command("Delete Cue")
            self.wait_for_truss({})
            menu.choose(1)
            self.wait_for_truss({1: 77})
            console.terminate()
        self.assertEqual(self.home.settings, tour)

    def test_without_a_cue_table_storing_goes_nowhere(self):
        with self.console() as console:
            new_cue(console, "1")
            self.load(console, "Tour", TRUSS)
            self.display.key("ctrl+w")
            console.terminate()
        self.assertEqual(self.home.settings, TOUR)


if __name__ == "__main__":
    unittest.main()
