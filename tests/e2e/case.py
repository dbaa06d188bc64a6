"""What the tests of the whole program share."""

import unittest

import stage
from console import Console
from display import Display
from home import Home
from receiver import Receiver


class RigTestCase(unittest.TestCase):
    """A home and a receiver on 127.0.0.1 per test."""

    maxDiff = None

    def setUp(self):
        self.home = self.enterContext(Home(stage.PROFILES, stage.CONFIGURATIONS))
        self.receiver = self.enterContext(self.make_receiver())

    def make_receiver(self):
        return Receiver()

    def wait_for_front(self, slots):
        """Waits for levels of the front spot; what is not named has its default."""
        self.receiver.wait_for_levels(1, {**stage.FRONT_DEFAULTS, **slots})

    def wait_for_back(self, slots):
        self.receiver.wait_for_levels(2, {**stage.BACK_DEFAULTS, **slots})

    def levels_of(self, universe, slot, channels=1):
        """The levels a control went through so far, one after the other."""
        return [level for _, level in self.receiver.course(universe, slot, channels)]


class ConsoleTestCase(RigTestCase):
    """One display per class besides."""

    @classmethod
    def setUpClass(cls):
        cls.display = cls.enterClassContext(Display())

    def console(self, titles=tuple(stage.WINDOWS), **options):
        """A console for a with statement."""
        return Console(self.display, self.home, titles, **options)
