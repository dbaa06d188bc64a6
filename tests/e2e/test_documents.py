"""What the documents tell is so: the worked examples, and the first evening step by step."""

import plistlib
import re
import shutil
import socket
import unittest
from pathlib import Path

from case import ConsoleTestCase
from console import Fader
from home import Home
from ola import Ola
from waiting import wait_until

ROOT = Path(__file__).resolve().parent.parent.parent
DOCUMENTS = ROOT / "docs"
EXAMPLES = DOCUMENTS / "examples"
SPOT = "Spot Univ: 1 Addr: 1"
BAR = "Bar Univ: 1 Addr: 101"
HALL = "Hall Univ: 2 Addr: 1"

FRONT = "Front Univ: 0 Addr: 1"
PAR = "Par 1 Univ: 0 Addr: 11"
HEAD = "Head 1 Univ: 1 Addr: 1"
SMALL_STAGE = ["Faderhall", FRONT, PAR, "Par 2 Univ: 0 Addr: 16", "Par 3 Univ: 0 Addr: 21", "Par 4 Univ: 0 Addr: 26",
               HEAD, "Head 2 Univ: 1 Addr: 21", "Bar Univ: 1 Addr: 101"]


def without_blanks(text):
    return "".join(text.split())


def anchors(page):
    """What the headings of a page are linked by."""
    headings = re.findall(r"^#+ (.*)$", page, re.MULTILINE)
    return {re.sub(r"[^\w -]", "", heading).lower().replace(" ", "-") for heading in headings}


class ExamplesOnThePageTest(unittest.TestCase):
    def test_they_stand_in_the_files_that_are_tried(self):
        files = without_blanks("".join(path.read_text() for path in EXAMPLES.glob("*.plist")))
        excerpts = re.findall(r"^```xml\n(.*?)^```", (DOCUMENTS / "rigs.md").read_text(), re.MULTILINE | re.DOTALL)
        self.assertEqual(len(excerpts), 6)
        for excerpt in excerpts:
            self.assertIn(without_blanks(excerpt), files)

    def test_links_between_documents_lead_somewhere(self):
        for document in [*DOCUMENTS.glob("*.md"), *ROOT.glob("*.md")]:
            for link in re.findall(r"\]\(([^)#]+)(?:#[^)]*)?\)", document.read_text()):
                if not link.startswith("http"):
                    with self.subTest(document=document.name, link=link):
                        self.assertTrue((document.parent / link).exists())

    def test_links_into_documents_lead_to_a_heading(self):
        for document in [*DOCUMENTS.glob("*.md"), *ROOT.glob("*.md")]:
            for link, heading in re.findall(r"\]\(([^)#]*)#([^)]*)\)", document.read_text()):
                target = document.parent / link if link else document
                with self.subTest(document=document.name, link=link, heading=heading):
                    self.assertIn(heading, anchors(target.read_text()))


class ExampleTablesTest(ConsoleTestCase):
    def test_profiles_and_configurations_make_the_rig_that_is_told(self):
        with self.console(["Faderhall", SPOT, BAR], arguments=["--resources", EXAMPLES]) as console:
            spot = {1: 128, 3: 128, 8: 255}
            self.receiver.wait_for_levels(1, spot)
            console.set(Fader(SPOT, 0, 1), "258")  # Pan, below the label
            console.set(Fader(SPOT, 1, 2), "9")  # Level, in the second column
            console.set(Fader(BAR, 0, 1), "10")  # Red of the first pixel
            console.set(Fader(BAR, 0, 7), "60")  # Blue of the second
            self.receiver.wait_for_levels(1, {**spot, 1: 1, 2: 2, 9: 9, 101: 10, 106: 60})
            console.enter("2", "s")
        keys = {record["key"] for record in self.home.defaults["saved_state: Club"]}
        self.assertEqual(keys, {"Spot.Pan", "Spot.Level", "Bar.Pixel 1.Red", "Bar.Pixel 2.Blue"})

    def test_settings_bring_profiles_and_cues_of_their_own(self):
        self.home.settings_file.parent.mkdir(parents=True)
        shutil.copy(EXAMPLES / "Faderhall.plist", self.home.settings_file)
        with self.console(["Faderhall", HALL], arguments=["--resources", EXAMPLES]):
            self.receiver.wait_for_levels(2, {})
            self.display.key("ctrl+a")
            self.receiver.wait_for_levels(2, {1: 200, 2: 40})
        self.assertGreater(len(self.levels_of(2, 2)), 10)


class OscReceiver:
    """Takes what is sent to one address as OSC: the 512 levels in a blob."""

    PORT = 7771
    SLOT_COUNT = 512

    def __init__(self, address):
        self._address = address

    def __enter__(self):
        self._socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self._socket.bind((self._address, self.PORT))
        self._socket.setblocking(False)
        self._levels = {}
        return self

    def __exit__(self, *_):
        self._socket.close()

    def slots(self, name, *numbers):
        """What the slots of a universe stand at, by what came so far; nothing before anything came."""
        while (packet := self._next()) is not None:
            self._levels[packet[: packet.index(0)].decode()] = packet[-self.SLOT_COUNT:]
        known = self._levels.get(name)
        return known and [known[number - 1] for number in numbers]

    def _next(self):
        try:
            return self._socket.recv(2048)
        except BlockingIOError:
            return None


class OlaGatewayTest(ConsoleTestCase):
    """docs/network.md: what olad does with the configuration that is printed there."""

    CONFIGURATION = DOCUMENTS / "ola"

    def setUp(self):
        super().setUp()
        self.targets = [self.enterContext(OscReceiver(address)) for address in ("127.0.0.1", "127.0.0.2")]

    def make_receiver(self):
        return Ola(0, 1, configuration=self.CONFIGURATION)

    def wait_for(self, target, name, slot, level):
        wait_until(lambda: self.targets[target].slots(name, slot) == [level], f"{name} at {level}")

    def test_the_files_are_those_on_the_page(self):
        page = (DOCUMENTS / "network.md").read_text()
        files = sorted(self.CONFIGURATION.iterdir())
        self.assertEqual([file.name for file in files], ["ola-artnet.conf", "ola-osc.conf", "ola-port.conf"])
        for file in files:
            self.assertIn(f"```\n{file.read_text()}```", page)

    def test_it_hands_levels_on_to_every_target(self):
        resources = ROOT / "resources"
        with self.console(SMALL_STAGE, arguments=["--resources", resources]) as console:
            console.set(Fader(FRONT, 0, 0), "120")
            self.wait_for(0, "/stage/0", 1, 120)
            self.wait_for(1, "/stage/0", 1, 120)
            console.set(Fader(HEAD, 0, 5), "77")
            self.wait_for(0, "/stage/1", 6, 77)
        self.assertIsNone(self.targets[1].slots("/stage/1", 6))


class FirstEveningTest(ConsoleTestCase):
    """docs/operator.md, step by step, with the tables that come with the program."""

    def setUp(self):
        super().setUp()
        tables = [plistlib.loads((ROOT / "resources" / f"{name}.plist").read_bytes())
                  for name in ("profiles", "configurations")]
        self.home = self.enterContext(Home(*tables))

    def wait_for_stage(self, slots):
        self.receiver.wait_for_levels(0, slots)

    def bring_forward(self, key, title):
        self.display.key(key)
        self.display.wait_for_front(title)

    def make_cue(self, number):
        front = self.display.title_in_front()
        self.display.key("ctrl+n")
        self.display.wait_for_front("Enter new cue number")
        self.display.type(number)
        self.display.key("Return")
        self.display.wait_for_front(front)
        self.display.settle()
        self.display.key("ctrl+w")

    def test_from_the_first_start_to_a_run_of_cues(self):
        with self.console(SMALL_STAGE) as console:
            self.bring_forward("ctrl+1", FRONT)
            self.display.click(FRONT, *Fader(FRONT, 0, 0).point())
            console.enter("120")
            self.display.key("Down")
            console.enter("90")
            first = {1: 120, 2: 90}
            self.wait_for_stage(first)
            self.make_cue("1")

            self.bring_forward("ctrl+2", PAR)
            self.display.click(PAR, *Fader(PAR, 0, 0).point())
            console.enter("3", "s")
            console.enter("255")
            self.wait_for_stage({**first, 11: 255})
            self.display.key("Down")
            console.enter("255")
            second = {**first, 11: 255, 12: 255}
            self.wait_for_stage(second)
            self.make_cue("2")

            self.display.key("ctrl+r")
            self.wait_for_stage(first)
            self.receiver.forget()
            self.display.key("ctrl+a")
            self.wait_for_stage(second)
            self.assertGreater(len(self.levels_of(0, 11)), 30)
            self.display.key("ctrl+a")
            self.wait_for_stage(first)

            self.bring_forward("ctrl+0", "Faderhall")
            console.quit()
        self.assertEqual(set(self.home.settings["cues"]), {"1", "2"})


if __name__ == "__main__":
    unittest.main()
