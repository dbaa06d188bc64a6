"""What is as it was after the program has ended and started again."""

import signal
import unittest

import stage
from case import ConsoleTestCase
from console import UNIVERSE_CELL
from home import write
from receiver import Receiver
from stage import BACK, BACK_DIMMER, DIMMER, FRONT, MAIN, PAN, RED, SHUTTER

TRUSS = "Truss Univ: 5 Addr: 1"


class EndTest(ConsoleTestCase):
    def assert_everything_is_saved(self, end):
        with self.console() as console:
            console.set(SHUTTER, "5")
            console.set(DIMMER, "128")
            self.wait_for_front({1: 128, 7: 5})
            end(console)
        self.assertEqual(self.home.settings, stage.STAGE)
        defaults = self.home.defaults
        self.assertEqual(sorted(defaults["saved_state: Stage"], key=lambda record: record["key"]),
                         [{"key": "Front.Dimmer", "value": 128, "time": 0},
                          {"key": "Front.Shutter", "value": 5, "time": 0}])
        self.assertEqual(defaults["control_selections"], ["Front.Dimmer", ""])
        self.assertEqual(defaults["configName"], "Stage")

    def test_ctrl_q_saves_everything(self):
        self.assert_everything_is_saved(lambda console: console.quit())

    def test_closing_the_main_window_saves_everything(self):
        self.assert_everything_is_saved(lambda console: console.close())

    def test_signals_save_everything(self):
        for number in [signal.SIGTERM, signal.SIGINT, signal.SIGHUP]:
            with self.subTest(number):
                self.assert_everything_is_saved(lambda console, number=number: console.terminate(number))
            self.home.settings_file.unlink()
            self.home.defaults_file.unlink()

    def test_a_fixture_window_cannot_be_closed(self):
        with self.console() as console:
            self.display.activate(BACK)
            self.display.key("alt+F4")
            self.display.settle()
            self.assertEqual(self.display.shown_titles(), sorted(stage.WINDOWS))
            console.set(BACK_DIMMER, "8")
            self.wait_for_back({101: 8})

    def test_quits_while_a_cell_of_the_table_is_edited(self):
        with self.console() as console:
            self.display.activate(MAIN)
            self.display.double_click(MAIN, *UNIVERSE_CELL)
            self.display.type("9")
            self.display.settle()
            console.quit()

    def test_quits_with_a_fade_running_and_a_number_half_typed(self):
        with self.console() as console:
            console.select(PAN)
            console.enter("60", "s")
            console.enter("60000")
            console.select(RED)
            self.display.type("12")
            self.display.settle()
            console.quit()
        record, = self.home.defaults["saved_state: Stage"]
        self.assertEqual((record["key"], record["time"]), ("Front.Pan", 0))
        self.assertLess(record["value"], 60000)


class RestartTest(ConsoleTestCase):
    def test_levels_are_back_without_a_fade_in_the_first_datagram(self):
        with self.console() as console:
            console.select(PAN)
            console.enter("0.3", "s")
            console.enter("4660")
            console.set(SHUTTER, "0")
            console.set(BACK_DIMMER, "77")
            self.receiver.wait_for_levels(1, {2: 0x12, 3: 0x34})
            self.wait_for_back({101: 77})
        self.receiver.forget()
        with self.console([MAIN, FRONT, BACK]) as console:
            self.assertEqual(self.receiver.wait_for_count(1, universe=1)[0].sequence, 2)
            self.receiver.wait_for_levels(1, {2: 0x12, 3: 0x34})
            self.wait_for_back({101: 77})
            self.assertEqual(self.levels_of(1, 2, channels=2), [0x1234])
            console.set(PAN, "0")  # at once, because fade times are not saved
            self.receiver.wait_for_levels(1, {})
            self.assertEqual(self.levels_of(1, 2, channels=2), [0x1234, 0])

    def test_the_selected_faders_and_the_window_in_front_are_back(self):
        with self.console() as console:
            console.select(BACK_DIMMER)
            console.select(RED)
        with self.console([MAIN, BACK, FRONT]) as console:
            console.enter("9")
            self.wait_for_front({8: 9})
            self.display.activate(BACK)
            console.enter("10")
            self.wait_for_back({101: 10})

    def test_the_main_window_in_front_is_back(self):
        with self.console():
            self.display.activate(MAIN)
        with self.console([FRONT, BACK, MAIN]):
            pass

    def test_the_address_is_back(self):
        other = self.enterContext(Receiver("127.0.0.2"))
        with self.console() as console:
            console.type_address("127.0.0.2")
            self.display.key("Return")
            other.wait_for_count(1)
        self.receiver.forget()
        other.forget()
        with self.console([FRONT, BACK, MAIN]):
            other.wait_for_count(2)
            self.assertEqual(self.receiver.datagrams(), [])

    def test_windows_stay_where_they_were_put_over_three_restarts(self):
        with self.console():
            self.display.move(FRONT, 150, 100)
            self.display.move(BACK, 700, 650)
            self.display.move(MAIN, 333, 222)
            places = self.places()
        self.assertEqual(places, {FRONT: (150, 100), BACK: (700, 650), MAIN: (333, 222)})
        for _ in range(3):
            with self.console([FRONT, BACK, MAIN]):
                self.assertEqual(self.places(), places)

    def places(self):
        return {title: self.display.place(title) for title in stage.WINDOWS}

    def test_a_window_that_stood_beyond_the_screen_comes_back_onto_it(self):
        write(self.home.defaults_file, {"faderhall_window_0": [5000, 4000], "faderhall_window_1": [-900, -900]})
        with self.console():
            for title in [FRONT, BACK]:
                x, y = self.display.place(title)
                self.assertTrue(0 <= x <= 1280 - 300 and 0 <= y <= 900 - 76, f"{title} at {x}, {y}")

    def test_the_configuration_is_back_by_its_name(self):
        write(self.home.defaults_file, {"configName": "Tour", "saved_state: Tour": [
            {"key": "Truss.Green", "value": 3, "time": 0}]})
        write(self.home.settings_file, stage.TOUR)
        for _ in range(2):
            self.receiver.forget()
            with self.console([MAIN, TRUSS]):
                self.receiver.wait_for_levels(5, {7: 32, 9: 3})
        self.assertEqual(self.home.settings, stage.TOUR)
        self.assertEqual(self.home.defaults["configName"], "Tour")

    def test_without_a_settings_file_the_default_configuration_wins(self):
        write(self.home.defaults_file, {"configName": "Tour", "saved_state: Stage": [
            {"key": "Front.Red", "value": 8, "time": 0}]})
        with self.console():
            self.wait_for_front({8: 8})
        self.assertEqual(self.home.defaults["configName"], "Stage")

    def test_what_nobody_knows_is_kept_in_both_files(self):
        rig = {**stage.STAGE, "notes": {"colour": b"\x00\x01", "price": 2.5, "open": True, "list": [1, "2"]}}
        write(self.home.settings_file, rig)
        write(self.home.defaults_file, {"configName": "Stage", "theme": {"dark": False, "size": 12}})
        with self.console():
            self.wait_for_front({})
        self.assertEqual(self.home.settings, rig)
        self.assertEqual(self.home.defaults["theme"], {"dark": False, "size": 12})
        self.assertIs(self.home.settings["notes"]["open"], True)


if __name__ == "__main__":
    unittest.main()
