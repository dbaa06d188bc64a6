"""The cues of a console: as they stand in the settings file, and as an operator handles them."""

from display import keys_of
from menu import Menu
from stage import MAIN
from waiting import wait_until

SHEET = "Enter new cue number"
PLACEHOLDER = "cue data goes here"

COMMANDS = ["Next Cue", "Prev Cue", "Clear", "Clear Timing", "Store Cue", "Delete Cue", "New Cue…"]

MENU_BAR_SIZE = (420, 18)


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


class CueMenu(Menu):
    """The menu of the cues, whatever its title reads."""

    def __init__(self, display):
        super().__init__(display, (263, 10))

    def command(self, title):
        """Chooses a command by keys."""
        self.open()
        self._display.key(*["Down"] * (COMMANDS.index(title) + 1), "Return")
        self.wait_until_closed()

    def bar(self):
        """A picture of the menu bar with the menu's title in it."""
        return self._display.picture(*self._display.place(MAIN), *MENU_BAR_SIZE)
