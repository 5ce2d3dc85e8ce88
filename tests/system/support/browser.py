# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Default browsers of a desktop: Chromium without a window, and one that only notes the address."""

import json
import shlex
import urllib.request
from pathlib import Path

from .waiting import wait_until
from .websocket import WebSocket

ENTRY = """[Desktop Entry]
Type=Application
Name=Test browser
Exec={command} %u
MimeType=x-scheme-handler/http;x-scheme-handler/https;
"""
DEFAULTS = """[Default Applications]
x-scheme-handler/http=velto-test-browser.desktop
x-scheme-handler/https=velto-test-browser.desktop
"""
NO_PROXY = urllib.request.build_opener(urllib.request.ProxyHandler({}))


def make_default(data_home, command):
    """Registers a command the way an installed browser is."""
    folder = Path(data_home) / "applications"
    folder.mkdir(parents=True, exist_ok=True)
    line = " ".join(shlex.quote(str(word)) for word in command)
    (folder / "velto-test-browser.desktop").write_text(ENTRY.format(command=line))
    (folder / "mimeapps.list").write_text(DEFAULTS)


class NotingBrowser:
    """Notes the address that it is given, and ends."""

    def __init__(self, data_home, folder, status=0):
        folder = Path(folder)
        self._note = folder / "opened-url"
        script = folder / "noting-browser"
        script.write_text(f'#!/bin/sh\nprintf %s "$1" >"{self._note}.part"\n'
                          f'mv "{self._note}.part" "{self._note}"\nexit {status}\n')
        script.chmod(0o755)
        make_default(data_home, [script])

    def was_opened(self):
        return self._note.exists()

    def wait_for_url(self):
        """The address, taken once: a second call waits for a second launch."""
        wait_until(self._note.exists, "the default browser to be started")
        url = self._note.read_text()
        self._note.unlink()
        return url


class Chromium:
    """Starts when the desktop opens an address. Its pages are reached through its debugging port."""

    def __init__(self, data_home, profile):
        self._profile = Path(profile)
        self._pages = []
        # Its own sandbox needs rights that a container may not give; all it loads is our own page.
        make_default(data_home, [
            "chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic",
            "--disable-dev-shm-usage", "--no-first-run", "--disable-background-networking",
            "--disable-component-update", "--disable-sync", f"--user-data-dir={self._profile}",
            "--remote-debugging-port=0"])

    def _port_file(self):
        file = self._profile / "DevToolsActivePort"
        lines = file.read_text().split() if file.exists() else []
        return lines if len(lines) == 2 else None

    def started(self):
        return self._port_file() is not None

    def _targets(self):
        port, _ = wait_until(self._port_file, "the default browser to start", 40)
        with NO_PROXY.open(f"http://127.0.0.1:{port}/json/list", timeout=20) as answer:
            return json.load(answer)

    def page(self, path):
        """The open page whose address holds `path`."""
        def find():
            pages = [target for target in self._targets()
                     if target["type"] == "page" and path in target["url"]]
            return pages[0] if pages else None

        self._pages.append(Page(wait_until(find, f"a page at {path}")))
        return self._pages[-1]

    def close(self):
        for page in self._pages:
            page.close()
        if not self.started():
            return
        port, path = self._port_file()
        try:
            debugger = _Debugger(f"ws://127.0.0.1:{port}{path}")
            debugger.call("Browser.close")
            debugger.close()
        except OSError:
            pass


class _Debugger:
    def __init__(self, url):
        self._socket = WebSocket(url)
        self._count = 0

    def call(self, method, **parameters):
        self._count += 1
        self._socket.send(json.dumps(
            {"id": self._count, "method": method, "params": parameters}))
        while True:
            message = json.loads(self._socket.receive())
            if message.get("id") == self._count:
                return message.get("result", {})

    def close(self):
        self._socket.close()


class Page:
    def __init__(self, target):
        self._debugger = _Debugger(target["webSocketDebuggerUrl"])

    def close(self):
        self._debugger.close()

    def value_of(self, expression):
        answer = self._debugger.call("Runtime.evaluate", expression=expression,
                                     returnByValue=True)
        return answer.get("result", {}).get("value")

    def wait_for_text(self, text):
        expression = "document.body ? document.body.innerText : ''"
        wait_until(lambda: text in (self.value_of(expression) or ""), f"{text!r} on the page")

    def click_button(self, text):
        """Moves the mouse to the button with this text and presses it."""
        expression = ("(() => { const button = [...document.querySelectorAll('button')]"
                      f".find(one => one.innerText.trim() === {json.dumps(text)});"
                      "if (!button) return null; const box = button.getBoundingClientRect();"
                      "return [box.x + box.width / 2, box.y + box.height / 2]; })()")
        x, y = wait_until(lambda: self.value_of(expression), f"the button {text!r} on the page")
        for kind in ("mousePressed", "mouseReleased"):
            self._debugger.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left",
                                clickCount=1)
