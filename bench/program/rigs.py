"""The rigs that the whole program is measured with: resource tables, settings and window titles."""

import plistlib
from pathlib import Path
from typing import NamedTuple

RESOURCES = Path(__file__).resolve().parents[2] / "resources"

SLOTS = 512
ROWS = 40  # of a window's columns; so many fit on the screen

# Between them, so that with every tick some of the faders change.
SHORTEST_FADE, LONGEST_FADE = 7.0, 8.0

MAIN = "Faderhall"


def shipped(name):
    return plistlib.loads((RESOURCES / f"{name}.plist").read_bytes())


def title(view):
    return f"{view['name']} Univ: {view['universe']} Addr: {view['address']}"


class Rig(NamedTuple):
    """What the program finds when it starts. `settings` is nothing for a first start."""

    profiles: dict
    configurations: dict
    settings: dict
    views: list

    @property
    def titles(self):
        return [MAIN, *(title(view) for view in self.views)]


def default_rig():
    """What a first start brings up."""
    configurations = shipped("configurations")
    views = configurations[configurations["_default_configuration"]]["views"]
    return Rig(shipped("profiles"), configurations, None, views)


def faders(count):
    return [{"name": f"Level {i}", "header": i > 0 and i % ROWS == 0} for i in range(count)]


def rig_of(parts, with_cues=False):
    """A rig of fixtures, each by its universe, start address and number of faders."""
    views = [{"name": f"Fixture {number}", "universe": universe, "address": address, "layer": 1,
              "profiles": [{"profile": f"Faders {count}"}]}
             for number, (universe, address, count) in enumerate(parts)]
    profiles = {f"Faders {count}": faders(count) for _, _, count in parts}
    settings = {"views": views}
    if with_cues:
        settings["cues"] = cues([f"Fixture {number}.Level {i}"
                                 for number, (_, _, count) in enumerate(parts) for i in range(count)])
    return Rig(profiles, {}, settings, views)


def moving_faders(count):
    """A fixture in which every tick changes something: of one fader that moves in finer steps than the others."""
    rig = rig_of([(0, 1, count)], with_cues=True)
    rig.profiles[f"Faders {count}"][0]["channels"] = 2
    rig.settings["cues"]["2"][0]["value"] = 65535
    return rig


def many_fixtures(count, faders_each):
    """So many fixtures, one behind the other, in as many universes as it takes."""
    each = SLOTS // faders_each
    return rig_of([(number // each, 1 + number % each * faders_each, faders_each) for number in range(count)])


def one_universe_fades(seconds):
    """A fixture whose first fader, of 16 bits, goes all the way up with the one cue, and so changes with every tick.

    Another fixture stands in universe 9. There are two profiles to add fixtures of: "Lamp", and "Twin", whose faders
    bear the same name, which the console tells on its standard output.
    """
    rig = rig_of([(0, 1, 24), (9, 1, 4)])
    rig.profiles["Faders 24"][0]["channels"] = 2
    rig.profiles["Lamp"] = faders(8)  # sixty of them fit behind the other
    rig.profiles["Twin"] = [{"name": "Level"}, {"name": "Level"}]
    rig.settings["cues"] = {"1": [{"key": "Fixture 0.Level 0", "value": 65535, "time": float(seconds)}]}
    return rig


def ten_thousand_cues():
    """A fixture of ten 16-bit faders and as many cues as an operator may come to have; all of them take a minute."""
    view = {"name": "F", "universe": 0, "address": 1, "layer": 1, "profiles": [{"profile": "Ten"}]}
    profiles = {"Ten": [{"name": f"L{i}", "channels": 2} for i in range(10)]}
    records = [{"key": f"F.L{i}", "value": 65535, "time": 60.0} for i in range(10)]
    settings = {"views": [view], "cues": {str(number): records for number in range(1, 10001)}}
    return Rig(profiles, {}, settings, [view])


def full_universes(count, **options):
    return rig_of([(universe, 1, SLOTS) for universe in range(count)], **options)


def cues(keys):
    """In the order in which Next Cue goes through them: one fader goes up, then all go up, then all down."""
    def to(level, of):
        step = (LONGEST_FADE - SHORTEST_FADE) / max(1, len(keys) - 1)
        return [{"key": key, "value": level, "time": SHORTEST_FADE + step * i} for i, key in enumerate(of)]

    return {"1": to(255, keys[:1]), "2": to(255, keys), "3": to(0, keys)}
