"""The output while menus are open."""

import unittest

from case import ConsoleTestCase
from stage import DIMMER, FRONT, MAIN, PAN

MENU_BAR_Y = 10

# Longer than the second after which a level is sent again at the latest.
PAUSE = 1.5


class OpenMenuTest(ConsoleTestCase):
    def assert_pauses_the_output(self, menu):
        with self.console():
            self.receiver.wait_for_count(1, universe=1)
            with menu():
                self.receiver.forget()
                self.assertTrue(self.receiver.is_silent_for(PAUSE))
            self.receiver.wait_for_count(1, universe=1)
            self.receiver.wait_for_count(1, universe=2)

    def test_a_menu_opened_by_key_pauses_the_output_until_it_closes(self):
        self.assert_pauses_the_output(lambda: self.display.menu(MAIN, "alt+w"))

    def test_a_menu_opened_by_mouse_pauses_the_output_until_it_closes(self):
        self.assert_pauses_the_output(lambda: self.display.menu_at(MAIN, 20, MENU_BAR_Y))

    def test_what_was_sent_carries_on_with_the_next_sequence(self):
        with self.console() as console:
            before = self.receiver.wait_for_count(1, universe=1)[-1]
            with self.display.menu(MAIN, "alt+f"):
                pass
            console.set(DIMMER, "9")
            self.wait_for_front({1: 9})
            sequences = [datagram.sequence for datagram in self.receiver.datagrams(1)]
        self.assertEqual(sequences, list(range(before.sequence, before.sequence + len(sequences))))

    def test_a_fade_goes_on_behind_an_open_menu(self):
        with self.console() as console:
            console.select(PAN)
            console.enter("3", "s")
            self.receiver.forget()
            console.enter("60000")
            self.receiver.wait_for_count(5, universe=1)
            with self.display.menu(MAIN, "alt+f"):
                before = self.receiver.course(1, 2, channels=2)[-1]
                self.assertTrue(self.receiver.is_silent_for(1))
            self.wait_for_front({2: 60000 >> 8, 3: 60000 & 255})
            course = self.receiver.course(1, 2, channels=2)
        moment, level = course[course.index(before) + 1]
        self.assertAlmostEqual((level - before[1]) / 20000, moment - before[0], delta=0.1)

    def test_walking_through_the_menus_changes_no_level(self):
        with self.console() as console:
            console.select(DIMMER)
            with self.display.menu(MAIN, "alt+f"):
                self.display.key("Right", "Right", "Down", "Left", "Up", "5")
            self.display.activate(FRONT)
            self.display.key("Right")
            self.wait_for_front({1: 1})
            self.assertEqual(self.levels_of(1, 1), [0, 1])


if __name__ == "__main__":
    unittest.main()
