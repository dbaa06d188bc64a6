"""A network of its own for a test: the loopback and a cable, on which nothing else is connected."""

import os
import socket
import subprocess
import sys
import threading
import time

from receiver import PORT, Datagram, LevelReader

SKIPPED = 77  # an exit status that CTest takes for a skipped test

NODE = "10.77.0.2"
HARDWARE = "02:00:00:00:00:02"

HEADERS = 14 + 20 + 8  # of Ethernet, IP without options and UDP
ETH_P_IP = 0x0800


def enter():
    """Starts this program again in a network of its own, or skips it where none is to be had."""
    if "FADERHALL_OWN_NETWORK" in os.environ:
        ip("link set lo up")
        return
    command = ["unshare", "--net"] if os.geteuid() == 0 else ["unshare", "--net", "--map-root-user"]
    if subprocess.run([*command, "true"], stderr=subprocess.DEVNULL, check=False).returncode:
        print("Skipped: no network of its own is to be had here (unshare --net)")
        sys.exit(SKIPPED)
    os.environ["FADERHALL_OWN_NETWORK"] = "1"
    os.execvp(command[0], [*command, sys.executable, "-B", *sys.argv])


def ip(arguments):
    subprocess.run(["ip", *arguments.split()], check=True)


class Cable(LevelReader):
    """A cable to a node, not plugged in at first; keeps the datagrams that come out of its far end."""

    def __init__(self):
        self._datagrams = []
        self._threads = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.take_away()

    def plug_in(self):
        ip("link add near type veth peer name far")
        ip("link set far arp off up")
        ip("addr add 10.77.0.1/24 dev near")
        ip("link set near up")
        ip(f"neigh replace {NODE} lladdr {HARDWARE} dev near nud permanent")
        thread = threading.Thread(target=self._listen, args=[self._far_end()], daemon=True)
        thread.start()
        self._threads.append(thread)

    def take_away(self):
        """The interface goes with the cable, and the thread that listens with it."""
        subprocess.run(["ip", "link", "del", "near"], stderr=subprocess.DEVNULL, check=False)
        while self._threads:
            self._threads.pop().join()

    @staticmethod
    def _far_end():
        end = socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(ETH_P_IP))
        end.bind(("far", ETH_P_IP))
        return end

    def _listen(self, end):
        with end:
            while frame := self._frame(end):
                if frame[HEADERS - 6 : HEADERS - 4] == PORT.to_bytes(2, "big"):
                    self._datagrams.append(Datagram(time.monotonic(), frame[HEADERS:]))

    @staticmethod
    def _frame(end):
        try:
            return end.recv(2048)
        except OSError:  # the interface has gone
            return None

    def datagrams(self, universe):
        return [datagram for datagram in list(self._datagrams) if datagram.universe == universe]

    def forget(self):
        self._datagrams.clear()

    def slots(self, universe):
        known = self.datagrams(universe)
        return known[-1].slots if known else None
