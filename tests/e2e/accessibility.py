"""Assistive technology on message buses of its own: what it sees of the program, by role and name."""

import os
import time
from contextlib import ExitStack

from display import running
from waiting import wait_until

VALUE_CHANGED = "object:property-change:accessible-value"
FOCUS_CHANGED = "object:state-changed:focused"
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"


class Accessibility:
    """The buses, and a client on them. One per process, since the client stays with the buses it knew first."""

    def __init__(self, display, folder):
        self._display = display
        self._folder = folder

    def __enter__(self):
        address = f"unix:path={self._folder}/bus"
        # What the program has to be started with.
        self.environment = {"DBUS_SESSION_BUS_ADDRESS": address, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        own = {**os.environ, "DISPLAY": self._display.name, "DBUS_SESSION_BUS_ADDRESS": address,
               "XDG_RUNTIME_DIR": str(self._folder), "GSETTINGS_BACKEND": "memory"}
        own.pop("AT_SPI_BUS_ADDRESS", None)
        with ExitStack() as stack:
            stack.enter_context(running(["dbus-daemon", "--session", "--nofork", f"--address={address}"], env=own))
            wait_until((self._folder / "bus").exists, "the message bus")
            stack.enter_context(running([LAUNCHER, "--launch-immediately"], env=own))
            wait_until(lambda: "AT_SPI_BUS" in self._display.run("xprop", "-root").decode(), "the bus of the client")
            os.environ.update(own)
            import pyatspi  # finds its bus as it is loaded
            self._client = pyatspi
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *exception):
        return self._stack.__exit__(*exception)

    def all(self, role):
        """What the program shows in that role, in its order."""
        return [shown for shown in self._everything() if shown.getRoleName() == role]

    def _everything(self):
        desktop = self._client.Registry.getDesktop(0)
        for program in desktop:
            if program is not None and program.name == "faderhall":
                yield from self._below(program)

    def _below(self, shown):
        for child in shown:
            yield child
            yield from self._below(child)

    def names(self, role):
        return [shown.name for shown in self.all(role)]

    def levels_announced(self, while_doing, count):
        """The names and levels that are announced until there are so many of them."""
        def level(event):
            return event.source.name, event.source.queryValue().currentValue

        return self._announced(VALUE_CHANGED, level, while_doing, lambda announced: len(announced) >= count)

    def focus_announced(self, while_doing, last):
        """The names of what gets the focus, one after the other, until nothing but `last` has it for a second."""
        def name(event):
            return event.source.name if event.detail1 else None

        since = time.monotonic()

        def is_over(announced):
            nonlocal since
            if [name for name in announced if name is not None][-1:] != [last]:
                since = time.monotonic()
            return time.monotonic() - since >= 1

        announced = self._announced(FOCUS_CHANGED, name, while_doing, is_over)
        return [name for name in announced if name is not None]

    def _announced(self, kind, told, while_doing, is_enough):
        from gi.repository import GLib
        announced = []

        def keep(event):
            announced.append(told(event))

        self._client.Registry.registerEventListener(keep, kind)
        try:
            while_doing()
            context = GLib.MainContext.default()

            def enough():
                context.iteration(False)
                return is_enough(announced)

            wait_until(enough, lambda: f"announcements, {announced} came")
        finally:
            self._client.Registry.deregisterEventListener(keep, kind)
        return announced

    def find(self, role, name):
        return wait_until(lambda: next((shown for shown in self.all(role) if shown.name == name), None),
                          lambda: f"a {role} '{name}' among {self.names(role)}")
