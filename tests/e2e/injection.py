"""System calls of a running process that are made to fail or to take long."""

import contextlib
import os
import subprocess
import unittest


@contextlib.contextmanager
def injected(process, call, effect):
    """Every such call of the process has that effect meanwhile, in strace's words: error=EPERM, delay_enter=1s."""
    with subprocess.Popen(["strace", "-f", "-p", str(process.pid), "-o", os.devnull, "-e", f"trace={call}",
                           "-e", f"inject={call}:{effect}"], stderr=subprocess.PIPE, text=True) as strace:
        try:
            while "attached" not in (line := strace.stderr.readline()):
                if not line:
                    raise unittest.SkipTest("strace cannot attach to a program here")
            yield
        finally:
            strace.terminate()
            strace.communicate()
