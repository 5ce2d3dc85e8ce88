#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The client going from conversation to conversation, against the local service.

memory.after20_ratio   proportional set size after 20 conversations with code, tables and tools were
                       opened one after the other / after the first of them
"""

import json
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
import startup  # noqa: E402
from support import desktop, session  # noqa: E402

CONVERSATIONS = 20
PROMPT = {"messages": [{"role": "user", "parts": [{"type": "text", "text": "rich 6000"}]}]}


def fill(base_url):
    tokens = session.sign_in_to_keyring(base_url)
    for _ in range(CONVERSATIONS):
        answer = session.request("POST", f"{base_url}/v1/chat", json.dumps(PROMPT),
                                 "application/json", token=tokens.access)
        if answer.status != 200:
            sys.exit(f"no answer: {answer.status}")


def open_next(service, seconds):
    desktop.press_key("ctrl+bracketright")
    service.wait_for("/messages")
    time.sleep(seconds)


def measure(environment, service):
    running = startup.client(environment)
    running.wait_for("refresh: success")
    desktop.activate(desktop.wait_for_window(running.process.pid))
    time.sleep(2)
    open_next(service, 3)
    sizes = [running.kibibytes()]
    for _ in range(CONVERSATIONS - 1):
        open_next(service, 0.5)
        sizes.append(running.kibibytes())
    time.sleep(3)
    sizes.append(running.kibibytes())
    running.end()
    print("  MiB after each conversation: " + " ".join(f"{size / 1024:.1f}" for size in sizes))
    print(f"RESULT memory.after20_ratio {sizes[-1] / sizes[0]:.3f}")


def main():
    with startup.local_service("--token-rate", "4000") as (service, environment):
        fill(environment["VELTO_API_BASE_URL"])
        measure(environment, service)


if __name__ == "__main__":
    main()
