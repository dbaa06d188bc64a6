"""A display without a screen, with a window manager, and the hands and eyes of an operator in front of it."""

import os
import re
import select
import signal
import subprocess
from contextlib import ExitStack, contextmanager

from waiting import wait_until

SCREEN = "1280x900x24"

# The keys behind the characters that are typed; letters and digits are their own names.
KEY_NAMES = {".": "period", "=": "equal", "-": "minus", "+": "plus", " ": "space", ",": "comma", "/": "slash",
             "_": "underscore"}


def keys_of(text):
    """The names of the keys that type a text."""
    return [KEY_NAMES.get(character, character) for character in text]


@contextmanager
def running(command, **options):
    """A process that ends with the block."""
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, **options)
    try:
        yield process
    finally:
        process.terminate()
        process.wait(10)


class Display:
    """An Xvfb of its own with openbox; windows are named by their titles.

    Coordinates are those of a window's content, from its upper left corner.
    """

    def __init__(self, window_manager=True, screen=SCREEN):
        self._has_window_manager = window_manager
        self._screen = screen

    def __enter__(self):
        with ExitStack() as stack:
            self.name = self._start_server(stack)
            self._environment = {**os.environ, "DISPLAY": self.name}
            if self._has_window_manager:
                self._start_window_manager(stack)
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *exception):
        return self._stack.__exit__(*exception)

    def kill(self):
        """Ends the display server under its programs."""
        self._server.kill()

    @contextmanager
    def stopped(self):
        """The display server answers nobody within the block."""
        self._server.send_signal(signal.SIGSTOP)
        try:
            yield
        finally:
            self._server.send_signal(signal.SIGCONT)

    @contextmanager
    def hung_owner(self, selection="clipboard"):
        """Within the block a program owns the selection and answers nobody who asks for it."""
        owner = subprocess.Popen(["xclip", "-quiet", "-selection", selection, "-t", "text/plain", "-in"],
                                 env=self._environment, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL)
        try:
            owner.stdin.write(b"9")
            owner.stdin.close()
            wait_until(lambda: self._is_owned(selection), f"an owner of the {selection}")
            owner.send_signal(signal.SIGSTOP)
            yield
        finally:
            owner.kill()
            owner.wait()

    def _is_owned(self, selection):
        answer = subprocess.run(["xclip", "-selection", selection, "-t", "TARGETS", "-out"], env=self._environment,
                                capture_output=True, check=False, timeout=30)
        return b"text/plain" in answer.stdout

    def _start_window_manager(self, stack):
        # It overlooks windows that open before it has come to its startup command.
        stack.enter_context(running(["openbox", "--startup", "xprop -root -f READY 8s -set READY yes"],
                                    env=self._environment))
        wait_until(lambda: "yes" in self._root_property("READY"), "the window manager")

    def _server_command(self):
        return ["Xvfb", "-screen", "0", self._screen]

    def _start_server(self, stack):
        reading, writing = os.pipe()
        try:
            self._server = stack.enter_context(running(
                [*self._server_command(), "-displayfd", str(writing), "-nolisten", "tcp", "-noreset"],
                pass_fds=[writing]))
        finally:
            os.close(writing)
        with open(reading, "rb", buffering=0) as answer:
            number = b""
            while not number.endswith(b"\n"):
                wait_until(lambda: select.select([answer], [], [], 0)[0], "an answer of the display server")
                if not (part := answer.read(16)):
                    raise AssertionError("the display server has ended")
                number += part
        return ":" + number.decode().strip()

    def run(self, *command, **options):
        """Runs a command on this display and returns its standard output."""
        options = {"stdout": subprocess.PIPE, **options}
        return subprocess.run(command, env=self._environment, check=True, timeout=30, **options).stdout

    def _root_property(self, name):
        return self.run("xprop", "-root", name).decode()

    # --- Windows ---------------------------------------------------------------------------------------

    def windows(self):
        """The titles of all windows by their identifiers."""
        return {window: self._title(window) for window in self._identifiers()}

    def _identifiers(self):
        return re.findall(r"0x[0-9a-f]+", self._root_property("_NET_CLIENT_LIST"))

    def _title(self, window):
        quoted = re.search(r'"(.*)"', self._window_property(window, "_NET_WM_NAME"))
        return quoted[1] if quoted else ""

    def _window_property(self, window, name):
        # A window may go between being listed and being asked.
        return self._search("xprop", "-id", window, "-notype", name)

    def _search(self, *command):
        """The standard output of a command that fails when it finds nothing."""
        return subprocess.run(command, env=self._environment, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True, check=False, timeout=30).stdout

    def titles(self):
        return sorted(self.windows().values())

    def window(self, title):
        """The identifier of the window of that title, once there is one."""
        return wait_until(
            lambda: next((window for window, known in self.windows().items() if known == title), None),
            lambda: f"a window '{title}' among {self.titles()}")

    def title_in_front(self):
        active = re.search(r"0x[0-9a-f]+", self._root_property("_NET_ACTIVE_WINDOW"))
        return self._title(active[0]) if active and int(active[0], 16) else ""

    def wait_for_front(self, title):
        wait_until(lambda: self.title_in_front() == title,
                   lambda: f"'{title}' in front, where '{self.title_in_front()}' stands")

    def activate(self, title):
        """Brings a window to the front and waits until it has the keys."""
        self.xdotool("windowactivate", self.window(title))
        self.wait_for_front(title)

    def popups(self):
        """How many windows the program shows that are not the window manager's: open menus."""
        return len(self._popups())

    def _popups(self):
        # The window manager puts a frame around its windows; what it leaves alone stands on the screen itself.
        return self._shown("--maxdepth", "1")

    def popup_frame(self):
        """The place and size of the one menu that is open, as x, y, width and height on the screen."""
        popup, = self._popups()
        geometry = self.run("xdotool", "getwindowgeometry", "--shell", str(popup)).decode()
        values = dict(line.split("=") for line in geometry.split())
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def shown_titles(self):
        """The titles of the windows that are on the screen."""
        shown = self._shown()
        return sorted(title for window, title in self.windows().items() if int(window, 16) in shown)

    def _shown(self, *restrictions):
        found = self._search("xdotool", "search", *restrictions, "--onlyvisible", "--class", "^faderhall$")
        return {int(window) for window in found.split()}

    @contextmanager
    def menu(self, title, key):
        """Opens a menu of a window by its key and closes it with Escape."""
        self.activate(title)
        self.key(key)
        with self._menu_open():
            yield

    @contextmanager
    def menu_at(self, title, x, y):
        """The same by a click."""
        self.activate(title)
        self.click(title, x, y)
        with self._menu_open():
            yield

    @contextmanager
    def _menu_open(self):
        wait_until(self.popups, "a menu")
        yield
        while count := self.popups():
            self.key("Escape")
            wait_until(lambda: self.popups() < count, "a menu to close")

    def place(self, title):
        """Where a window's content stands on the screen, as x and y."""
        return self._geometry(title, "Absolute upper-left X", "Absolute upper-left Y")

    def width(self, title):
        width, = self._geometry(title, "Width")
        return width

    def _geometry(self, title, *names):
        geometry = self.run("xwininfo", "-id", self.window(title)).decode()
        return tuple(int(re.search(rf"{name}:\s+(-?\d+)", geometry)[1]) for name in names)

    def settle(self):
        """Waits until the program and the window manager have dealt with all that happened so far."""
        # The program notes on its window when it was last given a key; this one means nothing to it.
        before = self._times_of_use()
        self.key("Shift_L")
        wait_until(lambda: self._times_of_use() != before, "the program to take a key")
        self._wait_for_window_manager()

    def _wait_for_window_manager(self):
        # It answers one request after the other.
        desktops = self._desktops()
        self.xdotool("set_num_desktops", desktops + 1)
        wait_until(lambda: self._desktops() == desktops + 1, "the window manager to answer")

    def _times_of_use(self):
        return {window: self._window_property(window, "_NET_WM_USER_TIME") for window in self._identifiers()}

    def _desktops(self):
        return int(self._root_property("_NET_NUMBER_OF_DESKTOPS").split()[-1])

    def icon_sizes(self, title):
        """The sizes in which a window has its icon, as width and height."""
        shown = self.run("xprop", "-len", "1000000", "-id", self.window(title), "_NET_WM_ICON").decode()
        return [(int(width), int(height)) for width, height in re.findall(r"Icon \((\d+) x (\d+)\)", shown)]

    # --- Hands -----------------------------------------------------------------------------------------

    def xdotool(self, *arguments):
        self.run("xdotool", *map(str, arguments))

    def key(self, *names):
        """Presses keys one after the other; "ctrl+c" is a chord, a number above 9 a key code."""
        self.xdotool("key", "--delay", 5, *names)

    def type(self, text):
        self.key(*keys_of(text))

    @contextmanager
    def held(self, key):
        """Holds a key down."""
        self.xdotool("keydown", key)
        try:
            yield
        finally:
            self.xdotool("keyup", key)

    @contextmanager
    def pressed(self, button=1):
        """Holds a button of the mouse down."""
        self.xdotool("mousedown", button)
        try:
            yield
        finally:
            self.xdotool("mouseup", button)

    def point(self, title, x, y):
        self.xdotool("mousemove", "--window", self.window(title), "--", x, y)

    def click(self, title, x, y):
        """Clicks and waits until the program has taken it.

        The window manager holds a click back until it has looked at it; keys would overtake it.
        """
        self.point(title, x, y)
        self.settle()
        before = self._times_of_use()
        self.xdotool("click", 1)
        wait_until(lambda: self._times_of_use() != before, f"the program to take a click on '{title}'")

    def double_click(self, title, x, y):
        self.point(title, x, y)
        self.settle()
        self.xdotool("click", "--repeat", 2, "--delay", 20, 1)
        # The second click reaches the window manager when it has let go of the first.
        for _ in range(2):
            self._wait_for_window_manager()

    def turn_wheel(self, title, x, y, notches):
        """Turns the wheel up by so many notches, or down by a negative number."""
        self.point(title, x, y)
        self.xdotool("click", "--repeat", abs(notches), "--delay", 20, 4 if notches > 0 else 5)

    def drag(self, title, start, *stations, button=1):
        """Presses the button at one point and releases it at the last of the others."""
        self.point(title, *start)
        with self.pressed(button):
            for station in stations:
                self.point(title, *station)

    def move(self, title, x, y):
        """Takes a window by its title bar and puts it where its content is at that place."""
        self.activate(title)
        left, top = self.place(title)
        across, up = 40, 10  # where the title bar is taken
        self.xdotool("mousemove", left + across, top - up)
        with self.pressed():
            # The first step beyond a few pixels only tells the window manager that this is no click.
            self.xdotool("mousemove", left + across + 20, top - up + 20)
            self.xdotool("mousemove", x + across, y - up)
        wait_until(lambda: self.place(title) == (x, y),
                   lambda: f"'{title}' at {x}, {y}, where {self.place(title)} is its place")

    # --- Eyes ------------------------------------------------------------------------------------------

    def colour(self, title, x, y):
        """The colour of one pixel of a window as the screen shows it, as red, green and blue."""
        return tuple(self.run("import", "-silent", "-window", self.window(title), "-crop", f"1x1+{x}+{y}",
                              "-depth", "8", "rgb:-"))

    def picture(self, left, top, width, height):
        """A part of the screen as bytes, three for each pixel: red, green and blue."""
        return self.run("import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}",
                        "-depth", "8", "rgb:-")

    def wait_for_colour(self, place, expected):
        """Waits until a pixel, by its window's title, x and y, has a colour or fulfils a condition."""
        matches = expected if callable(expected) else lambda colour: colour == expected
        wait_until(lambda: matches(self.colour(*place)),
                   lambda: f"a colour at {place}, which is {self.colour(*place)}")

    def clipboard(self):
        """The text on the pasteboard."""
        return self.run("xclip", "-selection", "clipboard", "-out").decode()

    def screenshot(self, path):
        self.run("import", "-silent", "-window", "root", path)
