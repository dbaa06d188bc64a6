"""What an independent Art-Net dissector makes of the datagrams."""

import unittest

from capture import Capture
from case import ConsoleTestCase
from receiver import levels
from stage import BACK_DIMMER, DIMMER, PAN, RED


class DissectorTest(ConsoleTestCase):
    def setUp(self):
        super().setUp()
        if not Capture.is_allowed():
            self.skipTest("this user may not capture on the loopback")

    def test_reads_every_slot_as_it_was_set(self):
        with Capture(self.home.output / "capture.pcap") as capture, self.console() as console:
            self.wait_for_back({})
            console.set(DIMMER, "128")
            self.wait_for_front({1: 128})
            console.set(PAN, "4660")
            self.wait_for_front({1: 128, 2: 0x12, 3: 0x34})
            console.set(RED, "255")
            self.wait_for_front({1: 128, 2: 0x12, 3: 0x34, 8: 255})
            console.set(BACK_DIMMER, "7")
            self.wait_for_back({101: 7})
            console.terminate()
            received = self.receiver.datagrams()
            capture.wait_for_count(len(received))
        dissected = capture.datagrams()
        self.assertEqual([datagram.slots for datagram in dissected], [datagram.slots for datagram in received])
        self.assert_well_formed(dissected)
        front = self.of_universe(dissected, "1")
        self.assertEqual([datagram.sequence for datagram in front],
                         [str(2 + number) for number in range(len(front))])
        self.assertEqual(self.distinct(front), [levels(slots) for slots in [
            {7: 32}, {1: 128, 7: 32}, {1: 128, 2: 0x12, 3: 0x34, 7: 32},
            {1: 128, 2: 0x12, 3: 0x34, 7: 32, 8: 255}]])
        self.assertEqual(self.distinct(self.of_universe(dissected, "2")),
                         [levels({107: 32}), levels({101: 7, 107: 32})])

    def assert_well_formed(self, dissected):
        self.assertEqual({datagram.universe for datagram in dissected}, {"1", "2"})
        for datagram in dissected:
            self.assertEqual(datagram.identity, "Art-Net")
            self.assertEqual(int(datagram.opcode, 0), 0x5000)
            self.assertEqual(datagram.version, "14")
            self.assertEqual(datagram.physical, "0")
            self.assertEqual(datagram.length, "512")
            self.assertEqual((datagram.malformed, datagram.remarks), ("", ""))

    @staticmethod
    def of_universe(dissected, universe):
        return [datagram for datagram in dissected if datagram.universe == universe]

    @staticmethod
    def distinct(dissected):
        """The slots, without repetitions of what was sent before."""
        slots = [datagram.slots for datagram in dissected]
        return slots[:1] + [later for earlier, later in zip(slots, slots[1:]) if later != earlier]


if __name__ == "__main__":
    unittest.main()
