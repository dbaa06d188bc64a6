"""The levels as another maker's receiver reads them."""

import unittest

from case import ConsoleTestCase
from ola import Ola
from stage import BACK_DIMMER, DIMMER, GREEN, PAN, SHUTTER


class OlaTest(ConsoleTestCase):
    def make_receiver(self):
        return Ola(1, 2)

    def test_reads_what_the_faders_show_and_goes_on_after_a_restart(self):
        with self.console() as console:
            self.wait_for_front({})
            self.wait_for_back({})
            console.set(DIMMER, "255")
            console.set(PAN, "4660")
            console.set(SHUTTER, "0")
            self.receiver.wait_for_levels(1, {1: 255, 2: 0x12, 3: 0x34})
            console.select(GREEN)
            console.enter("0.3", "s")
            console.enter("200")
            self.receiver.wait_for_levels(1, {1: 255, 2: 0x12, 3: 0x34, 9: 200})
            console.set(BACK_DIMMER, "1")
            self.wait_for_back({101: 1})
        with self.console() as console:
            console.set(BACK_DIMMER, "2")
            self.wait_for_back({101: 2})
            self.display.key("ctrl+x")
            self.wait_for_front({})
            self.wait_for_back({})


if __name__ == "__main__":
    unittest.main()
