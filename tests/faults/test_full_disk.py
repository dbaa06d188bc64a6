#!/usr/bin/env python3
"""Saves onto a small disk at every fill level, in the steps in which it gives out room.

The disk is one in memory, mounted where nobody else sees it; without the right to do so the test is skipped.
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

from saver import SKIPPED, generation_in, save

PAGE = 4096
PAGES = 64


def mount(folder):
    subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={PAGES * PAGE},mode=700", "tmpfs", folder], check=True)


def names(folder):
    return sorted(path.name for path in folder.iterdir() if path.name != "ballast")


def save_at(folder, pages, generations):
    """With so many pages taken by others and so many generations saved before: whether one more is saved."""
    path = folder / "Faderhall.plist"
    for name in folder.iterdir():
        name.unlink()
    for _ in range(generations):
        if not save(path):
            raise AssertionError("An empty disk took no file")
    before = generation_in(path), names(folder)
    try:
        (folder / "ballast").write_bytes(bytes(pages * PAGE))
    except OSError:  # what of it fits stays, and the disk is full
        pass
    if save(path):
        expected = ["Faderhall.plist", "Faderhall.plist.previous"][: min(generations, 1) + 1]
        if generation_in(path) != generations + 1 or names(folder) != expected:
            raise AssertionError(f"{names(folder)}, generation {generation_in(path)}, after a save")
        if generations and generation_in(folder / "Faderhall.plist.previous") != generations:
            raise AssertionError("The generation before was not kept")
        return True
    if (generation_in(path), names(folder)) != before:
        raise AssertionError(f"{names(folder)}, generation {generation_in(path)}, after a save that failed")
    return False


def fill(folder):
    for generations in (0, 1, 2):
        results = [save_at(folder, pages, generations) for pages in range(PAGES + 1)]
        if not results[0] or results[-1]:
            raise AssertionError("Both the empty and the full disk have to be among the levels")
        print(f"{len(results)} fill levels over {generations} generations: {sum(results)} saves, "
              f"{len(results) - sum(results)} refusals, 0 files torn, empty or lost")


def main():
    if "--mounted" not in sys.argv:
        command = ["unshare", "--mount", sys.executable, "-B", __file__, "--mounted"]
        if subprocess.run(["unshare", "--mount", "true"], stderr=subprocess.DEVNULL, check=False).returncode:
            print("Skipped: no mount namespace of its own is to be had here (unshare --mount)")
            sys.exit(SKIPPED)
        os.execvp(command[0], command)
    with tempfile.TemporaryDirectory(prefix="faderhall-full-") as folder:
        mount(folder)
        try:
            fill(Path(folder))
        finally:
            subprocess.run(["umount", folder], check=True)


if __name__ == "__main__":
    main()
