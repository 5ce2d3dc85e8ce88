# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The desktop around the program: keyboard, mouse, windows, screen and keyring."""

import os
import re
import subprocess
import sys

from .processes import SOURCE_FOLDER
from .waiting import wait_until

SECRET = ["xdg:schema", "ltd.orbax.velto", "service", "ltd.orbax.velto",
          "account", "refresh_token"]


def ensure_own_desktop():
    """Starts this program anew inside a desktop of its own, unless it is in one already.

    Tests share neither keyboard focus nor keyring with anyone, so that they may run at any time.
    """
    if os.environ.get("VELTO_TEST_DESKTOP") == "own":
        return
    os.environ["VELTO_TEST_DESKTOP"] = "own"
    script = SOURCE_FOLDER / "scripts/with-desktop.sh"
    os.execv(script, [script, "/usr/bin/python3", "-B", *sys.argv])


def run(*command, check=True, text=None):
    done = subprocess.run([str(word) for word in command], input=text, text=True,
                          capture_output=True, timeout=30)
    if check and done.returncode != 0:
        raise AssertionError(f"{command}: status {done.returncode}: {done.stderr}")
    return done.stdout


# Keyring

def stored_token():
    """The refresh token in the keyring, None when there is none."""
    return run("secret-tool", "lookup", *SECRET[2:], check=False) or None


def store_token(token):
    run("secret-tool", "store", "--label=velto sign-in", *SECRET, text=token)


def clear_token():
    run("secret-tool", "clear", *SECRET[2:], check=False)


# Keyboard and mouse

def press_key(*keys):
    run("xdotool", "key", "--clearmodifiers", *keys)


def type_text(text):
    run("xdotool", "type", "--clearmodifiers", "--delay", "4", text)


def copy_text(text):
    """Puts a text on the clipboard, from outside of the program."""
    subprocess.run(["xclip", "-selection", "clipboard", "-in"], input=text, text=True, check=True,
                   timeout=30, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def click(x, y):
    run("xdotool", "mousemove", x, y, "click", "1")


# Windows

def windows_of(pid):
    return run("xdotool", "search", "--onlyvisible", "--pid", pid, "--name", ".",
               check=False).split()


def wait_for_window(pid):
    """The X window of a process, mapped and with the keyboard."""
    window = wait_until(lambda: windows_of(pid), "a window on the screen")[0]
    activate(window)
    return window


def activate(window):
    def is_active():
        if active_window() == window:
            return True
        run("xdotool", "windowactivate", window, check=False)
        return False

    wait_until(is_active, "the window to get the keyboard")


def active_window():
    return run("xdotool", "getactivewindow", check=False).strip()


def windows_named(name):
    return run("xdotool", "search", "--onlyvisible", "--name", name, check=False).split()


def minimise(window):
    run("xdotool", "windowminimize", "--sync", window)


def size_of(window):
    """(width, height) of the window's content."""
    text = run("xdotool", "getwindowgeometry", "--shell", window)
    return tuple(int(re.search(rf"^{key}=(\d+)", text, re.M).group(1))
                 for key in ("WIDTH", "HEIGHT"))


def position_of(window):
    """(x, y) of the window's content on the screen."""
    text = run("xwininfo", "-id", window)
    return tuple(int(re.search(rf"Absolute upper-left {axis}:\s+(-?\d+)", text).group(1))
                 for axis in "XY")


def resize(window, width, height):
    run("xdotool", "windowsize", window, width, height)


def close_window():
    """Presses the close button of the active window's frame, by its key."""
    press_key("alt+F4")


def title_of(window):
    return run("xdotool", "getwindowname", window).strip()


def screenshot(file):
    run("import", "-window", "root", file, check=False)
