"""The daemon of the Open Lighting Architecture as a receiver that others have written."""

import json
import os
import shutil
import socket
import subprocess
import tempfile
from contextlib import ExitStack
from http.client import HTTPConnection
from pathlib import Path

from display import running
from receiver import LevelReader
from waiting import wait_until

# It refuses to run as root; its package brings a user for it.
USER = "olad"

START_SECONDS = 60

OTHER_PLUGINS = ["dummy", "e131", "espnet", "ftdidmx", "gpio", "karate", "kinet", "milinst", "opendmx",
                 "openpixelcontrol", "osc", "pathport", "renard", "sandnet", "shownet", "spi", "stageprofi",
                 "uartdmx", "usbdmx", "usbserial"]

ARTNET = """\
enabled = true
ip = 127.0.0.1
use_loopback = true
"""


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Ola(LevelReader):
    """Takes Art-Net's port; tells the levels of the universes that it was made for.

    `configuration` is a folder of configuration files to use in place of one that only receives.
    """

    def __init__(self, *universes, configuration=None):
        self._universes = universes
        self._configuration = configuration

    def __enter__(self):
        with ExitStack() as stack:
            folder = Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="faderhall-ola-")))
            self._configure(folder)
            self._port = free_port()
            stack.enter_context(running(self._command(folder)))
            wait_until(self._is_ready, "an answer of olad", START_SECONDS)
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *exception):
        return self._stack.__exit__(*exception)

    def _configure(self, folder):
        for plugin in OTHER_PLUGINS:
            (folder / f"ola-{plugin}.conf").write_text("enabled = false\n")
        if self._configuration:
            shutil.copytree(self._configuration, folder, dirs_exist_ok=True)
        else:
            self._configure_to_receive(folder)

    def _configure_to_receive(self, folder):
        (folder / "ola-artnet.conf").write_text(ARTNET)
        # Each universe on an input port of the Art-Net device.
        (folder / "ola-port.conf").write_text(
            "".join(f"2-1-I-{port} = {universe}\n" for port, universe in enumerate(self._universes)))

    def _command(self, folder):
        command = ["olad", "--config-dir", folder, "--http-port", str(self._port), "--rpc-port", str(free_port()),
                   "--interface", "127.0.0.1", "--no-register-with-dns-sd"]
        if os.geteuid() != 0:
            return command
        subprocess.run(["chown", "--recursive", USER, folder], check=True)
        return ["setpriv", f"--reuid={USER}", "--regid=nogroup", "--clear-groups", *command]

    def _is_ready(self):
        return all(self._ask(universe)["error"] == "" for universe in self._universes)

    def _ask(self, universe):
        connection = HTTPConnection("127.0.0.1", self._port, timeout=30)
        try:
            connection.request("GET", f"/get_dmx?u={universe}")
            return json.loads(connection.getresponse().read())
        except OSError as error:  # while the daemon starts
            return {"dmx": [], "error": str(error)}
        finally:
            connection.close()

    def slots(self, universe):
        return bytes(self._ask(universe)["dmx"]) or None
