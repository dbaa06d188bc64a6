"""A keyboard that presses a key at once, where a tool would first have to be started."""

import ctypes
import time


class Keyboard:
    def __init__(self, display_name):
        self._x11 = ctypes.CDLL("libX11.so.6")
        self._test = ctypes.CDLL("libXtst.so.6")
        self._x11.XOpenDisplay.restype = ctypes.c_void_p
        for function in (self._x11.XFlush, self._x11.XCloseDisplay):
            function.argtypes = [ctypes.c_void_p]
        self._x11.XKeysymToKeycode.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
        self._x11.XStringToKeysym.restype = ctypes.c_ulong
        self._test.XTestFakeKeyEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]
        self._name = display_name.encode()

    def __enter__(self):
        self._display = self._x11.XOpenDisplay(self._name)
        if not self._display:
            raise AssertionError("the display does not answer")
        return self

    def __exit__(self, *_):
        self._x11.XCloseDisplay(self._display)

    def press(self, name):
        """Presses and releases a key; returns the moment in seconds of the wall clock."""
        code = self._x11.XKeysymToKeycode(self._display, self._x11.XStringToKeysym(name.encode()))
        self._test.XTestFakeKeyEvent(self._display, code, 1, 0)
        self._test.XTestFakeKeyEvent(self._display, code, 0, 0)
        moment = time.time()
        self._x11.XFlush(self._display)
        return moment
