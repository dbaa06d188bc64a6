"""A session bus that lets programs in or does not, and never answers what they ask."""

import socket
import threading

ANSWERS = {b"AUTH": b"OK 0123456789abcdef0123456789abcdef\r\n", b"NEGOTIATE_UNIX_FD": b"AGREE_UNIX_FD\r\n"}


class SilentBus:
    """Listens on a socket of that path while its block runs. One that greets agrees on how to speak, as far as BEGIN."""

    def __init__(self, path, greets):
        self.address = f"unix:path={path}"
        self._path = str(path)
        self._greets = greets
        self._connections = []

    def __enter__(self):
        self._listener = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._listener.bind(self._path)
        self._listener.listen(64)
        threading.Thread(target=self._accept, daemon=True).start()
        return self

    def __exit__(self, *_):
        for opened in (self._listener, *self._connections):
            try:
                opened.shutdown(socket.SHUT_RDWR)
            except OSError:  # has gone already
                pass
            opened.close()

    def _accept(self):
        while True:
            try:
                connection, _ = self._listener.accept()
            except OSError:  # the block has ended
                return
            self._connections.append(connection)
            threading.Thread(target=self._listen, args=[connection], daemon=True).start()

    def _listen(self, connection):
        try:
            while heard := connection.recv(4096):
                if self._greets:
                    self._greet(connection, heard)
        except OSError:
            pass

    @staticmethod
    def _greet(connection, heard):
        for line in heard.lstrip(b"\0").split(b"\r\n"):
            if answer := ANSWERS.get(line.split(b" ")[0]):
                connection.sendall(answer)
