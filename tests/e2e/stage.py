"""The rig of these tests: two spots on universes of their own, and the ways to their faders."""

from console import Fader

PROFILES = {
    # Slots from the start address: 1 Dimmer, 2 and 3 Pan, 4 to 6 unused, 7 Shutter, 8 Red, 9 Green.
    "Spot": [
        {"label": "Spot"},
        {"name": "Dimmer"},
        {"name": "Pan", "channels": 2},
        {"blank": 3},
        {"name": "Shutter", "default": 32},
        {"name": "Red", "header": True},
        {"name": "Green"},
    ],
}


def placement(name, universe, address, profile="Spot"):
    return {"name": name, "universe": universe, "address": address, "layer": 1,
            "profiles": [{"profile": profile}]}


STAGE = {"views": [placement("Front", 1, 1), placement("Back", 2, 101)]}
TOUR = {"views": [placement("Truss", 5, 1)]}

CONFIGURATIONS = {"_default_configuration": "Stage", "Stage": STAGE, "Tour": TOUR}

MAIN = "Faderhall"
FRONT = "Front Univ: 1 Addr: 1"
BACK = "Back Univ: 2 Addr: 101"
WINDOWS = [MAIN, FRONT, BACK]

SPOT_LABEL = Fader(FRONT, 0, 0)
DIMMER = Fader(FRONT, 0, 1)
PAN = Fader(FRONT, 0, 2)
SHUTTER = Fader(FRONT, 0, 3)
RED = Fader(FRONT, 1, 0)
GREEN = Fader(FRONT, 1, 1)
BACK_DIMMER = Fader(BACK, 0, 1)

# What the two universes hold while nobody has changed anything.
FRONT_DEFAULTS = {7: 32}
BACK_DEFAULTS = {107: 32}
