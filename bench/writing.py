#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Writing the next message while a reply arrives, in the client against the local service.

typing.p99_ms   99th percentile of the time from a key press in the composer, as the X server has
                it, to the end of the frame that shows it, while a reply with code and tool calls
                arrives at 200 pieces a second
typing.p50_ms   the median
"""

import re
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
import startup  # noqa: E402
from support import desktop, session  # noqa: E402

PROMPT = "rich 100000"
SENTENCE = "while the tide comes in we write about the boats at the north quay and their loads "
SENTENCES = 4
BETWEEN_KEYS = 60  # milliseconds, a quick typist's


def measure(environment):
    running = startup.Running([startup.BUILD / "bin/velto", "--trace-frames"], environment)
    running.wait_for("refresh: success")
    desktop.activate(desktop.wait_for_window(running.process.pid))
    time.sleep(2)
    desktop.type_text(PROMPT)
    desktop.press_key("Return")
    time.sleep(2)
    for _ in range(SENTENCES):
        desktop.run("xdotool", "type", "--clearmodifiers", "--delay", BETWEEN_KEYS, SENTENCE)
    running.process.terminate()
    printed = running.process.communicate(timeout=startup.PATIENCE)[0]
    keys = next(line for line in printed.splitlines() if "[app] keys" in line)
    print(f"  {keys}")
    if int(re.search(r"keys (\d+)", keys).group(1)) < SENTENCES * len(SENTENCE):
        sys.exit("not every key was seen")
    print(f"RESULT typing.p99_ms {re.search(r'p99 ([0-9.]+)', keys).group(1)}")
    print(f"RESULT typing.p50_ms {re.search(r'p50 ([0-9.]+)', keys).group(1)}")


def main():
    with startup.local_service("--token-rate", "200") as (_, environment):
        session.sign_in_to_keyring(environment["VELTO_API_BASE_URL"])
        measure(environment)


if __name__ == "__main__":
    main()
