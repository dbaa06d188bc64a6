"""A program's own line to a display, without the tools that would have to be started for each question."""

import ctypes

ANY_TYPE = 0
REPORT_WHEN_DAMAGED = 3  # XDamageReportNonEmpty
STRUCTURE_NOTIFY = 1 << 17
CLIENT_MESSAGE = 33


class Line:
    """Open while its block runs."""

    def __init__(self, display_name):
        self._x11 = ctypes.CDLL("libX11.so.6")
        for name in ("XOpenDisplay", "XDefaultRootWindow", "XInternAtom"):
            getattr(self._x11, name).restype = ctypes.c_void_p
        self._name = display_name.encode()

    def __enter__(self):
        opened = self._x11.XOpenDisplay(self._name)
        if not opened:
            raise AssertionError("the display does not answer")
        self._display = ctypes.c_void_p(opened)
        self._root = ctypes.c_ulong(self._x11.XDefaultRootWindow(self._display))
        self._atoms = {}
        return self

    def __exit__(self, *_):
        self._x11.XCloseDisplay(self._display)

    def _atom(self, name):
        if name not in self._atoms:
            self._atoms[name] = ctypes.c_ulong(self._x11.XInternAtom(self._display, name.encode(), 0))
        return self._atoms[name]

    def windows(self):
        """The identifiers of the windows that the window manager has taken up, in the order in which it did."""
        kind, form, count, rest = ctypes.c_ulong(), ctypes.c_int(), ctypes.c_ulong(), ctypes.c_ulong()
        data = ctypes.POINTER(ctypes.c_ulong)()
        self._x11.XGetWindowProperty(
            self._display, self._root, self._atom("_NET_CLIENT_LIST"), ctypes.c_long(0), ctypes.c_long(1 << 16), 0,
            ctypes.c_ulong(ANY_TYPE), ctypes.byref(kind), ctypes.byref(form), ctypes.byref(count),
            ctypes.byref(rest), ctypes.byref(data))
        if not data:
            return []
        found = data[: count.value]
        self._x11.XFree(data)
        return found


class ClientMessage(ctypes.Structure):
    """What one program sends another through the display, as the library lays it out."""

    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5)]


class Event(ctypes.Union):
    _fields_ = [("type", ctypes.c_int), ("message", ClientMessage), ("all", ctypes.c_long * 24)]


class Watcher(Line):
    """Notices when anything on the screen is painted, and when a program answers."""

    def __enter__(self):
        super().__enter__()
        self._damages = ctypes.CDLL("libXdamage.so.1")
        self._damages.XDamageCreate.restype = ctypes.c_ulong
        first, error = ctypes.c_int(), ctypes.c_int()
        if not self._damages.XDamageQueryExtension(self._display, ctypes.byref(first), ctypes.byref(error)):
            raise AssertionError("the display does not tell what is painted")
        self._damage_event = first.value
        self._damage = ctypes.c_ulong(
            self._damages.XDamageCreate(self._display, self._root, REPORT_WHEN_DAMAGED))
        # The toolkit sends its answers to the window manager, and to whoever takes the root's own events.
        self._x11.XSelectInput(self._display, self._root, ctypes.c_long(STRUCTURE_NOTIFY))
        self._x11.XFlush(self._display)
        self.was_painted = False
        self.answers = 0
        return self

    def look(self):
        """Takes in what has happened since this was last called."""
        event = Event()
        self.was_painted = False
        for _ in range(self._x11.XPending(self._display)):
            self._x11.XNextEvent(self._display, ctypes.byref(event))
            if event.type == self._damage_event:
                self.was_painted = True
            elif event.type == CLIENT_MESSAGE and event.message.data[0] == self._atom("_NET_WM_PING").value:
                self.answers += 1
        if self.was_painted:
            self._damages.XDamageSubtract(self._display, self._damage, ctypes.c_ulong(0), ctypes.c_ulong(0))
        self._x11.XFlush(self._display)

    def ask(self, window):
        """Has the program of a window answer when it has come to this message."""
        event = Event()
        event.message.type = CLIENT_MESSAGE
        event.message.window = window
        event.message.message_type = self._atom("WM_PROTOCOLS").value
        event.message.format = 32
        event.message.data[0] = self._atom("_NET_WM_PING").value
        event.message.data[2] = window
        self._x11.XSendEvent(self._display, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(event))
        self._x11.XFlush(self._display)
