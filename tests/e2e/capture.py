"""A capture of the loopback's Art-Net traffic, read by an independent dissector."""

import re
import subprocess
from typing import NamedTuple

from receiver import PORT
from waiting import wait_until

FIELDS = ["artnet.header.id", "artnet.header.opcode", "artnet.header.protver", "artnet.output.sequence",
          "artnet.output.physical", "artnet.output.universe", "artnet.output.length",
          "dmx_chan.data_filter", "_ws.malformed", "_ws.expert"]


class Dissected(NamedTuple):
    """One datagram as the dissector understands it."""

    identity: str
    opcode: str
    version: str
    sequence: str
    physical: str
    universe: str
    length: str
    slots: bytes
    malformed: str
    remarks: str


class Capture:
    """Records what is sent to Art-Net's port on the loopback until the block ends."""

    # In the classic format every record has the same length: a header, Ethernet, IPv4, UDP and the packet.
    FILE_HEADER = 24
    RECORD = 16 + 14 + 20 + 8 + 530

    def __init__(self, path):
        self._path = path

    @staticmethod
    def is_allowed():
        """Whether the user may capture on the loopback."""
        found = subprocess.run(["dumpcap", "-D", "-M"], capture_output=True, text=True, check=False, timeout=30)
        return re.search(r"^\d+\. lo\b", found.stdout, re.MULTILINE) is not None

    def __enter__(self):
        self._process = subprocess.Popen(
            ["tshark", "-q", "-i", "lo", "-f", f"udp port {PORT}", "-F", "pcap", "-w", self._path],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_until(lambda: self._size() >= self.FILE_HEADER, "the capture to begin", 60)
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait(30)

    def _size(self):
        try:
            return self._path.stat().st_size
        except FileNotFoundError:
            return 0

    def wait_for_count(self, count):
        wait_until(lambda: self._size() >= self.FILE_HEADER + count * self.RECORD,
                   lambda: f"{count} datagrams in a capture of {self._size()} bytes")

    def datagrams(self):
        """All captured datagrams, dissected."""
        lines = subprocess.run(
            ["tshark", "-r", self._path, "-T", "fields", *(part for name in FIELDS for part in ("-e", name))],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=True, timeout=60).stdout
        return [self._dissected(line.split("\t")) for line in lines.splitlines()]

    @staticmethod
    def _dissected(fields):
        named = Dissected(*fields)
        return named._replace(slots=bytes.fromhex(named.slots.replace(":", "")))
