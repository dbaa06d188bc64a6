"""Levels and the selection by mouse and wheel."""

import unittest

from case import ConsoleTestCase
from stage import BACK_DIMMER, DIMMER, FRONT, PAN, RED, SPOT_LABEL

RIGHT_BUTTON = 3


class DragTest(ConsoleTestCase):
    def drag(self, fader, *across, button=1):
        """Drags over points of the fader, in widths from its left edge."""
        self.display.activate(fader.title)
        self.display.drag(fader.title, *(fader.point(place) for place in across), button=button)

    def test_the_whole_width_is_the_whole_range(self):
        with self.console():
            self.drag(DIMMER, 0, 1)
            self.wait_for_front({1: 255})
            self.drag(DIMMER, 0.9, -0.1)
            self.wait_for_front({})
            self.drag(PAN, 0, 1)
            self.wait_for_front({2: 255, 3: 255})

    def test_the_level_moves_by_the_way_and_not_to_the_pointer(self):
        with self.console() as console:
            console.set(DIMMER, "100")
            self.wait_for_front({1: 100})
            self.drag(DIMMER, 0.5, 0.6)  # 15 pixels of 150: 25.5 of 255
            self.wait_for_front({1: 125})
            self.drag(PAN, 0.2, 0.7)
            self.wait_for_front({1: 125, 2: 127, 3: 255})

    def test_a_drag_beyond_the_window_stops_at_the_end_of_the_range(self):
        with self.console():
            self.drag(DIMMER, 0.5, -1.5, 0.5)
            self.wait_for_front({})
            self.drag(DIMMER, 0.5, 3.5)
            self.wait_for_front({1: 255})
            self.drag(DIMMER, 0.5, 0.9, -2)
            self.wait_for_front({})

    def test_a_drag_follows_the_pointer_while_the_button_is_down(self):
        with self.console():
            self.display.activate(FRONT)
            self.display.point(FRONT, *DIMMER.point(0))
            with self.display.pressed():
                for across, level in [(0.2, 51), (0.4, 102), (0.1, 25)]:
                    self.display.point(FRONT, *DIMMER.point(across))
                    self.wait_for_front({1: level})
            self.display.point(FRONT, *DIMMER.point(0.9))
            self.display.settle()
            self.wait_for_front({1: 25})

    def test_only_the_left_button_drags(self):
        with self.console():
            self.drag(DIMMER, 0, 0.5, button=RIGHT_BUTTON)
            self.drag(PAN, 0, 0.2)
            self.wait_for_front({2: 0x33, 3: 0x33})

    def test_a_caption_is_no_fader(self):
        with self.console():
            self.drag(SPOT_LABEL, 0, 1)
            self.drag(RED, 0, 0.2)
            self.wait_for_front({8: 51})
            self.assertEqual(self.levels_of(1, 1), [0])


class ClickTest(ConsoleTestCase):
    def test_a_click_selects_and_moves_nothing(self):
        with self.console() as console:
            console.select(PAN)
            console.select(RED)
            console.enter("3")
            self.wait_for_front({8: 3})
            self.assertEqual(self.levels_of(1, 2, channels=2), [0])

    def test_a_click_on_a_caption_leaves_the_keys_where_they_are(self):
        with self.console() as console:
            console.select(RED)
            self.display.type("4")
            console.select(SPOT_LABEL)
            self.display.key("2", "Return")
            self.wait_for_front({8: 42})

    def test_a_click_into_another_window_brings_it_to_the_front(self):
        with self.console() as console:
            self.display.xdotool("windowmove", self.display.window(FRONT), 20, 40)
            console.select(BACK_DIMMER)
            self.display.click(FRONT, *RED.point())
            self.display.wait_for_front(FRONT)
            console.enter("8")
            self.wait_for_front({8: 8})


class WheelTest(ConsoleTestCase):
    def turn(self, fader, notches):
        self.display.activate(fader.title)
        self.display.turn_wheel(fader.title, *fader.point(), notches)

    def test_a_notch_is_one_step(self):
        with self.console():
            self.turn(DIMMER, 3)
            self.wait_for_front({1: 3})
            self.turn(DIMMER, -1)
            self.wait_for_front({1: 2})
            self.turn(DIMMER, -4)
            self.turn(DIMMER, 1)
            self.wait_for_front({1: 1})

    def test_with_ctrl_a_notch_is_200_steps_within_the_range(self):
        with self.console():
            with self.display.held("ctrl"):
                self.turn(DIMMER, 1)
                self.wait_for_front({1: 200})
                self.turn(DIMMER, 1)
                self.wait_for_front({1: 255})
                self.turn(PAN, 2)
                self.wait_for_front({1: 255, 2: 1, 3: 144})
                self.turn(PAN, -3)
                self.wait_for_front({1: 255})

    def test_the_wheel_selects_the_fader_under_the_pointer(self):
        with self.console() as console:
            console.select(RED)
            self.turn(DIMMER, 1)
            self.wait_for_front({1: 1})
            console.enter("60")
            self.wait_for_front({1: 60})

    def test_the_wheel_does_nothing_on_a_caption(self):
        with self.console() as console:
            console.select(RED)
            self.turn(SPOT_LABEL, 2)
            self.turn(RED, 1)
            console.enter("61")
            self.wait_for_front({8: 61})
            self.assertEqual(self.levels_of(1, 1), [0])


if __name__ == "__main__":
    unittest.main()
