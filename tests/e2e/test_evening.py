"""A whole evening at the console; every datagram of it is held to a model of the show."""

import signal
import unittest

import stage
from case import ConsoleTestCase
from console import ADDRESS_CELL, TABLE_ROW_HEIGHT, UNIVERSE_CELL, Fader
from cues import CueMenu, new_cue, sorted_records
from display import keys_of
from menu import Menu
from show import Show, check_sequences
from stage import MAIN
from waiting import wait_until

# In the order in which they are made. A level with a time is faded to.
CUES = {
    "1": {"Front.Dimmer": 255, "Front.Red": 200},
    "3": {"Front.Dimmer": (40, 0.5), "Back.Dimmer": (200, 0.75)},
    "2": {"Back.Pan": (60000, 0.5)},
    "10": {"Front.Pan": 1, "Back.Pan": (65535, 0.25)},
    "1.5": {"Front.Dimmer": (128, 0.5), "Front.Green": 9},
    "10.1.3": {"Front.Shutter": 255},
    "10.1": {"Front.Shutter": (0, 0.25), "Back.Shutter": 255},
    "2.5": {},
    "4": {"Front.Dimmer": 1, "Back.Dimmer": 2},
    "5": {"Front.Pan": (256, 0.25), "Front.Dimmer": (255, 0.25)},
    "6": {"Back.Red": 77, "Back.Green": (255, 0.5)},
    "7": {"Front.Dimmer": (255, 0.75), "Back.Dimmer": (255, 0.75)},
}
IN_ORDER = ["1", "1.5", "2", "2.5", "3", "4", "5", "6", "7", "10", "10.1", "10.1.3"]

FRONT = "Front Univ: 1 Addr: 11"
BACK = "Back Univ: 1 Addr: 201"
TRUSS = "Truss Univ: 7 Addr: 1"

COLUMNS_AND_ROWS = {"Dimmer": (0, 1), "Pan": (0, 2), "Shutter": (0, 3), "Red": (1, 0), "Green": (1, 1)}

# Points in the main window.
ADDRESS_OF_FRONT = ADDRESS_CELL
UNIVERSE_OF_BACK, ADDRESS_OF_BACK = ((x, y + TABLE_ROW_HEIGHT) for x, y in (UNIVERSE_CELL, ADDRESS_CELL))
CONFIGURATIONS_MENU = (188, 10)
TOUR = 1  # the last row of that menu
LOAD_SHEET = "Load Configuration"


class EveningTest(ConsoleTestCase):
    def setUp(self):
        super().setUp()
        self.show = Show({"Front": (1, 1), "Back": (2, 101)})
        self.cue_menu = CueMenu(self.display)

    def test_a_whole_evening(self):
        self.start(stage.WINDOWS)
        self.patch()
        self.make_cues()
        self.run_cues()
        self.end(signal.SIGINT)
        self.assert_files("Stage")

        self.start([BACK, FRONT, MAIN])
        self.go("ctrl+a", self.show.next())
        self.go("ctrl+a", self.show.next())
        self.load_tour()
        self.end(signal.SIGHUP)
        self.assert_files("Tour")

        self.start([MAIN, TRUSS])
        self.drag("Truss.Red", 255)
        self.end(signal.SIGTERM)
        self.assert_files("Tour")

    # --- The evening -----------------------------------------------------------------------------------

    def patch(self):
        """Both spots come to share a universe."""
        self.edit(ADDRESS_OF_FRONT, "11", "Front", 1, 11)
        self.edit(UNIVERSE_OF_BACK, "1", "Back", 1, 101)
        self.edit(ADDRESS_OF_BACK, "201", "Back", 1, 201)

    def make_cues(self):
        for number, levels in CUES.items():
            self.go("ctrl+x", self.show.clear())
            self.hold(self.show.new_cue(number), lambda number=number: new_cue(self.running, number))
            for key, level in levels.items():
                value, time = level if isinstance(level, tuple) else (level, None)
                self.set(key, value, time)
            self.go("ctrl+w", self.show.store())
        self.assertEqual(self.show.numbers(), IN_ORDER)

    def run_cues(self):
        self.go("ctrl+x", self.show.clear())
        for _ in range(len(CUES) + 3):
            self.go("ctrl+a", self.show.next())
        for _ in range(5):
            self.go("ctrl+r", self.show.previous())
        self.choose("7")
        self.select("5")
        self.set("Back.Red", 13)
        self.hold(self.show.delete_cue(), lambda: self.cue_menu.command("Delete Cue"))
        self.go("ctrl+r", self.show.previous())
        self.go("ctrl+r", self.show.previous())

    def load_tour(self):
        def act():
            Menu(self.display, CONFIGURATIONS_MENU).choose(TOUR)
            self.display.wait_for_front(LOAD_SHEET)
            self.display.key(*keys_of("2"), "Return")
            self.running.wait_for_windows([TRUSS, MAIN])  # which was in front at the last quit

        self.hold(self.show.load({"Truss": (7, 1)}), act)
        self.set("Truss.Dimmer", 200, 0.5)
        self.set("Truss.Pan", 4660)
        self.drag("Truss.Green", 255)

    # --- One act after the other -----------------------------------------------------------------------

    def start(self, titles):
        self.receiver.forget()
        self.held = 0
        self.running = self.enterContext(self.console(titles))
        self.hold(self.show.restart())

    def end(self, number):
        self.running.terminate(number)
        check_sequences(self.receiver.datagrams())

    def hold(self, change, act=lambda: None):
        """The operator acts, and every datagram from the act before to the end of this one fits the change."""
        act()
        for universe in self.show.universes():
            wait_until(lambda universe=universe: self.receiver.slots(universe) == change.after[universe],
                       f"the end of a change in universe {universe}")
        datagrams = self.receiver.datagrams()
        change.check(datagrams[self.held:])
        self.held = len(datagrams)

    def go(self, key, change):
        self.hold(change, lambda: self.display.key(key))

    def set(self, key, value, time=None):
        self.running.select(self.fader(key))
        if time is not None:
            self.hold(self.show.set_time(key, time), lambda: self.running.enter(str(time), "s"))
        self.hold(self.show.set(key, value), lambda: self.running.enter(str(value)))

    def drag(self, key, value):
        """Drags a fader from its left end to its right."""
        fader = self.fader(key)
        self.display.activate(fader.title)
        self.hold(self.show.drag(key, value),
                  lambda: self.display.drag(fader.title, fader.point(0), fader.point(0.5), fader.point(1)))

    def edit(self, cell, number, spot, universe, address):
        def act():
            self.display.activate(MAIN)
            self.display.double_click(MAIN, *cell)
            self.display.key(*keys_of(number), "Return")

        self.hold(self.show.patch(spot, universe, address), act)

    def choose(self, number):
        self.hold(self.show.choose(number), lambda: self.cue_menu.choose(self.row(number)))

    def select(self, number):
        def act():
            self.cue_menu.open()
            self.cue_menu.point_at(self.row(number))
            with self.display.held("alt"):
                self.display.xdotool("click", 1)
                self.cue_menu.wait_for_popups(0)

        self.hold(self.show.select(number), act)

    def row(self, number):
        """A cue's row in the menu, from its end."""
        numbers = self.show.numbers()
        return len(numbers) - numbers.index(number)

    def fader(self, key):
        spot, name = key.split(".")
        universe, address = self.show.spots[spot]
        return Fader(f"{spot} Univ: {universe} Addr: {address}", *COLUMNS_AND_ROWS[name])

    def assert_files(self, configuration):
        settings, defaults = self.home.settings, self.home.defaults
        self.assertEqual(settings["views"], [stage.placement(spot, universe, address)
                                             for spot, (universe, address) in self.show.spots.items()])
        self.assertEqual(sorted_records(settings.get("cues", {})), self.show.cue_table())
        self.assertEqual(sorted(defaults[f"saved_state: {configuration}"], key=lambda record: record["key"]),
                         self.show.saved_levels())
        self.assertEqual(defaults["configName"], configuration)


if __name__ == "__main__":
    unittest.main()
