"""Cues by menu, by shortcut and by the sheet that asks for a number."""

import unittest

import stage
from case import ConsoleTestCase
from console import ADDRESS_CELL, ADDRESS_FIELD
from cues import PLACEHOLDER, SHEET, CueMenu, cue, new_cue, sorted_records, wait_until_answered
from home import write
from stage import BACK, BACK_DIMMER, DIMMER, FRONT, GREEN, MAIN, PAN, RED, SHUTTER

# Places of the sheet's buttons, from its right and its top.
OK_BUTTON = (137, 71)
CANCEL_BUTTON = (51, 71)

# By their order: 1, 2 and 10; each has a level of its own.
CUES = {"10": cue({"Front.Dimmer": 110}), "2": cue({"Front.Dimmer": 102}), "1": cue({"Front.Dimmer": 101})}

# Rows of the menu with these cues, counted from its end.
CUE_10, CUE_2, CUE_1 = 1, 2, 3
DELETE_CUE, CLEAR_TIMING, CLEAR, NEXT_CUE = 5, 7, 8, 10


class CueTestCase(ConsoleTestCase):
    def setUp(self):
        super().setUp()
        self.menu = CueMenu(self.display)

    def console_with(self, cues):
        """A console that finds these cues in its settings."""
        write(self.home.settings_file, {**stage.STAGE, "cues": cues})
        return self.console()

    def cues_left(self):
        """The cue table in the settings file, after the console has ended."""
        return sorted_records(self.home.settings["cues"])

    def press(self, key, *levels):
        """Presses a key once for each level that the front dimmer is to come to."""
        for level in levels:
            self.display.key(key)
            self.wait_for_front({1: level})

    def assert_checked(self, *rows):
        self.assertEqual(self.menu.checked([CUE_1, CUE_2, CUE_10]), list(rows))

    def assert_dimmer_stays(self, level):
        """A change of the front dimmer since it came to `level` would be seen before that of the step."""
        self.display.activate(FRONT)
        self.display.click(FRONT, *DIMMER.point())
        self.display.key("Right")
        self.wait_for_front({1: level + 1})
        self.assertEqual(self.levels_of(1, 1)[-2:], [level, level + 1])


class NewCueTest(CueTestCase):
    def test_ctrl_n_asks_for_a_number_which_is_taken_as_it_is_typed(self):
        with self.console() as console:
            for number in ["2.5", "3", " 2 ", "1.a", "01"]:
                self.display.activate(FRONT)
                new_cue(console, number)
            console.terminate()
        self.assertEqual(self.home.settings["cues"],
                         {number: PLACEHOLDER for number in ["2.5", "3", " 2 ", "1.a", "01"]})

    def test_a_new_cue_changes_no_level_and_is_current(self):
        with self.console() as console:
            console.set(DIMMER, "55")
            self.wait_for_front({1: 55})
            new_cue(console, "1")
            self.assert_dimmer_stays(55)
            self.display.key("ctrl+w")
            console.terminate()
        self.assertEqual(self.cues_left(), {"1": cue({"Front.Dimmer": 56})})

    def test_the_answer_gives_the_keys_back_to_the_fixture_that_had_them(self):
        with self.console() as console:
            console.select(RED)
            for number, end, level in [("1", "Return", "11"), ("2", "Escape", "12")]:
                new_cue(console, number, end)
                self.display.wait_for_front(FRONT)
                console.enter(level)
                self.wait_for_front({8: int(level)})

    def test_an_empty_number_changes_nothing(self):
        with self.console_with(CUES) as console:
            self.display.activate(FRONT)
            self.press("ctrl+a", 101)
            new_cue(console, "")
            self.display.activate(FRONT)
            self.press("ctrl+a", 102)  # 1 was still current
            console.terminate()
        self.assertEqual(self.cues_left(), CUES)

    def test_escape_and_cancel_change_nothing(self):
        with self.console_with(CUES) as console:
            self.display.activate(FRONT)
            new_cue(console, "7", end="Escape")
            self.answer("8", CANCEL_BUTTON)
            self.answer("9", OK_BUTTON)
            console.terminate()
        self.assertEqual(self.cues_left(), {**CUES, "9": PLACEHOLDER})

    def answer(self, number, button):
        self.display.activate(FRONT)
        self.display.key("ctrl+n")
        self.display.wait_for_front(SHEET)
        self.display.type(number)
        from_right, y = button
        self.display.click(SHEET, self.display.width(SHEET) - from_right, y)
        wait_until_answered(self.display)

    def test_the_number_of_a_stored_cue_empties_it_and_an_empty_cue_changes_no_level(self):
        with self.console_with(CUES) as console:
            self.display.activate(FRONT)
            new_cue(console, "2")
            self.display.activate(FRONT)
            self.press("ctrl+r", 101)
            self.display.key("ctrl+a")
            self.assert_dimmer_stays(101)
            self.press("ctrl+a", 110)
            console.terminate()
        self.assertEqual(self.cues_left(), {**CUES, "2": PLACEHOLDER})


class OpenSheetTest(CueTestCase):
    def setUp(self):
        super().setUp()
        self.running = self.enterContext(self.console_with(CUES))
        self.display.activate(FRONT)
        self.display.key("ctrl+n")
        self.display.wait_for_front(SHEET)
        self.display.type("4")

    def assert_takes_another_digit(self):
        self.display.wait_for_front(SHEET)
        self.display.key("2", "Return")
        wait_until_answered(self.display)
        self.running.terminate()
        self.assertEqual(self.cues_left(), {**CUES, "42": PLACEHOLDER})

    def test_datagrams_go_on_and_faders_can_be_set(self):
        self.receiver.forget()
        self.receiver.wait_for_count(2, universe=1)
        self.running.set(DIMMER, "9")
        self.wait_for_front({1: 9})
        self.running.set(BACK_DIMMER, "10")
        self.wait_for_back({101: 10})
        self.display.activate(SHEET)
        self.assert_takes_another_digit()

    def test_the_menus_keys_work_in_a_fixtures_window(self):
        self.running.set(RED, "77")
        self.wait_for_front({8: 77})
        self.display.key("ctrl+c")
        self.running.select(GREEN)
        self.display.key("ctrl+v")
        self.wait_for_front({8: 77, 9: 77})
        self.press("ctrl+a", 101)
        self.display.key("ctrl+2")
        self.display.wait_for_front(BACK)
        self.press("ctrl+r", 110)

    def test_ctrl_n_brings_the_sheet_back_to_the_front(self):
        self.display.activate(FRONT)
        self.display.key("ctrl+n")
        self.display.wait_for_front(SHEET)
        self.assertEqual(self.display.titles().count(SHEET), 1)
        self.assert_takes_another_digit()


class StoreTest(CueTestCase):
    def test_ctrl_w_stores_what_is_away_from_its_default_or_has_a_time(self):
        with self.console() as console:
            new_cue(console, "1")
            console.set(DIMMER, "55")
            console.select(PAN)
            console.enter("1.5", "s")
            console.set(BACK_DIMMER, "66")
            self.display.key("ctrl+w")
            console.set(RED, "77")
            console.terminate()
        self.assertEqual(self.cues_left(),
                         {"1": cue({"Back.Dimmer": 66, "Front.Dimmer": 55, "Front.Pan": (0, 1.5)})})

    def test_storing_again_replaces_the_whole_cue(self):
        with self.console() as console:
            new_cue(console, "1")
            console.set(DIMMER, "55")
            self.display.key("ctrl+w", "equal")
            console.set(RED, "77")
            self.display.key("ctrl+w")
            new_cue(console, "2")
            self.display.activate(FRONT)
            self.display.key("equal", "ctrl+w")
            console.terminate()
        self.assertEqual(self.cues_left(), {"1": cue({"Front.Red": 77}), "2": []})


class StepTest(CueTestCase):
    def test_ctrl_a_goes_through_the_cues_and_round(self):
        order = ["-1", "1", "1.1", "1.1.1", "1.2", "1.10", "9", "10"]
        cues = {number: cue({"Front.Dimmer": level}) for level, number in enumerate(order, 1)}
        with self.console_with(dict(reversed(cues.items()))):
            self.display.activate(FRONT)
            self.press("ctrl+a", *range(1, len(order) + 1), 1)

    def test_ctrl_r_goes_backward_and_round(self):
        with self.console_with(CUES):
            self.display.activate(BACK)
            self.press("ctrl+r", 110, 102, 101, 110)

    def test_without_cues_nothing_happens(self):
        with self.console() as console:
            console.set(DIMMER, "50")
            self.wait_for_front({1: 50})
            self.display.key("ctrl+a", "ctrl+r")
            self.assert_dimmer_stays(50)

    def test_a_cue_is_a_whole_state_with_the_fade_time_of_each_control(self):
        cues = {"1": cue({"Front.Dimmer": (200, 0.5), "Back.Dimmer": 30}),
                "2": cue({"Front.Pan": (1000, 0.5), "Nobody.Dimmer": 5})}
        with self.console_with(cues) as console:
            console.set(RED, "77")
            self.wait_for_front({8: 77})
            self.display.key("ctrl+a")
            self.wait_for_front({1: 200})
            self.wait_for_back({101: 30})
            self.assertGreater(len(self.levels_of(1, 1)), 5)
            self.assertEqual(self.levels_of(1, 8), [0, 77, 0])
            self.display.key("ctrl+a")
            self.wait_for_front({2: 1000 >> 8, 3: 1000 & 255})
            self.wait_for_back({})
            self.assertEqual(self.levels_of(1, 1)[-2:], [200, 0])
            self.assertEqual(self.levels_of(2, 101), [0, 30, 0])

    def test_a_half_typed_number_waits_while_a_cue_is_chosen(self):
        with self.console_with(CUES) as console:
            console.select(RED)
            self.display.type("7")
            self.press("ctrl+a", 101)
            self.display.key("5", "Return")
            self.wait_for_front({1: 101, 8: 75})


class ClearTest(CueTestCase):
    def test_ctrl_x_sends_everything_to_its_default_at_once(self):
        with self.console() as console:
            console.select(DIMMER)
            console.enter("0.3", "s")
            console.enter("200")
            console.set(SHUTTER, "0")
            console.set(BACK_DIMMER, "9")
            self.wait_for_front({1: 200, 7: 0})
            self.wait_for_back({101: 9})
            self.display.key("ctrl+x")
            self.wait_for_front({})
            self.wait_for_back({})
            console.set(DIMMER, "100")  # the time has gone too
            self.wait_for_front({1: 100})
            self.assertEqual(self.levels_of(1, 1)[-3:], [200, 0, 100])

    def test_ctrl_alt_x_takes_the_times_away_and_leaves_the_levels(self):
        with self.console_with({"1": cue({"Front.Dimmer": (50, 0.1), "Back.Dimmer": (60, 0.1)})}) as console:
            self.display.activate(FRONT)
            self.press("ctrl+a", 50)
            self.wait_for_back({101: 60})
            self.display.key("ctrl+alt+x")
            console.set(DIMMER, "200")
            console.set(BACK_DIMMER, "201")
            self.wait_for_front({1: 200})
            self.wait_for_back({101: 201})
            self.assertEqual(self.levels_of(1, 1)[-2:], [50, 200])
            self.assertEqual(self.levels_of(2, 101)[-2:], [60, 201])

    def test_neither_leaves_a_cue_current_to_store_into_or_to_step_from(self):
        with self.console_with(CUES) as console:
            self.display.activate(FRONT)
            for key in ["ctrl+x", "ctrl+alt+x"]:
                self.press("ctrl+r", 110)
                self.display.key(key)
                self.assert_checked()
                self.display.activate(FRONT)
                self.display.key("ctrl+w")
                self.press("ctrl+a", 101)
                self.display.key("ctrl+x")
            console.terminate()
        self.assertEqual(self.cues_left(), CUES)


class DeleteTest(CueTestCase):
    def test_takes_the_current_cue_out_of_the_list_and_leaves_the_levels(self):
        with self.console_with(CUES) as console:
            self.display.activate(FRONT)
            self.press("ctrl+a", 101, 102)
            self.menu.command("Delete Cue")
            self.menu.command("Delete Cue")  # no cue is current any more
            self.assert_dimmer_stays(102)
            self.press("ctrl+a", 101, 110)
            console.terminate()
        self.assertEqual(self.cues_left(), {"1": CUES["1"], "10": CUES["10"]})


class MenuTest(CueTestCase):
    def setUp(self):
        super().setUp()
        self.running = self.enterContext(self.console_with(CUES))

    def test_a_cue_is_chosen_by_mouse_or_return_and_carries_the_check_mark(self):
        self.assert_checked()
        for row, level in [(CUE_2, 102), (CUE_10, 110), (CUE_10, 110)]:
            self.menu.choose(row)
            self.wait_for_front({1: level})
            self.assert_checked(row)
        self.menu.open()
        self.display.key(*["Up"] * CUE_1, "Return")
        self.menu.wait_until_closed()
        self.wait_for_front({1: 101})
        self.assert_checked(CUE_1)

    def test_every_command_is_in_the_menu(self):
        self.menu.command("Prev Cue")
        self.wait_for_front({1: 110})
        self.menu.command("Next Cue")
        self.wait_for_front({1: 101})
        self.running.set(RED, "7")
        self.menu.command("Store Cue")
        self.menu.command("Clear")
        self.wait_for_front({})
        self.menu.command("Next Cue")
        self.wait_for_front({1: 101, 8: 7})
        self.menu.command("Clear Timing")
        self.assert_checked()
        self.menu.command("New Cue…")
        self.display.wait_for_front(SHEET)
        self.display.key("5", "Return")
        wait_until_answered(self.display)
        self.assert_checked(CUE_2)  # 5 has taken its row; 2 is one above

    def test_the_title_names_the_current_cue(self):
        def title_after(key):
            self.display.activate(FRONT)
            self.display.key(key)
            self.display.activate(MAIN)
            self.display.settle()
            return self.menu.bar()

        none = title_after("Escape")
        first, second, third, again = (title_after("ctrl+a") for _ in range(4))
        self.assertEqual(len({none, first, second, third}), 4)
        self.assertEqual(again, first)
        self.assertEqual(title_after("ctrl+x"), none)

    def test_cues_and_two_of_the_commands_have_a_tool_tip(self):
        self.menu.open()
        for row, windows in [(CUE_1, 2), (NEXT_CUE, 1), (CUE_10, 2), (CLEAR, 1), (CLEAR_TIMING, 2),
                             (CLEAR, 1), (DELETE_CUE, 2)]:
            self.menu.point_at(row)
            self.menu.wait_for_popups(windows)
        self.menu.close()


class OptionTest(CueTestCase):
    """With Alt held a cue becomes current and no level changes."""

    def setUp(self):
        super().setUp()
        self.running = self.enterContext(self.console_with(CUES))
        self.display.activate(FRONT)
        self.press("ctrl+a", 101)
        self.display.click(MAIN, *ADDRESS_FIELD)
        self.menu.open()

    def assert_cue_10_is_current_with_the_levels_of_cue_1(self):
        self.assert_checked(CUE_10)
        self.assert_dimmer_stays(101)
        self.press("ctrl+r", 102)

    def test_by_mouse(self):
        self.menu.point_at(CUE_10)
        with self.display.held("alt"):
            self.display.xdotool("click", 1)
            self.menu.wait_for_popups(0)
        self.assert_cue_10_is_current_with_the_levels_of_cue_1()

    def test_by_return(self):
        self.display.key("Up")
        with self.display.held("alt"):
            self.display.key("Return")
            self.menu.wait_for_popups(0)
        self.assert_cue_10_is_current_with_the_levels_of_cue_1()

    def test_by_prev_cue(self):
        self.display.key("Down", "Down")
        with self.display.held("alt"):
            self.display.key("Return")
            self.menu.wait_for_popups(0)
        self.assert_cue_10_is_current_with_the_levels_of_cue_1()

    def test_pressing_alt_leaves_the_menu_open(self):
        self.display.key("Alt_L", "Alt_R")
        with self.display.held("alt"):
            self.display.key("Up")
        self.display.key("Return")
        self.menu.wait_until_closed()
        self.wait_for_front({1: 110})

    def test_the_keys_go_back_to_where_they_were(self):
        self.menu.point_at(CUE_10)
        with self.display.held("alt"):
            self.display.xdotool("click", 1)
            self.menu.wait_for_popups(0)
        self.display.key("7", "ctrl+a", "ctrl+c")
        self.display.settle()
        self.assertEqual(self.display.clipboard(), "127.0.0.17")


class TextFieldTest(CueTestCase):
    """A text field that is being edited keeps its own editing keys."""

    def setUp(self):
        super().setUp()
        self.running = self.enterContext(self.console_with(CUES))
        self.display.activate(FRONT)
        self.press("ctrl+a", 101)

    def test_in_the_address_field(self):
        self.display.activate(MAIN)
        self.display.click(MAIN, *ADDRESS_FIELD)
        self.display.key("ctrl+a", "ctrl+x", "1", "ctrl+v", "ctrl+v")
        self.display.key("ctrl+a", "ctrl+c")
        self.display.settle()
        self.assertEqual(self.display.clipboard(), "1127.0.0.1127.0.0.1")
        self.assert_dimmer_stays(101)

    def test_in_a_cell_of_the_table(self):
        self.display.activate(MAIN)
        self.display.double_click(MAIN, *ADDRESS_CELL)
        self.display.key("ctrl+a", "ctrl+x", "2", "ctrl+v", "Return")
        self.running.wait_for_windows([FRONT.replace("Addr: 1", "Addr: 21"), BACK, MAIN])
        self.receiver.wait_for_levels(1, {21: 101, 27: 32})
        self.assertEqual(self.levels_of(1, 1), [0, 101, 0])

    def test_has_the_keys_only_once_it_is_gone_to(self):
        self.display.activate(MAIN)
        self.press("ctrl+a", 102, 110)
        self.display.key("ctrl+x")
        self.wait_for_front({})

    def test_other_keys_of_the_cues_work_there(self):
        self.display.activate(MAIN)
        self.display.click(MAIN, *ADDRESS_FIELD)
        self.press("ctrl+r", 110)
        self.display.key("ctrl+n")
        self.display.wait_for_front(SHEET)


class WindowKeysTest(ConsoleTestCase):
    def test_ctrl_0_is_the_main_window_and_1_to_9_the_fixtures_in_their_order(self):
        names = "ABCDEFGHIJ"
        write(self.home.settings_file,
              {"views": [stage.placement(name, 1, 1 + 10 * i) for i, name in enumerate(names)]})
        titles = [MAIN, *(f"{name} Univ: 1 Addr: {1 + 10 * i}" for i, name in enumerate(names))]
        with self.console(titles):
            for number in [3, 9, 0, 1, 5, 2, 8, 0, 4, 7, 6]:
                self.display.key(f"ctrl+{number}")
                self.display.wait_for_front(titles[number])


if __name__ == "__main__":
    unittest.main()
