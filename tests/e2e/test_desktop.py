"""Faderhall as a desktop sees it: installed, and with an icon on every window."""

import subprocess
import unittest
from pathlib import Path

import stage
from case import ConsoleTestCase
from console import BUILD, PROGRAM
from home import read


class InstalledTest(ConsoleTestCase):
    def test_what_is_installed_starts_with_the_tables_installed_beside_it(self):
        prefix = Path(self.home.output) / "installed"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix], check=True, timeout=60,
                       stdout=subprocess.DEVNULL)
        tables = read(prefix / "share" / "faderhall" / "configurations.plist")
        views = tables[tables["_default_configuration"]]["views"]
        titles = [f"{view['name']} Univ: {view['universe']} Addr: {view['address']}" for view in views]
        with self.console([stage.MAIN, *titles], arguments=[], program=prefix / "bin" / PROGRAM.name):
            for universe in {view["universe"] for view in views}:
                self.receiver.wait_for_count(1, universe)


class IconTest(ConsoleTestCase):
    def test_every_window_has_the_icon_of_the_program(self):
        with self.console():
            for title in stage.WINDOWS:
                self.assertEqual(self.display.icon_sizes(title), [(48, 48), (128, 128), (256, 256)], title)


if __name__ == "__main__":
    unittest.main()
