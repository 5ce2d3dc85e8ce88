#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Start-up, idle work and memory of the client with a cached conversation of 50 messages, signed in
to the local service, beside the smallest Qt Quick window under the same backend.

startup.ratio      median of ten paired runs: process start to first frame, client / smallest window
idle.cpu_percent   of one core, over 10 s after the start has settled
memory.ratio       proportional set size, client / smallest window, each alone, after those 10 s
"""

import contextlib
import os
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests/system"))
from support import session  # noqa: E402

BUILD = Path(os.environ["VELTO_BENCH_BUILD"])
PAIRS = 10
IDLE_SECONDS = 10
PATIENCE = 30
CPUCLOCK_SCHED = 2  # of the kernel's clocks of a process: what the scheduler counts


class Running:
    """A program whose output is read line by line."""

    def __init__(self, command, environment):
        self.line = ""  # the one that was last waited for
        self.started = time.perf_counter()
        self.process = subprocess.Popen(command, env=environment, stdout=subprocess.PIPE,
                                        text=True, bufsize=1)

    def wait_for(self, text):
        """Seconds from the start to the line that holds `text`."""
        for line in self.process.stdout:
            if text in line:
                self.line = line
                return time.perf_counter() - self.started
        sys.exit(f"{self.process.args[0]} ended before it printed “{text}”")

    def end(self):
        self.process.terminate()
        try:
            self.process.communicate(timeout=PATIENCE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            sys.exit(f"{self.process.args[0]} did not end")

    def cpu_seconds(self):
        """Of all its threads, also of those that have ended, to the nanosecond."""
        return time.clock_gettime(~self.process.pid << 3 | CPUCLOCK_SCHED)

    def kibibytes(self):
        for line in Path(f"/proc/{self.process.pid}/smaps_rollup").read_text().splitlines():
            if line.startswith("Pss:"):
                return int(line.split()[1])
        sys.exit("no proportional set size")


def smallest_window(environment):
    return Running([BUILD / "bench/smallest_window"], environment)


def client(environment):
    return Running([BUILD / "bin/velto", "--trace-startup"], environment)


def first_frame_of_window(environment):
    running = smallest_window(environment)
    seconds = running.wait_for("first frame")
    running.end()
    return seconds


def first_frame_of_client(environment):
    running = client(environment)
    seconds = running.wait_for("first frame")
    # The session rotates its token at every start; the next run needs the new one to be stored.
    running.wait_for("refresh: success")
    running.end()
    return seconds


def idle(running):
    """CPU seconds of a whole idle stretch, and the memory at its end."""
    time.sleep(3)
    before = running.cpu_seconds()
    time.sleep(IDLE_SECONDS)
    return running.cpu_seconds() - before, running.kibibytes()


def measure(environment):
    first_frame_of_window(environment)  # both once before it counts: nobody starts from a cold disk
    first_frame_of_client(environment)
    pairs = [(first_frame_of_window(environment), first_frame_of_client(environment))
             for _ in range(PAIRS)]
    for window, velto in pairs:
        print(f"  smallest window {window * 1000:6.1f} ms   velto {velto * 1000:6.1f} ms")
    print(f"RESULT startup.ratio {statistics.median(v / w for w, v in pairs):.3f}")
    print(f"RESULT startup.first_frame_ms {statistics.median(v for _, v in pairs) * 1000:.1f}")

    # One after the other: of pages that both hold, each would count a half.
    window = smallest_window(environment)
    window.wait_for("first frame")
    _, base = idle(window)
    window.end()
    velto = client(environment)
    velto.wait_for("refresh: success")
    cpu, memory = idle(velto)
    velto.end()
    print(f"  memory: smallest window {base / 1024:.1f} MiB, velto {memory / 1024:.1f} MiB")
    print(f"RESULT idle.cpu_percent {cpu / IDLE_SECONDS * 100:.3f}")
    print(f"RESULT memory.ratio {memory / base:.3f}")


@contextlib.contextmanager
def local_service(*options):
    """The running local service, and the environment of clients that use it."""
    with tempfile.TemporaryDirectory() as folder:
        service = Running([BUILD / "local/velto-local", "--port", "0", "--data",
                           f"{folder}/service", *options], os.environ)
        service.wait_for("listening on")
        try:
            yield service, {**os.environ, "QT_QUICK_BACKEND": "software",
                            "XDG_DATA_HOME": f"{folder}/data",
                            "XDG_CONFIG_HOME": f"{folder}/config",
                            "VELTO_API_BASE_URL": service.line.split()[-1]}
        finally:
            service.end()


def main():
    with local_service() as (_, environment):
        session.write_cached_conversation(environment["XDG_DATA_HOME"], 50)
        session.sign_in_to_keyring(environment["VELTO_API_BASE_URL"])
        measure(environment)


if __name__ == "__main__":
    main()
