"""A network that comes and goes under a console that runs."""

import contextlib
import os
import time
import unittest
from pathlib import Path

import network
import stage
from case import ConsoleTestCase
from injection import injected
from home import write
from stage import DIMMER
from waiting import wait_until

WORKS = "Art-Net output works again"
REFRESH = 1.0  # seconds after which unchanged levels are sent again


def sockets(process):
    """Its sockets, by the numbers that the kernel gave them when they were made."""
    return {link for link in (os.readlink(entry) for entry in Path(f"/proc/{process.pid}/fd").iterdir())
            if link.startswith("socket:")}


class NetworkTest(ConsoleTestCase):
    def setUp(self):
        super().setUp()
        self.cable = self.enterContext(network.Cable())
        write(self.home.defaults_file, {"tx_address": network.NODE})

    def wait_at_the_node(self, slots, seconds=REFRESH + 2):
        self.cable.wait_for_levels(1, {**stage.FRONT_DEFAULTS, **slots}, seconds)

    @contextlib.contextmanager
    def outage(self, console, message):
        """An outage and its end, each told in one line."""
        lines = console.stderr.count("\n")
        yield
        wait_until(lambda: console.stderr.count("\n") >= lines + 2, lambda: f"two lines, not {console.stderr}")
        self.assertEqual(console.stderr.splitlines()[lines:], [f"Art-Net output fails: {message}", WORKS])

    def end(self, console):
        """The lines told of the outages are all that stands on standard error."""
        console.kill(15)
        self.assertEqual(console.process.returncode, 0)

    def test_a_console_that_started_without_a_network_sends_once_there_is_one(self):
        with self.console() as console:
            console.set(DIMMER, "128")
            before = sockets(console.process)
            self.cable.plug_in()
            self.wait_at_the_node({1: 128})
            self.assertEqual(sockets(console.process), before)
            console.enter("7")
            self.wait_at_the_node({1: 7})
            wait_until(lambda: WORKS in console.stderr, lambda: f"the end of the outage in {console.stderr}")
            self.end(console)
        self.assertEqual(console.stderr, f"Art-Net output fails: Network is unreachable\n{WORKS}\n")

    def test_an_interface_that_is_lost_and_returns_is_used_again(self):
        self.cable.plug_in()
        with self.console() as console:
            console.set(DIMMER, "1")
            self.wait_at_the_node({1: 1})
            before = sockets(console.process)
            for level in (2, 3):
                with self.outage(console, "Network is unreachable"):
                    self.cable.take_away()
                    wait_until(lambda: console.stderr.splitlines()[-1:] != [WORKS] and console.stderr, "the outage")
                    console.enter(str(level))
                    self.cable.plug_in()
                    self.wait_at_the_node({1: level})
            self.assertEqual(sockets(console.process), before)
            self.end(console)

    def test_ticks_and_keys_go_on_while_every_datagram_fails(self):
        self.cable.plug_in()
        with self.console() as console:
            console.select(DIMMER)
            for level, (error, message) in enumerate([("EPERM", "Operation not permitted"),
                                                      ("ENOBUFS", "No buffer space available"),
                                                      ("ENETUNREACH", "Network is unreachable"),
                                                      ("EAGAIN", "Resource temporarily unavailable")], 10):
                with self.subTest(error), self.outage(console, message):
                    with injected(console.process, "sendto", f"error={error}"):
                        self.cable.forget()
                        console.enter("0.5", "s")
                        console.enter(str(level))  # fades while nothing can be sent
                        time.sleep(1.5)
                        self.assertEqual(self.cable.datagrams(1), [])
                    self.wait_at_the_node({1: level})
                    # Only the end of the fade is left to be sent.
                    self.assertEqual({datagram.slots[0] for datagram in self.cable.datagrams(1)}, {level})
            self.end(console)


if __name__ == "__main__":
    network.enter()
    unittest.main()
