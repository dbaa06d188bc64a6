"""Waiting for something to come true, never for a length of time."""

import time

DEADLINE = 15.0
POLL = 0.01


def wait_until(condition, what, seconds=DEADLINE):
    """Returns the first true result of `condition`; fails after `seconds`.

    `what` tells what was waited for: a text, or a function that makes one when the wait has failed.
    """
    deadline = time.monotonic() + seconds
    while not (result := condition()):
        if time.monotonic() > deadline:
            raise AssertionError(f"Not within {seconds:g} s: {what() if callable(what) else what}")
        time.sleep(POLL)
    return result
