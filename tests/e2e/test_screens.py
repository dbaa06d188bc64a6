"""Screens that are plugged in and pulled out while a show runs."""

import os
import shutil
import unittest

import stage
from case import ConsoleTestCase
from console import Console
from display import Display
from stage import BACK, DIMMER, FRONT, MAIN

CONFIGURATION = """
Section "Device"
    Identifier "graphics"
    Driver "dummy"
    VideoRam 65536
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5.0-1000.0
    VertRefresh 5.0-200.0
EndSection
Section "Screen"
    Identifier "screen"
    Device "graphics"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Modes "1280x1024"
        Virtual 2560 1024
    EndSubSection
EndSection
Section "ServerFlags"
    Option "AutoAddDevices" "false"
EndSection
"""
MODE = "1280x1024"
LEFT, RIGHT = "DUMMY0", "DUMMY1"


class TwoScreens(Display):
    """Two screens side by side, each of which can be taken away."""

    def __init__(self, folder):
        super().__init__()
        self._configuration = folder / "xorg.conf"
        self._configuration.write_text(CONFIGURATION)

    def __enter__(self):
        super().__enter__()
        self.run("xrandr", "--addmode", RIGHT, MODE)
        self.turn_on(RIGHT, "--right-of", LEFT)
        return self

    def _server_command(self):
        return ["Xorg", "-config", self._configuration, "-logfile", self._configuration.with_suffix(".log")]

    def turn_off(self, screen):
        self.run("xrandr", "--output", screen, "--off")

    def turn_on(self, screen, *place):
        self.run("xrandr", "--output", screen, "--mode", MODE, *place)


@unittest.skipUnless(os.geteuid() == 0 and shutil.which("Xorg"), "a display server with two screens needs root")
class ScreensTest(ConsoleTestCase):
    def setUp(self):
        super().setUp()
        self.screens = self.enterContext(TwoScreens(self.home.output))

    def press_and_see(self, console, level):
        console.enter(str(level))
        self.wait_for_front({1: level})

    def test_the_show_goes_on_without_the_screen_that_it_stood_on(self):
        with Console(self.screens, self.home, stage.WINDOWS) as console:
            self.screens.move(FRONT, 1500, 300)
            console.select(DIMMER)
            self.screens.turn_off(RIGHT)
            self.press_and_see(console, 9)
            self.screens.turn_off(LEFT)
            self.press_and_see(console, 10)
            self.screens.turn_on(LEFT)
            self.press_and_see(console, 11)
            self.screens.turn_on(RIGHT, "--right-of", LEFT)
            self.press_and_see(console, 12)
            console.quit()

    def test_a_window_of_a_screen_that_is_gone_comes_back_on_the_other(self):
        with Console(self.screens, self.home, stage.WINDOWS) as console:
            self.screens.move(FRONT, 1500, 300)
            console.quit()
        self.screens.turn_off(RIGHT)
        with Console(self.screens, self.home, [MAIN, BACK, FRONT]) as console:
            left, _ = self.screens.place(FRONT)
            self.assertLessEqual(left + self.screens.width(FRONT), 1280)
            console.quit()


if __name__ == "__main__":
    unittest.main()
