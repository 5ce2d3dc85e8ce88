#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The client with long conversations and rich replies, against the local service.

open2000.time_ratio    process start to first frame: a cached conversation of 2,000 messages / of 20,
                       medians of paired runs; a tenth of the messages holds code, tables and tools
open2000.memory_ratio  proportional set size of the two after they have settled
rich.frame_p99_ms      99th percentile of what the main thread works for a frame while a reply of
                       100 KB with code and tool calls arrives at 200 pieces a second
rich.cpu_vs_plain      CPU of the process meanwhile / with as much plain text
"""

import json
import re
import statistics
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
import startup  # noqa: E402
from support import desktop, session  # noqa: E402

PAIRS = 7
RICH = "rich 100000"
PLAIN = "long 100000"
SECTION = """## Loads of week {0}

| Day | Boats | Tons |
| --- | ---: | ---: |
| Monday | 14 | 312.5 |
| Tuesday | 11 | 268 |

```python
def total(loads):
    return sum(load.tons for load in loads)  # week {0}
```

The **sum** is in `total`."""


def message(index):
    role = ("user", "assistant")[index % 2]
    if index % 20 != 1:
        return {"role": role, "parts": [{"kind": "text", "text": session.cached_texts(2)[index % 2]}]}
    call = {"kind": "tool", "toolName": "search_log", "toolCallID": str(index),
            "toolInput": '{\n    "week": 9\n}', "toolOutput": '{\n    "loads": 25\n}'}
    return {"role": role, "parts": [call, {"kind": "text", "text": SECTION.format(index)}]}


def write_conversation(data_home, count):
    file = session.cache_file(data_home)
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(json.dumps({"conversationID": "cached-conversation",
                                "messages": [message(index) for index in range(count)]}))


def open_conversation(environment, count, settle):
    """Seconds to the first frame, and KiB once the start has settled, where that is wanted."""
    write_conversation(environment["XDG_DATA_HOME"], count)
    running = startup.client(environment)
    seconds = running.wait_for("first frame")
    running.wait_for("refresh: success")
    if settle:
        time.sleep(4)
    memory = running.kibibytes()
    running.end()
    return seconds, memory


def measure_opening(environment):
    for count in (20, 2000):
        open_conversation(environment, count, False)
    pairs = [(open_conversation(environment, 20, False)[0],
              open_conversation(environment, 2000, False)[0]) for _ in range(PAIRS)]
    for few, many in pairs:
        print(f"  20 messages {few * 1000:6.1f} ms   2,000 messages {many * 1000:6.1f} ms")
    print(f"RESULT open2000.time_ratio {statistics.median(m / f for f, m in pairs):.3f}")
    few, many = (open_conversation(environment, count, True)[1] for count in (20, 2000))
    print(f"  memory: 20 messages {few / 1024:.1f} MiB, 2,000 messages {many / 1024:.1f} MiB")
    print(f"RESULT open2000.memory_ratio {many / few:.3f}")


def stream(environment, service, prompt):
    """CPU seconds while the reply arrives, and the line with the frames' costs."""
    session.cache_file(environment["XDG_DATA_HOME"]).unlink(missing_ok=True)
    running = startup.Running([startup.BUILD / "bin/velto", "--trace-frames"], environment)
    running.wait_for("refresh: success")
    desktop.activate(desktop.wait_for_window(running.process.pid))
    time.sleep(2)
    before = running.cpu_seconds()
    desktop.type_text(prompt)
    desktop.press_key("Return")
    service.wait_for("POST /v1/chat")
    cpu = running.cpu_seconds() - before
    running.process.terminate()
    printed = running.process.communicate(timeout=startup.PATIENCE)[0]
    return cpu, next(line for line in printed.splitlines() if "[app] frames" in line)


def measure_streaming(environment, service):
    rich, frames = stream(environment, service, RICH)
    print(f"  rich: {frames}, {rich:.1f} s of CPU")
    plain, frames_of_plain = stream(environment, service, PLAIN)
    print(f"  plain: {frames_of_plain}, {plain:.1f} s of CPU")
    print(f"RESULT rich.frame_p99_ms {re.search(r'p99 ([0-9.]+)', frames).group(1)}")
    print(f"RESULT rich.cpu_vs_plain {rich / plain:.3f}")


def main():
    with startup.local_service("--token-rate", "200") as (service, environment):
        session.sign_in_to_keyring(environment["VELTO_API_BASE_URL"])
        measure_opening(environment)
        measure_streaming(environment, service)


if __name__ == "__main__":
    main()
