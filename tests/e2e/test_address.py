"""Where the datagrams go: the address field."""

import unittest

from case import ConsoleTestCase
from console import ADDRESS_FIELD
from home import write
from receiver import Receiver
from stage import BACK, DIMMER, FRONT, MAIN
from waiting import wait_until


class AddressTest(ConsoleTestCase):
    def setUp(self):
        super().setUp()
        self.other = self.enterContext(Receiver("127.0.0.2"))

    def shown_address(self):
        """The text of the address field, by way of the pasteboard."""
        self.display.key("ctrl+a", "ctrl+c")
        self.display.settle()
        return self.display.run("xclip", "-selection", "clipboard", "-out").decode()

    def wait_for_stored(self, address):
        wait_until(lambda: self.home.defaults and self.home.defaults.get("tx_address") == address,
                   f"{address} in the user defaults")

    def test_return_sends_the_next_datagrams_to_the_address(self):
        with self.console() as console:
            self.receiver.wait_for_count(2)
            self.assertEqual(self.other.datagrams(), [])
            console.type_address("127.0.0.2")
            self.display.key("Return")
            self.other.wait_for_count(2)
            self.receiver.forget()
            console.set(DIMMER, "3")
            self.other.wait_for_levels(1, {1: 3, 7: 32})
            self.assertEqual(self.receiver.datagrams(), [])

    def test_an_accepted_address_is_stored_soon_and_used_at_the_next_start(self):
        with self.console() as console:
            console.type_address("127.0.0.2")
            self.display.key("Return")
            self.wait_for_stored("127.0.0.2")
        self.receiver.forget()
        self.other.forget()
        with self.console([FRONT, BACK, MAIN]):
            self.assertEqual(self.other.wait_for_count(1)[0].sequence, 2)
            self.assertEqual(self.receiver.datagrams(), [])
            self.display.key("alt+t")
            self.assertEqual(self.shown_address(), "127.0.0.2")

    def test_the_field_shows_the_four_numbers_that_were_read(self):
        with self.console() as console:
            for typed, shown in [("  127.0.0.2 ", "127.0.0.2"), ("0127.00.0.02", "127.0.0.2"),
                                 ("127.0.0.2xyz", "127.0.0.2"), ("127. 0. 0. 3", "127.0.0.3")]:
                with self.subTest(typed):
                    console.type_address(typed)
                    self.display.key("Return")
                    self.assertEqual(self.shown_address(), shown)
                    self.wait_for_stored(shown)

    def test_what_is_no_address_is_refused_and_the_field_restored(self):
        with self.console() as console:
            for typed in ["256.0.0.1", "127.0.0", "-127.0.0.2", "", "localhost", "127,0,0,2"]:
                with self.subTest(typed):
                    console.type_address(typed)
                    self.display.key("Return")
                    self.assertEqual(self.shown_address(), "127.0.0.1")
            console.set(DIMMER, "4")
            self.wait_for_front({1: 4})
            self.assertEqual(self.other.datagrams(), [])
        self.assertEqual(self.home.defaults["tx_address"], "127.0.0.1")

    def test_a_click_goes_into_the_field(self):
        with self.console():
            self.display.activate(MAIN)
            self.display.click(MAIN, *ADDRESS_FIELD)
            self.display.key("End", "BackSpace", "2", "Return")
            self.other.wait_for_count(1)

    def test_what_is_typed_counts_only_after_return(self):
        with self.console() as console:
            console.type_address("127.0.0.2")
            console.set(DIMMER, "4")
            self.wait_for_front({1: 4})
            self.assertEqual(self.other.datagrams(), [])

    def test_a_broadcast_address_of_the_loopback_reaches_all_of_it(self):
        write(self.home.defaults_file, {"tx_address": "127.255.255.255"})
        everywhere = self.enterContext(Receiver("127.255.255.255"))
        with self.console():
            self.assertEqual(everywhere.wait_for_count(1, universe=1)[0].sequence, 2)


if __name__ == "__main__":
    unittest.main()
