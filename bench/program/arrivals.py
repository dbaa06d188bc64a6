"""A receiver that has the kernel tell when a datagram came: how busy the receiver itself is plays no part."""

import socket
import struct

from receiver import Datagram, Receiver

SO_TIMESTAMPNS = 35  # of Linux; the socket module does not name it
RECEIVE_BUFFER = 8 * 1024 * 1024


class Arrivals(Receiver):
    """Keeps every datagram with its moment in seconds of the wall clock."""

    def _listen(self):
        self._socket.setsockopt(socket.SOL_SOCKET, SO_TIMESTAMPNS, 1)
        self._socket.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, RECEIVE_BUFFER)
        while True:
            packet, extra, _, _ = self._socket.recvmsg(2048, 64)
            if not packet:
                return
            seconds, nanoseconds = struct.unpack("qq", extra[0][2])
            self._datagrams.append(Datagram(seconds + nanoseconds * 1e-9, packet))

    def moments(self, universe):
        return [datagram.moment for datagram in self.datagrams(universe)]

    def level_came_at(self, universe, slot, level):
        """When the last datagram of a universe came, if it holds a level; else nothing."""
        for datagram in reversed(list(self._datagrams)):
            if datagram.universe == universe:
                return datagram.moment if datagram.slots[slot - 1] == level else None
        return None
