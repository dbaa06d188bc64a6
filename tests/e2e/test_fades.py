"""Fades as a receiver sees them."""

import unittest

from case import ConsoleTestCase
from receiver import next_sequence
from stage import BACK_DIMMER, DIMMER, PAN

TICK = 0.0333


class LongFadeTest(ConsoleTestCase):
    def test_ten_seconds_give_a_datagram_per_tick_on_a_straight_line(self):
        with self.console() as console:
            console.select(PAN)
            console.enter("10", "s")
            self.receiver.forget()
            console.enter("65535")
            self.wait_for_front({2: 255, 3: 255})
            course = self.receiver.course(1, 2, channels=2)
            datagrams = self.receiver.datagrams(1)
        if course[0][1] == 0:
            del course[0]  # a refresh from before the fade
        self.assert_on_the_line(course)
        self.assert_one_per_tick(course)
        self.assert_sequence(datagrams)

    def assert_on_the_line(self, course):
        """Each level is the one of its moment, 65535 in ten seconds, as far as a busy machine lets it arrive."""
        start = [moment - level / 6553.5 for moment, level in course]
        self.assertLess(max(start) - min(start), 0.5)

    def assert_one_per_tick(self, course):
        """No more levels than ten seconds have ticks, each higher than the one before; a machine that is busy
        with other things leaves some out."""
        levels = [level for _, level in course]
        self.assertEqual(levels, sorted(set(levels)))
        self.assertLessEqual(len(levels), 302)
        self.assertGreater(len(levels), 150)

    def assert_sequence(self, datagrams):
        sequences = [datagram.sequence for datagram in datagrams]
        expected = sequences[:1]
        while len(expected) < len(sequences):
            expected.append(next_sequence(expected[-1]))
        self.assertEqual(sequences, expected)
        end = sequences.index(255)
        self.assertEqual(sequences[end:end + 3], [255, 0, 2])


class FadeTest(ConsoleTestCase):
    def test_a_new_level_on_the_way_begins_at_the_present_one(self):
        with self.console() as console:
            console.select(PAN)
            console.enter("4", "s")
            console.enter("65535")
            self.receiver.wait_for_count(20, universe=1)
            console.enter("0")
            self.wait_for_front({})
            levels = self.levels_of(1, 2, channels=2)
        turn = levels.index(max(levels))
        self.assertLess(levels[turn], 60000)
        self.assertEqual(levels[:turn], sorted(levels[:turn]))
        self.assertEqual(levels[turn:], sorted(levels[turn:], reverse=True))
        # No leap at the turn: the next level is a few ticks away.
        self.assertGreater(levels[turn + 1], 0.7 * levels[turn])

    def test_a_step_on_the_way_does_not_stop_a_fade(self):
        with self.console() as console:
            console.select(PAN)
            console.enter("2", "s")
            console.enter("20000")
            self.receiver.wait_for_count(10, universe=1)
            self.display.key("Left", "Right", "Right")
            self.wait_for_front({2: 20000 >> 8, 3: 20000 & 255})

    def test_fades_of_several_controls_share_the_datagrams_of_their_universe(self):
        with self.console() as console:
            console.select(DIMMER)
            console.enter("2", "s")
            console.select(PAN)
            console.enter("2", "s")
            console.select(BACK_DIMMER)
            console.enter("2", "s")
            self.receiver.forget()
            console.enter("250")
            console.set(PAN, "50000")
            console.set(DIMMER, "250")
            self.wait_for_front({1: 250, 2: 50000 >> 8, 3: 50000 & 255})
            self.wait_for_back({101: 250})
            moments = [datagram.moment for datagram in self.receiver.datagrams(1)]
        seconds = moments[-1] - moments[0]
        self.assertLess(len(moments), seconds / TICK + 3)


if __name__ == "__main__":
    unittest.main()
