"""What holds the windows up holds up no light: a display and a clipboard that do not answer."""

import time
import unittest

from case import ConsoleTestCase
from stage import PAN, SHUTTER
from waiting import wait_until

FULL = 60000
FADE_SECONDS = 20
STALL_SECONDS = 3
# Of some 90. The bound only tells an output that goes on from one that waits, on a busy machine too.
LEAST_DATAGRAMS = 30


class StallTest(ConsoleTestCase):
    def start_fade(self, console):
        """Sends the front spot's pan on a long way; returns the moment of the first step, less a tick."""
        console.select(PAN)
        console.enter(str(FADE_SECONDS), "s")
        self.receiver.wait_for_levels(1, {7: 32})
        self.receiver.forget()
        console.enter(str(FULL))
        wait_until(lambda: self.levels_of(1, 2, 2)[-1:] > [0], "the fade's first step")
        return next(moment for moment, level in self.receiver.course(1, 2, 2) if level > 0) - 0.0333

    def assert_fade_goes_on(self, begin, stalled):
        self.receiver.forget()
        time.sleep(STALL_SECONDS)
        course = [(moment, level) for moment, level in self.receiver.course(1, 2, 2) if moment > stalled]
        self.assertGreater(len(course), LEAST_DATAGRAMS)
        for moment, level in course:
            self.assertAlmostEqual(level, FULL * (moment - begin) / FADE_SECONDS, delta=FULL * 0.5 / FADE_SECONDS)

    def test_a_display_that_stands_still(self):
        with self.console() as console:
            begin = self.start_fade(console)
            with self.display.stopped():
                self.assert_fade_goes_on(begin, time.monotonic())

    def test_a_clipboard_whose_owner_does_not_answer(self):
        with self.console() as console:
            begin = self.start_fade(console)
            console.select(SHUTTER)
            with self.display.hung_owner():
                self.display.key("ctrl+v")
                self.assert_fade_goes_on(begin, time.monotonic())


if __name__ == "__main__":
    unittest.main()
