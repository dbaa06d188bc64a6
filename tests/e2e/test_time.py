"""Time that the console does not get: it is stopped, or busy with keys."""

import signal
import time
import unittest

from case import ConsoleTestCase
from console import Fader
from stage import BACK, PAN, WINDOWS
from waiting import wait_until

BACK_PAN = Fader(BACK, 0, 2)

TICK = 0.0333
KEYS = 1500
# Seconds that keys may hold a tick up here. They do for some milliseconds, which is printed; the bound only tells a console
# that goes on sending from one that waits until it has seen to all keys.
HELD_UP = 0.5


def intervals(moments):
    return [later - earlier for earlier, later in zip(moments, moments[1:])]


class StopTest(ConsoleTestCase):
    def fade(self, console, seconds):
        """Sends the front spot's pan to 60000; returns the moment of the first step."""
        console.select(PAN)
        console.enter(str(seconds), "s")
        self.receiver.wait_for_levels(1, {7: 32})
        self.receiver.forget()
        console.enter("60000")
        wait_until(lambda: self.levels_of(1, 2, 2)[-1:] > [0], "the fade's first step")
        return next(moment for moment, level in self.receiver.course(1, 2, 2) if level > 0) - TICK

    def stop_for(self, console, seconds):
        """Returns the moment at which it goes on; forgets what came before."""
        console.process.send_signal(signal.SIGSTOP)
        time.sleep(seconds)
        self.receiver.forget()
        moment = time.monotonic()
        console.process.send_signal(signal.SIGCONT)
        return moment

    def test_a_fade_whose_time_has_passed_is_at_its_end_at_once(self):
        with self.console() as console:
            self.fade(console, 1)
            self.stop_for(console, 2)
            self.receiver.wait_for_levels(1, {2: 60000 >> 8, 3: 60000 & 0xFF, 7: 32})
            self.assertEqual(self.levels_of(1, 2, 2), [60000])

    def test_a_fade_goes_on_where_it_would_be(self):
        with self.console() as console:
            begin = self.fade(console, 5)
            self.stop_for(console, 2)
            self.receiver.wait_for_levels(1, {2: 60000 >> 8, 3: 60000 & 0xFF, 7: 32})
            # Two ticks and what a busy machine adds; a fade that had stood still would be 2 s late.
            for moment, level in self.receiver.course(1, 2, 2):
                self.assertAlmostEqual(level, min(60000, 60000 * (moment - begin) / 5), delta=60000 * 0.5 / 5)

    def test_missed_ticks_and_refreshes_are_not_made_up_for(self):
        with self.console() as console:
            self.fade(console, 30)
            going_on = self.stop_for(console, 3)
            time.sleep(1)
            moments = [datagram.moment for datagram in self.receiver.datagrams(1)]
            # A second's worth and no more; the three that were missed would be 90.
            self.assertLessEqual(sum(moment < going_on + 1 for moment in moments), 31)
            self.assertLessEqual(sum(moment < going_on + 0.1 for moment in moments), 4)
            self.assertLessEqual(len([d for d in self.receiver.datagrams(2) if d.moment < going_on + 0.5]), 1)


class KeysTest(ConsoleTestCase):
    def test_1500_keys_in_a_row_do_not_hold_up_the_ticks(self):
        with self.console(WINDOWS) as console:
            console.select(BACK_PAN)
            console.enter("60", "s")
            console.enter("65535")  # a datagram in each tick
            console.select(PAN)
            self.receiver.forget()
            idle = max(intervals(self.a_second_of_ticks()))
            # All keys are there before the console gets to the first.
            console.process.send_signal(signal.SIGSTOP)
            self.display.xdotool("key", "--delay", "0", *["Right"] * KEYS)
            self.receiver.forget()
            going_on = time.monotonic()
            console.process.send_signal(signal.SIGCONT)
            busy = max(intervals([going_on, *self.a_second_of_ticks()]))
            self.receiver.wait_for_levels(1, {2: KEYS >> 8, 3: KEYS & 0xFF, 7: 32})
        print(f"Largest interval between ticks: {1000 * idle:.0f} ms before, {1000 * busy:.0f} ms with {KEYS} keys")
        self.assertLess(busy, max(idle, TICK) + HELD_UP)

    def a_second_of_ticks(self):
        time.sleep(1)
        return [datagram.moment for datagram in self.receiver.datagrams(2)]


if __name__ == "__main__":
    unittest.main()
