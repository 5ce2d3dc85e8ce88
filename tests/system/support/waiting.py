# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Waiting for conditions in other processes, under a watchdog."""

import time

PATIENCE = 20.0
INTERVAL = 0.02


class TimeIsUp(AssertionError):
    """What a test waited for did not happen."""


def wait_until(condition, what, seconds=PATIENCE):
    """The first true value that condition() gives back; fails when the time is over."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise TimeIsUp(f"waited {seconds:g} s for {what() if callable(what) else what}")
        time.sleep(INTERVAL)
