"""Levels over the pasteboard, which holds a keyed archive under text/plain."""

import plistlib
import subprocess
import unittest

from case import ConsoleTestCase
from stage import BACK_DIMMER, DIMMER, PAN, RED
from waiting import wait_until


def archive(*texts):
    """A keyed archive of an array of texts, as any program that writes such archives makes it."""
    references = [plistlib.UID(2 + index) for index in range(len(texts))]
    array_class = {"$classname": "NSArray", "$classes": ["NSArray", "NSObject"]}
    return plistlib.dumps({
        "$archiver": "NSKeyedArchiver",
        "$version": 100000,
        "$top": {"root": plistlib.UID(1)},
        "$objects": ["$null",
                     {"NS.objects": references, "$class": plistlib.UID(2 + len(texts))},
                     *texts, array_class],
    }, fmt=plistlib.FMT_BINARY)


def unarchived(data):
    """The array of a keyed archive."""
    keyed = plistlib.loads(data, fmt=plistlib.FMT_BINARY)
    objects = keyed["$objects"]
    root = objects[keyed["$top"]["root"].data]
    return [objects[reference.data] for reference in root["NS.objects"]]


class PasteboardTest(ConsoleTestCase):
    def put(self, data):
        """Makes another program own the pasteboard."""
        # It leaves a process behind that holds the pasteboard; with our pipes it would keep us waiting.
        self.display.run("xclip", "-selection", "clipboard", "-t", "text/plain", "-in", input=data,
                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def content(self, target="text/plain"):
        return self.display.run("xclip", "-selection", "clipboard", "-t", target, "-out")

    def test_a_level_goes_from_fader_to_fader(self):
        with self.console() as console:
            console.set(DIMMER, "128")
            self.display.key("ctrl+c")
            console.select(RED)
            self.display.key("ctrl+v")
            self.wait_for_front({1: 128, 8: 128})
            console.select(PAN)
            self.display.key("ctrl+v")
            self.wait_for_front({1: 128, 8: 128, 3: 128})
            console.select(BACK_DIMMER)
            self.display.key("ctrl+v")
            self.wait_for_back({101: 128})

    def test_pasting_moves_at_once_and_ends_an_entry(self):
        with self.console() as console:
            console.set(DIMMER, "50")
            self.display.key("ctrl+c")
            console.select(RED)
            console.enter("30", "s")
            self.display.key("9", "9", "ctrl+v", "Return")
            self.wait_for_front({1: 50, 8: 50})
            self.display.key("Right")
            self.wait_for_front({1: 50, 8: 51})
            self.assertEqual(self.levels_of(1, 8), [0, 50, 51])

    def test_a_copied_level_is_a_keyed_archive_that_other_programs_can_read(self):
        with self.console() as console:
            console.set(PAN, "4660")
            self.wait_for_front({2: 0x12, 3: 0x34})
            self.display.key("ctrl+c")
            self.display.settle()
            data = self.content()
        self.assertEqual(data[:8], b"bplist00")
        self.assertEqual(plistlib.loads(data)["$archiver"], "NSKeyedArchiver")
        self.assertEqual(unarchived(data), ["4660"])

    def test_an_archive_of_another_program_is_pasted(self):
        with self.console() as console:
            self.put(archive("77", "88"))
            console.select(DIMMER)
            self.display.key("ctrl+v")
            self.wait_for_front({1: 77})

    def test_what_is_no_archive_changes_nothing(self):
        with self.console() as console:
            console.set(DIMMER, "50")
            contents = [b"99", b"", archive(), archive("99")[:-5], plistlib.dumps(["99"])]
            for level, content in enumerate(contents, 51):
                self.put(content)
                self.display.key("ctrl+v", "Right")
                self.wait_for_front({1: level})

    def test_a_text_field_keeps_text_on_the_pasteboard_and_a_fader_does_not_take_it(self):
        with self.console() as console:
            console.type_address("127.0.0.9")
            self.display.key("ctrl+a", "ctrl+c")
            wait_until(lambda: self.content("UTF8_STRING") == b"127.0.0.9", "the text on the pasteboard")
            console.set(DIMMER, "5")
            self.wait_for_front({1: 5})
            self.display.key("ctrl+v", "Right")
            self.wait_for_front({1: 6})


if __name__ == "__main__":
    unittest.main()
