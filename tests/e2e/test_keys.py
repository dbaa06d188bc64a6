"""Levels, fade times and the selection by keyboard."""

import unittest

from case import ConsoleTestCase
from stage import BACK, BACK_DIMMER, DIMMER, FRONT, MAIN, PAN, RED, SHUTTER

# Keys of the keypad by their codes, as they come with any layout; Num Lock is on.
KEYPAD = {"7": 79, "8": 80, "9": 81, "-": 82, "4": 83, "5": 84, "6": 85, "+": 86,
          "1": 87, "2": 88, "3": 89, "0": 90, ".": 91, "Enter": 104}

ENTRY_FIELD_BLUE = (0, 0, 255)


class TypedLevelTest(ConsoleTestCase):
    def test_return_applies_a_number_at_once(self):
        with self.console() as console:
            self.wait_for_front({})
            console.set(DIMMER, "128")
            self.wait_for_front({1: 128})
            self.assertEqual(self.levels_of(1, 1), [0, 128])

    def test_a_pair_of_slots_takes_five_digits_coarse_byte_first(self):
        with self.console() as console:
            console.set(PAN, "4660")
            self.wait_for_front({2: 0x12, 3: 0x34})

    def test_numbers_are_rounded_and_limited_to_the_range(self):
        with self.console() as console:
            for text, level in [("300", 255), ("12.5", 13), ("12.4", 12), ("99999", 255), (".6", 1), (".", 0)]:
                console.set(DIMMER, text)
                self.wait_for_front({1: level})
            for text, coarse, fine in [("65534", 255, 254), ("70000", 255, 255), ("256", 1, 0)]:
                console.set(PAN, text)
                self.wait_for_front({2: coarse, 3: fine})

    def test_six_digits_are_not_applied(self):
        with self.console() as console:
            console.set(PAN, "000777")
            console.set(PAN, "123456")
            self.display.key("Right")
            self.wait_for_front({3: 1})
            self.assertEqual(self.levels_of(1, 2, channels=2), [0, 1])

    def test_a_seventh_digit_is_not_taken(self):
        with self.console() as console:
            console.select(PAN)
            self.display.type("1234567")
            self.display.key("BackSpace", "BackSpace", "Return")
            self.wait_for_front({2: 1234 >> 8, 3: 1234 & 255})

    def test_backspace_takes_the_last_character_and_escape_all(self):
        with self.console() as console:
            console.select(DIMMER)
            self.display.key("1", "9", "BackSpace", "2", "Return")
            self.wait_for_front({1: 12})
            self.display.key("9", "9", "Escape", "Return", "7", "Return")
            self.wait_for_front({1: 7})
            self.display.key("BackSpace", "8", "Return")
            self.wait_for_front({1: 8})
            self.assertEqual(self.levels_of(1, 1), [0, 12, 7, 8])

    def test_keys_without_a_meaning_change_nothing(self):
        with self.console() as console:
            console.select(DIMMER)
            self.display.key("5", "a", "Home", "F5", "comma", "ctrl+Right", "ctrl+equal", "0", "Return")
            self.wait_for_front({1: 50})
            self.assertEqual(self.levels_of(1, 1), [0, 50])

    def test_the_number_being_typed_stands_in_a_blue_field_beside_the_fader(self):
        with self.console() as console:
            console.select(DIMMER)
            # The field is 45 x 18 at 50 from the fader's right and 13 above its top.
            corner = (FRONT, 100 + 2, 19 - 13 + 2)
            self.assertNotEqual(self.display.colour(*corner), ENTRY_FIELD_BLUE)
            self.display.type("12")
            self.display.wait_for_colour(corner, ENTRY_FIELD_BLUE)
            self.display.key("Escape")
            self.display.wait_for_colour(corner, (0, 0, 0))  # of the caption above


class KeypadTest(ConsoleTestCase):
    def setUp(self):
        super().setUp()
        self.display.key("Num_Lock")
        self.addCleanup(self.display.key, "Num_Lock")

    def press(self, *keys):
        self.display.key(*(KEYPAD[key] for key in keys))

    def test_digits_point_and_enter(self):
        with self.console() as console:
            console.select(DIMMER)
            self.press("1", "0", "9", ".", "5", "Enter")
            self.wait_for_front({1: 110})
            console.select(PAN)
            self.press("2", "3", "4", "6", "Enter")
            self.wait_for_front({1: 110, 2: 2346 >> 8, 3: 2346 & 255})
            self.press("7", "8", "Enter")
            self.wait_for_front({1: 110, 3: 78})

    def test_plus_and_minus_step_and_do_not_type(self):
        with self.console() as console:
            console.set(DIMMER, "253")
            self.press("+")
            self.wait_for_front({1: 254})
            self.press("+", "+", "-", "-", "-")
            self.wait_for_front({1: 252})

    def test_the_decimal_key_types_a_point_on_a_keyboard_that_prints_a_comma(self):
        self.display.run("setxkbmap", "de")
        self.addCleanup(self.display.run, "setxkbmap", "us")
        with self.console() as console:
            console.select(DIMMER)
            self.press("2", "0", ".", "5", "Enter")
            self.wait_for_front({1: 21})


class StepTest(ConsoleTestCase):
    def test_arrows_step_by_one_and_stop_at_the_ends(self):
        with self.console() as console:
            console.select(DIMMER)
            self.display.key("Left", "Right", "Right", "Right", "Left")
            self.wait_for_front({1: 2})
            console.enter("254")
            self.wait_for_front({1: 254})
            self.display.key("Right", "Right", "Right")
            self.wait_for_front({1: 255})
            self.display.key("Left")
            self.wait_for_front({1: 254})

    def test_a_step_in_the_middle_of_an_entry_leaves_the_entry_alone(self):
        with self.console() as console:
            console.select(PAN)
            self.display.key("1", "2", "Right", "8", "Return")
            self.wait_for_front({3: 128})


class DefaultTest(ConsoleTestCase):
    def test_equal_returns_to_the_default(self):
        with self.console() as console:
            console.set(SHUTTER, "200")
            self.wait_for_front({7: 200})
            self.display.key("9", "equal")
            self.wait_for_front({7: 32})
            self.display.key("Return", "Right")
            self.wait_for_front({7: 33})
            self.assertEqual(self.levels_of(1, 7), [32, 200, 32, 33])

    def test_equal_fades_back_when_the_control_has_a_time(self):
        with self.console() as console:
            console.set(SHUTTER, "250")
            self.wait_for_front({7: 250})
            console.enter("0.5", "s")
            self.display.key("equal")
            self.wait_for_front({7: 32})
            self.assertGreater(len(self.levels_of(1, 7)), 5)

    def test_alt_equal_clears_the_time(self):
        with self.console() as console:
            console.select(DIMMER)
            console.enter("30", "s")
            self.display.key("alt+equal")
            console.enter("200")
            self.wait_for_front({1: 200})
            self.assertEqual(self.levels_of(1, 1), [0, 200])


class TimeTest(ConsoleTestCase):
    def test_s_takes_the_number_as_a_fade_time(self):
        with self.console() as console:
            self.wait_for_front({})
            console.select(DIMMER)
            console.enter("1.5", "s")
            console.enter("150")
            self.wait_for_front({1: 150})
            course = self.receiver.course(1, 1)
            self.assertEqual([level for _, level in course], sorted(level for _, level in course))
            self.assertGreater(len(course), 10)
            # A level of 100 stands for one second of the fade.
            for moment, level in course[2:]:
                self.assertAlmostEqual(moment - course[1][0], (level - course[1][1]) / 100, delta=0.2)

    def test_a_capital_s_serves_as_well_and_0_takes_the_time_away(self):
        with self.console() as console:
            console.select(DIMMER)
            console.enter("30", "S")
            console.enter("0", "shift+s")
            console.enter("99")
            self.wait_for_front({1: 99})
            self.assertEqual(self.levels_of(1, 1), [0, 99])

    def test_s_before_the_number_makes_the_next_entry_a_time(self):
        with self.console() as console:
            console.select(DIMMER)
            self.display.key("s", "Escape")
            console.enter("0.7")  # a time, although Return ends it
            console.enter("200")
            self.wait_for_front({1: 200})
            self.assertGreater(len(self.levels_of(1, 1)), 5)


class SelectionTest(ConsoleTestCase):
    def test_tab_applies_the_entry_and_goes_round_past_captions_and_blanks(self):
        with self.console() as console:
            console.select(DIMMER)
            for text in ["11", "300", "33", "44", "55", "66"]:
                console.enter(text, "Tab")
            self.wait_for_front({1: 66, 2: 1, 3: 44, 7: 33, 8: 44, 9: 55})

    def test_shift_tab_goes_forward_too(self):
        with self.console() as console:
            console.select(DIMMER)
            console.enter("11", "shift+Tab")
            console.enter("22", "shift+Tab")
            console.enter("33")
            self.wait_for_front({1: 11, 3: 22, 7: 33})

    def test_down_goes_forward_and_up_backward(self):
        with self.console() as console:
            console.select(RED)
            console.enter("1", "Down")
            console.enter("2", "Down")
            console.enter("3", "Up")
            console.enter("4", "Up")
            console.enter("5", "Up")
            console.enter("6", "Up")
            console.enter("7")
            self.wait_for_front({1: 3, 3: 7, 7: 6, 8: 5, 9: 4})

    def test_tab_in_a_window_without_a_selection_begins_with_its_first_fader(self):
        with self.console() as console:
            self.display.activate(FRONT)
            self.display.key("Tab")
            console.enter("17")
            self.wait_for_front({1: 17})

    def test_every_window_has_a_selection_of_its_own(self):
        with self.console() as console:
            console.select(RED)
            console.set(BACK_DIMMER, "5")
            self.display.activate(FRONT)
            console.enter("6")
            self.display.activate(BACK)
            console.enter("7")
            self.wait_for_front({8: 6})
            self.wait_for_back({101: 7})

    def test_the_selected_fader_of_the_window_in_front_is_outlined(self):
        orange = (255, 128, 0)
        corner = (FRONT, 150, 0)
        with self.console() as console:
            self.display.xdotool("windowmove", self.display.window(MAIN), 20, 20)
            console.select(RED)
            self.display.wait_for_colour(corner, orange)
            self.display.activate(MAIN)
            self.display.wait_for_colour(corner, lambda colour: colour != orange)


class HalfTypedNumberTest(ConsoleTestCase):
    def test_survives_a_look_at_another_window(self):
        with self.console() as console:
            console.select(PAN)
            self.display.key("1", "2")
            self.display.activate(MAIN)
            self.display.activate(FRONT)
            self.display.key("8", "Return")
            self.wait_for_front({3: 128})

    def test_survives_an_entry_in_another_fixture(self):
        with self.console() as console:
            console.select(PAN)
            self.display.key("1", "2")
            console.set(BACK_DIMMER, "77")
            self.wait_for_back({101: 77})
            self.display.activate(FRONT)
            self.display.key("8", "Return")
            self.wait_for_front({3: 128})

    def test_survives_a_look_at_a_menu(self):
        with self.console() as console:
            console.select(PAN)
            self.display.key("1", "2")
            with self.display.menu(MAIN, "alt+f"):
                pass
            self.display.activate(FRONT)
            self.display.key("8", "Return")
            self.wait_for_front({3: 128})

    def test_ends_when_another_fader_is_clicked(self):
        with self.console() as console:
            console.select(PAN)
            self.display.key("1", "2")
            console.select(DIMMER)
            console.select(PAN)
            self.display.key("8", "Return")
            self.wait_for_front({3: 8})


if __name__ == "__main__":
    unittest.main()
