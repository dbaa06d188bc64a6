"""The first start in an empty home."""

import unittest

import stage
from case import ConsoleTestCase
from home import write
from receiver import levels

HEADER = b"Art-Net\0\x00\x50\x00\x0e"


def packet(sequence, universe, slots):
    return HEADER + bytes([sequence, 0, universe, 0, 0x02, 0x00]) + levels(slots)


class StartTest(ConsoleTestCase):
    def test_opens_the_windows_of_the_default_configuration(self):
        with self.console():
            self.assertEqual(self.display.titles(),
                             ["Back Univ: 2 Addr: 101", "Faderhall", "Front Univ: 1 Addr: 1"])
            self.assertEqual(self.display.title_in_front(), "Back Univ: 2 Addr: 101")

    def test_first_datagram_is_complete_and_carries_sequence_2(self):
        with self.console():
            front = self.receiver.wait_for_count(1, universe=1)[0]
            back = self.receiver.wait_for_count(1, universe=2)[0]
        self.assertEqual(front.packet, packet(2, 1, {7: 32}))
        self.assertEqual(back.packet, packet(2, 2, {107: 32}))

    def test_repeats_each_touched_universe_once_a_second_and_sends_no_other(self):
        with self.console():
            universes = {1: self.receiver.wait_for_count(5, universe=1),
                         2: self.receiver.wait_for_count(5, universe=2)}
            everything = self.receiver.datagrams()
        for number, datagrams in universes.items():
            moments = [datagram.moment for datagram in datagrams]
            for earlier, later in zip(moments, moments[1:]):
                self.assertGreater(later - earlier, 0.99)
                self.assertLess(later - earlier, 1.5)
            self.assertEqual([datagram.sequence for datagram in datagrams], [2, 3, 4, 5, 6], number)
        self.assertEqual({datagram.universe for datagram in everything}, {1, 2})

    def test_fixtures_of_one_universe_share_a_datagram(self):
        write(self.home.settings_file, {"views": [stage.placement("A", 3, 1), stage.placement("B", 3, 11)]})
        with self.console(["Faderhall", "A Univ: 3 Addr: 1", "B Univ: 3 Addr: 11"]):
            self.receiver.wait_for_levels(3, {7: 32, 17: 32})
            self.assertEqual([d.packet for d in self.receiver.wait_for_count(1)],
                             [packet(2, 3, {7: 32, 17: 32})])

    def test_a_rig_without_fixtures_sends_nothing(self):
        write(self.home.settings_file, {"views": []})
        with self.console(["Faderhall"]):
            self.assertTrue(self.receiver.is_silent_for(2.2))

    def test_leaves_the_default_configuration_in_the_settings_file(self):
        with self.console() as console:
            console.terminate()
        self.assertEqual(self.home.settings, stage.STAGE)
        defaults = self.home.defaults
        self.assertEqual(defaults["configName"], "Stage")
        self.assertEqual(defaults["tx_address"], "127.0.0.1")
        self.assertEqual(defaults["mainWindowTitle"], "Back Univ: 2 Addr: 101")
        self.assertEqual(defaults["saved_state: Stage"], [])
        self.assertEqual(defaults["control_selections"], ["", ""])

    def test_names_user_profiles_and_lets_them_replace_those_of_the_tables(self):
        write(self.home.settings_file, {
            "views": [stage.placement("Front", 1, 1)],
            "profiles": {"Spot": [{"name": "Only", "default": 9}], "Mond über'm Haus": []},
        })
        with self.console(["Faderhall", "Front Univ: 1 Addr: 1"]) as console:
            self.receiver.wait_for_levels(1, {1: 9})
            self.assertEqual(sorted(console.stdout.splitlines()),
                             ["Adding user profile: 'Mond über'm Haus'", "Adding user profile: 'Spot'"])

    def test_names_a_control_that_stands_twice(self):
        write(self.home.settings_file, {"views": [stage.placement("Front", 1, 1, "Twin")],
                                        "profiles": {"Twin": [{"name": "Red"}, {"name": "Red"}]}})
        with self.console(["Faderhall", "Front Univ: 1 Addr: 1"]) as console:
            self.assertEqual(console.stdout.splitlines(),
                             ["Adding user profile: 'Twin'", "DMXControl 'Front.Red' already exists!"])


if __name__ == "__main__":
    unittest.main()
