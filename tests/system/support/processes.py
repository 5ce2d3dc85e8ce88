# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Programs under test, with everything that they print."""

import os
import signal
import subprocess
import threading
import time
from pathlib import Path

from .waiting import PATIENCE, TimeIsUp, wait_until

SOURCE_FOLDER = Path(__file__).resolve().parents[3]
BUILD_FOLDER = Path(os.environ.get("VELTO_BUILD_DIR", SOURCE_FOLDER / "build/dev")).resolve()
VELTO = BUILD_FOLDER / "bin/velto"
VELTO_LOCAL = BUILD_FOLDER / "local/velto-local"


class Program:
    """A running program. `lines` holds (seconds since the start, text), both streams together."""

    def __init__(self, name, command, environment):
        self.name = name
        self.lines = []
        self.started = time.monotonic()
        self.process = subprocess.Popen(
            [str(word) for word in command], env=environment, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.reader = threading.Thread(target=self._read, daemon=True)
        self.reader.start()

    def _read(self):
        for line in self.process.stdout:
            text = line.decode("utf-8", "replace").rstrip("\n")
            self.lines.append((time.monotonic() - self.started, text))

    @property
    def pid(self):
        return self.process.pid

    @property
    def output(self):
        return "\n".join(text for _, text in list(self.lines))

    @property
    def log(self):
        return "".join(f"{at:8.3f} {text}\n" for at, text in list(self.lines))

    def count(self, text):
        return sum(text in line for _, line in list(self.lines))

    def wait_for_line(self, text, times=1, seconds=PATIENCE):
        """Waits until lines with this text have come so often."""
        wait_until(lambda: self.count(text) >= times,
                   lambda: f"{times} x {text!r} from {self.name}, which printed:\n{self.log}",
                   seconds)

    def running(self):
        return self.process.poll() is None

    def signal(self, number):
        self.process.send_signal(number)

    def wait(self, seconds=PATIENCE):
        """The exit status, once the program has ended and all it printed is read."""
        try:
            status = self.process.wait(seconds)
        except subprocess.TimeoutExpired as expired:
            raise TimeIsUp(f"{self.name} did not end within {seconds:g} s") from expired
        self.reader.join(seconds)
        self.process.stdout.close()
        return status

    def end(self, seconds=PATIENCE):
        """Asks the program to end, as a session manager does; the exit status."""
        if self.running():
            self.signal(signal.SIGCONT)
            self.signal(signal.SIGTERM)
        return self.wait(seconds)

    def kill(self):
        if self.running():
            self.process.kill()
        self.wait()

    def dispose(self):
        """Leaves nothing behind, whatever state the program is in."""
        try:
            self.end(10)
        except TimeIsUp:
            self.kill()


class Service(Program):
    """velto-local with a data folder of its own, on a port that the system chooses."""

    def __init__(self, data_folder, environment, port=0, token_rate=400,
                 access_token_seconds=None):
        self.data_folder = Path(data_folder)
        port_file = self.data_folder.with_suffix(".port")
        port_file.unlink(missing_ok=True)
        command = [VELTO_LOCAL, "--port", port, "--data", data_folder, "--port-file", port_file,
                   "--token-rate", token_rate]
        if access_token_seconds:
            command += ["--access-token-seconds", access_token_seconds]
        super().__init__("velto-local", command, environment)
        wait_until(lambda: port_file.exists() or not self.running(), "velto-local to answer")
        if not port_file.exists():
            raise AssertionError(f"velto-local did not start:\n{self.log}")
        self.port = int(port_file.read_text())
        self.base_url = f"http://127.0.0.1:{self.port}"

    def freeze(self):
        """The system still accepts connections, and nobody answers."""
        self.signal(signal.SIGSTOP)

    def thaw(self):
        self.signal(signal.SIGCONT)
