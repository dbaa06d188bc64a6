"""A menu of the main window, opened by mouse and looked at."""

from stage import MAIN
from waiting import wait_until

# Places in an item, from its upper left corner.
ITEM_HEIGHT = 22
CHECK_MARK = (10, 7, 10, 10)  # x, y, width and height

DARK = 30  # no other part of an item's left side is


class Menu:
    """A menu by the place of its title in the main window. Its rows are counted from the last one, which is 1."""

    def __init__(self, display, title_place):
        self._display = display
        self._title_place = title_place
        self._frame = None  # of the open menu

    def open(self):
        self._display.activate(MAIN)
        self._display.click(MAIN, *self._title_place)
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

    def point_at(self, row):
        left, top = self._corner_of(row)
        self._display.xdotool("mousemove", left + 60, top + ITEM_HEIGHT // 2)

    def choose(self, row):
        """Chooses an item by mouse."""
        self.open()
        self.point_at(row)
        self._display.xdotool("click", 1)
        self.wait_until_closed()

    def checked(self, rows):
        """Those of the rows that carry a check mark."""
        self.open()
        checked = [row for row in rows if self._is_checked(row)]
        self.close()
        return checked

    def _is_checked(self, row):
        left, top = self._corner_of(row)
        x, y, width, height = CHECK_MARK
        return min(self._display.picture(left + x, top + y, width, height)) < DARK

    def _corner_of(self, row):
        left, top, _, height = self._frame
        return left, top + height - 1 - ITEM_HEIGHT * row
