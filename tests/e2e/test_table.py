"""Patching: universe and address of each fixture in the main window's table."""

import unittest

from case import ConsoleTestCase
from console import (ADDRESS_CELL as ADDRESS, NAME_CELL as NAME, TABLE_ROW_HEIGHT, UNIVERSE_CELL as UNIVERSE)
from receiver import levels
from stage import BACK, BACK_DIMMER, DIMMER, FRONT, MAIN, SHUTTER, placement


def title(name, universe, address):
    return f"{name} Univ: {universe} Addr: {address}"


class TableTestCase(ConsoleTestCase):
    def setUp(self):
        super().setUp()
        self.running = self.enterContext(self.console())

    def edit(self, cell, row=0):
        """Opens a cell's field with a double click."""
        x, y = cell
        self.display.activate(MAIN)
        self.display.double_click(MAIN, x, y + TABLE_ROW_HEIGHT * row)

    def enter(self, cell, text, row=0, end="Return"):
        """Types a text over what stands in a cell."""
        self.edit(cell, row)
        self.display.type(text)
        self.display.key(end)

    def set(self, fader, title, text):
        """Sets a fader of a window that has got a new title."""
        self.running.set(fader._replace(title=title), text)

    def wait_for_titles(self, *titles):
        self.running.wait_for_windows([*titles, MAIN])

    def views_left(self):
        self.running.terminate()
        return self.home.settings["views"]


class EditingTest(TableTestCase):
    def test_a_new_address_moves_the_fixture(self):
        self.enter(ADDRESS, "17")
        self.wait_for_titles(title("Front", 1, 17), BACK)
        self.set(DIMMER, title("Front", 1, 17), "128")
        self.receiver.wait_for_levels(1, {17: 128, 23: 32})
        self.assertEqual(self.views_left(), [placement("Front", 1, 17), placement("Back", 2, 101)])

    def test_a_new_universe_moves_the_fixture(self):
        self.enter(UNIVERSE, "7", row=1)
        self.wait_for_titles(FRONT, title("Back", 7, 101))
        self.set(BACK_DIMMER, title("Back", 7, 101), "128")
        self.receiver.wait_for_levels(7, {101: 128, 107: 32})
        self.assertEqual(self.views_left(), [placement("Front", 1, 1), placement("Back", 7, 101)])

    def test_typing_into_a_selected_cell_replaces_its_number(self):
        self.display.activate(MAIN)
        self.display.click(MAIN, *ADDRESS)
        self.display.type("33")
        self.display.key("Return")
        self.wait_for_titles(title("Front", 1, 33), BACK)

    def test_escape_leaves_the_fixture_where_it_is(self):
        self.enter(ADDRESS, "44", end="Escape")
        self.enter(UNIVERSE, "3", row=1)
        self.wait_for_titles(FRONT, title("Back", 3, 101))
        self.assertEqual(self.views_left()[0], placement("Front", 1, 1))

    def test_tab_takes_the_number_and_opens_the_next_cell_and_shift_tab_the_one_before(self):
        self.enter(UNIVERSE, "3", end="Tab")
        self.enter_further("9", "Return")
        self.wait_for_titles(title("Front", 3, 9), BACK)
        self.enter(ADDRESS, "11", row=1, end="shift+Tab")
        self.enter_further("4", "Return")
        self.wait_for_titles(title("Front", 3, 9), title("Back", 4, 11))

    def enter_further(self, text, end):
        """Goes on typing in the cell that has opened by itself."""
        self.display.type(text)
        self.display.key(end)

    def test_a_click_elsewhere_takes_the_number(self):
        self.edit(ADDRESS)
        self.display.type("55")
        self.display.click(MAIN, *NAME)
        self.wait_for_titles(title("Front", 1, 55), BACK)

    def test_what_is_no_number_reads_as_0(self):
        self.enter(ADDRESS, "rubbish")
        self.wait_for_titles(title("Front", 1, 0), BACK)
        self.edit(ADDRESS)
        self.display.key("ctrl+c", "Escape")
        self.display.settle()
        self.assertEqual(self.display.clipboard(), "0")  # the cell shows what was read
        self.assertEqual(self.views_left()[0], placement("Front", 1, 0))

    def test_what_follows_a_number_is_ignored(self):
        self.enter(UNIVERSE, "12abc", row=1)
        self.wait_for_titles(FRONT, title("Back", 12, 101))
        self.receiver.wait_for_levels(12, {107: 32})
        self.assertEqual(self.views_left()[1], placement("Back", 12, 101))

    def test_a_name_is_not_edited(self):
        self.display.activate(MAIN)
        self.display.click(MAIN, *NAME)
        self.display.type("8")
        self.enter(UNIVERSE, "3", row=1)
        self.wait_for_titles(FRONT, title("Back", 3, 101))
        self.assertEqual(self.views_left()[0], placement("Front", 1, 1))

    def test_a_double_click_on_a_name_brings_its_fixture_to_the_front(self):
        self.edit(NAME)
        self.display.wait_for_front(FRONT)
        self.edit(NAME, row=1)
        self.display.wait_for_front(BACK)

    def test_return_on_a_name_brings_its_fixture_to_the_front(self):
        self.display.activate(MAIN)
        self.display.click(MAIN, *NAME)
        self.display.key("Down", "Return")
        self.display.wait_for_front(BACK)

    def test_datagrams_go_on_while_a_cell_is_edited(self):
        self.edit(ADDRESS)
        self.display.type("9")
        self.receiver.forget()
        self.receiver.wait_for_count(2, universe=1)
        self.display.key("Escape")

    def test_the_window_menu_and_its_keys_follow_the_titles(self):
        self.enter(ADDRESS, "21")
        self.wait_for_titles(title("Front", 1, 21), BACK)
        self.display.key("ctrl+1")
        self.display.wait_for_front(title("Front", 1, 21))
        self.display.key("ctrl+0")
        self.display.wait_for_front(MAIN)
        with self.display.menu(MAIN, "alt+w"):
            self.display.key("Down", "Down", "Return")
            self.display.wait_for_front(BACK)


class SlotsTest(TableTestCase):
    def test_slots_that_a_fixture_leaves_go_to_0(self):
        self.running.set(DIMMER, "128")
        self.wait_for_front({1: 128})
        self.enter(ADDRESS, "11")
        self.receiver.wait_for_levels(1, {11: 128, 17: 32})
        self.set(DIMMER, title("Front", 1, 11), "5")
        self.receiver.wait_for_levels(1, {11: 5, 17: 32})

    def test_a_slot_that_stays_driven_never_goes_dark(self):
        self.running.set(BACK_DIMMER, "20")
        self.running.set(DIMMER, "128")
        self.wait_for_front({1: 128})
        self.enter(UNIVERSE, "1", row=1)
        self.enter(ADDRESS, "1", row=1)  # over the other one
        self.receiver.wait_for_levels(1, {1: 20, 7: 32})
        self.enter(ADDRESS, "101", row=1)
        self.receiver.wait_for_levels(1, {1: 128, 7: 32, 101: 20, 107: 32})
        self.assertEqual(self.levels_of(1, 1)[-3:], [128, 20, 128])
        self.assertEqual(self.levels_of(1, 7)[-1:], [32])

    def test_a_universe_that_its_last_fixture_leaves_falls_silent(self):
        self.running.set(DIMMER, "128")
        self.wait_for_front({1: 128})
        self.enter(UNIVERSE, "4")
        self.receiver.wait_for_levels(4, {1: 128, 7: 32})
        self.receiver.forget()
        self.receiver.wait_for_count(3, universe=4)
        # At most the one that was due when it was left, which is dark.
        due = self.receiver.datagrams(1)
        self.assertLessEqual(len(due), 1)
        self.assertEqual([datagram.slots for datagram in due], [levels({})] * len(due))

    def test_a_fixture_that_returns_finds_the_universe_dark(self):
        self.running.set(SHUTTER, "200")
        self.wait_for_front({7: 200})
        self.enter(UNIVERSE, "4")
        self.receiver.wait_for_levels(4, {7: 200})
        self.enter(ADDRESS, "101")
        self.receiver.wait_for_levels(4, {107: 200})
        self.enter(UNIVERSE, "1")
        self.receiver.wait_for_levels(1, {107: 200})

    def test_of_two_fixtures_on_the_same_slots_the_lower_one_in_the_table_is_heard(self):
        self.enter(UNIVERSE, "1", row=1)
        self.enter(ADDRESS, "1", row=1)
        self.wait_for_titles(FRONT, title("Back", 1, 1))
        self.set(BACK_DIMMER, title("Back", 1, 1), "20")
        self.receiver.wait_for_levels(1, {1: 20, 7: 32})
        self.receiver.forget()
        self.running.set(DIMMER, "10")
        self.set(SHUTTER, title("Back", 1, 1), "40")
        self.receiver.wait_for_levels(1, {1: 20, 7: 40})
        self.assertEqual(self.levels_of(1, 1), [20])

    def test_slots_beyond_512_are_not_sent(self):
        self.enter(ADDRESS, "511", row=1)
        self.wait_for_titles(FRONT, title("Back", 2, 511))
        self.set(BACK_DIMMER, title("Back", 2, 511), "9")
        self.receiver.wait_for_levels(2, {511: 9})


if __name__ == "__main__":
    unittest.main()
