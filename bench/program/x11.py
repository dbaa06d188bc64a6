"""A program's own line to a display, without the tools that would have to be started for each question."""

import ctypes

ANY_TYPE = 0
REPORT_WHEN_DAMAGED = 3  # XDamageReportNonEmpty
EVENT_SIZE = 24 * ctypes.sizeof(ctypes.c_long)


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
        self._client_list = self._atom("_NET_CLIENT_LIST")
        return self

    def __exit__(self, *_):
        self._x11.XCloseDisplay(self._display)

    def _atom(self, name):
        return ctypes.c_ulong(self._x11.XInternAtom(self._display, name.encode(), 0))

    def windows(self):
        """The identifiers of the windows that the window manager has taken up, in the order in which it did."""
        kind, form, count, rest = ctypes.c_ulong(), ctypes.c_int(), ctypes.c_ulong(), ctypes.c_ulong()
        data = ctypes.POINTER(ctypes.c_ulong)()
        self._x11.XGetWindowProperty(
            self._display, self._root, self._client_list, ctypes.c_long(0), ctypes.c_long(1 << 16), 0,
            ctypes.c_ulong(ANY_TYPE), ctypes.byref(kind), ctypes.byref(form), ctypes.byref(count),
            ctypes.byref(rest), ctypes.byref(data))
        if not data:
            return []
        found = data[: count.value]
        self._x11.XFree(data)
        return found


class Painting(Line):
    """Notices when anything on the screen is painted."""

    def __enter__(self):
        super().__enter__()
        self._damages = ctypes.CDLL("libXdamage.so.1")
        self._damages.XDamageCreate.restype = ctypes.c_ulong
        first, error = ctypes.c_int(), ctypes.c_int()
        if not self._damages.XDamageQueryExtension(self._display, ctypes.byref(first), ctypes.byref(error)):
            raise AssertionError("the display does not tell what is painted")
        self._damage = ctypes.c_ulong(
            self._damages.XDamageCreate(self._display, self._root, REPORT_WHEN_DAMAGED))
        return self

    def happened(self):
        """Whether anything was painted since this was last asked."""
        waiting = self._x11.XPending(self._display)
        for _ in range(waiting):
            self._x11.XNextEvent(self._display, ctypes.create_string_buffer(EVENT_SIZE))
        if waiting:
            self._damages.XDamageSubtract(self._display, self._damage, ctypes.c_ulong(0), ctypes.c_ulong(0))
            self._x11.XFlush(self._display)
        return waiting > 0
