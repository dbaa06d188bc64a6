"""The cues of a console: as they stand in the settings file, and as an operator handles them."""

from display import keys_of
from stage import MAIN
from waiting import wait_until

SHEET = "Enter new cue number"
PLACEHOLDER = "cue data goes here"

COMMANDS = ["Next Cue", "Prev Cue", "Clear", "Clear Timing", "Store Cue", "Delete Cue", "New Cue…"]

# Places in the main window, and in an item of the menu from its upper left corner.
MENU_BAR_SIZE = (420, 18)
MENU_TITLE = (200, 10)  # a point in it, whether it reads "Cues" or names a cue
ITEM_HEIGHT = 22
CHECK_MARK = (10, 7, 10, 10)  # x, y, width and height


def cue(levels):
    """A stored cue, from a control's key to its value or to its value and time."""
    pairs = {key: level if isinstance(level, tuple) else (level, 0.0) for key, level in levels.items()}
    return [{"key": key, "value": value, "time": time} for key, (value, time) in sorted(pairs.items())]


def sorted_records(cues):
    """A cue table with each cue's records in order, since theirs carries no meaning."""
    return {number: records if isinstance(records, str) else sorted(records, key=lambda record: record["key"])
            for number, records in cues.items()}


def new_cue(console, number, end="Return"):
    """Asks for a new cue, from whatever window is in front, and types its number."""
    display = console.display
    display.key("ctrl+n")
    display.wait_for_front(SHEET)
    display.key(*keys_of(number), end)
    wait_until_answered(display)


def wait_until_answered(display):
    wait_until(lambda: SHEET not in display.titles(), "the sheet to go")
    display.settle()


class CueMenu:
    """The cue menu in the main window's menu bar. Its rows are counted from the last one, which is 1."""

    def __init__(self, display):
        self._display = display
        self._frame = None  # of the open menu

    def open(self):
        self._display.activate(MAIN)
        self._display.click(MAIN, *MENU_TITLE)
        self.wait_for_popups(1)
        self._frame = self._display.popup_frame()

    def close(self):
        self._display.key("Escape")
        self.wait_until_closed()

    def wait_until_closed(self):
        self.wait_for_popups(0)
        self._display.settle()

    def wait_for_popups(self, count):
        wait_until(lambda: self._display.popups() == count,
                   lambda: f"{count} menus and tool tips, there are {self._display.popups()}")

    def command(self, title):
        self.open()
        self._display.key(*["Down"] * (COMMANDS.index(title) + 1), "Return")
        self.wait_until_closed()

    def point_at(self, row):
        left, top = self._corner_of(row)
        self._display.xdotool("mousemove", left + 60, top + ITEM_HEIGHT // 2)

    def is_checked(self, row):
        left, top = self._corner_of(row)
        x, y, width, height = CHECK_MARK
        return min(self._display.picture(left + x, top + y, width, height)) < 30

    def _corner_of(self, row):
        left, top, _, height = self._frame
        return left, top + height - 1 - ITEM_HEIGHT * row

    def bar(self):
        """A picture of the menu bar with the menu's title in it."""
        return self._display.picture(*self._display.place(MAIN), *MENU_BAR_SIZE)
