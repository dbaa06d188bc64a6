"""A keyboard that presses a key at once, where a tool would first have to be started."""

import ctypes
import time

from x11 import Line


class Keyboard(Line):
    def __init__(self, display_name):
        super().__init__(display_name)
        self._test = ctypes.CDLL("libXtst.so.6")
        self._x11.XStringToKeysym.restype = ctypes.c_ulong
        self._test.XTestFakeKeyEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]

    def press(self, name):
        """Presses and releases a key; returns the moment in seconds of the wall clock."""
        keysym = ctypes.c_ulong(self._x11.XStringToKeysym(name.encode()))
        code = self._x11.XKeysymToKeycode(self._display, keysym) & 0xFF
        self._test.XTestFakeKeyEvent(self._display, code, 1, 0)
        self._test.XTestFakeKeyEvent(self._display, code, 0, 0)
        moment = time.time()
        self._x11.XFlush(self._display)
        return moment
