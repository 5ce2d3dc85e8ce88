# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""What every system test stands on: a home, a service and the client, each of the test's own."""

import os
import re
import shutil
import tempfile
import unittest
from pathlib import Path

from . import desktop, session
from .accessibility import BUTTON, DOCUMENT, ENTRY, GLib, LIST, LIST_ITEM, Program as AccessibleProgram
from .processes import BUILD_FOLDER, VELTO, VELTO_LOCAL, Program, Service
from .waiting import PATIENCE, wait_until

LOADING = "Loading…"
SIGN_IN = "Continue with Google"
TRY_AGAIN = "Try again"
INPUT = "Message input"
USER = "You"
AGENT = "velto"
THINKING = "Generating response"  # what stands for an answer until it begins
# What the QML engine says about a broken binding, a missing property or file.
QML_COMPLAINT = re.compile(r"^(qrc:|file:).*\.qml|QQml\w+:|QML \w+:|is not a type")


class Velto(Program):
    """The running client, with its window and its accessible objects."""

    def __init__(self, environment, arguments=()):
        super().__init__("velto", [VELTO, *arguments], environment)
        self.window = None
        self.tree = AccessibleProgram(self.pid)

    def wait_for_window(self):
        self.window = wait_until(lambda: self._window_or_end(), "a window on the screen")
        desktop.activate(self.window)
        return self.window

    def _window_or_end(self):
        if not self.running():
            raise AssertionError(f"velto ended with {self.process.returncode}:\n{self.log}")
        found = desktop.windows_of(self.pid)
        return found[0] if found else None

    def find(self, *arguments, **named):
        return self.tree.find(*arguments, **named)

    def wait_for(self, *arguments, **named):
        return self.tree.wait_for(*arguments, **named)

    def wait_gone(self, *arguments, **named):
        self.tree.wait_gone(*arguments, **named)

    def button(self, name, seconds=PATIENCE):
        return self.tree.wait_for(BUTTON, name, seconds=seconds)

    def input(self):
        return self.tree.wait_for(ENTRY, INPUT)

    def wait_for_chat(self, seconds=PATIENCE):
        """The composer, once the user is signed in."""
        composer = self.tree.wait_for(ENTRY, INPUT, lambda node: node.enabled, seconds=seconds)
        self.tree.wait_gone(name=LOADING)
        return composer

    def shows(self, text):
        """Whether the text is on the screen, for a screen reader."""
        return self.tree.find(matching=lambda node: text in content_of(node)) is not None

    def wait_for_text(self, text, seconds=PATIENCE):
        wait_until(lambda: self.shows(text), lambda: f"{text!r} in:\n{self.tree.dump()}", seconds)

    def rows(self):
        return self.tree.find_all(LIST_ITEM, matching=lambda node: node.name in (USER, AGENT))

    def messages(self):
        """(who, text) of the messages in sight, from top to bottom, without times and buttons."""
        while True:
            try:
                return [(row.name, "\n".join(filter(None, words_of(row)))) for row in self.rows()]
            except GLib.Error:
                continue  # an object went away while it was asked: look again

    def answer(self):
        """What the newest answer says, empty before it begins."""
        messages = self.messages()
        return messages[-1][1] if messages and messages[-1][0] == AGENT else ""

    def wait_for_reply(self, text, seconds=PATIENCE):
        """Until the text is in the newest answer."""
        wait_until(lambda: text in self.answer(),
                   lambda: f"{text!r} in the answer in:\n{self.tree.dump()}", seconds)

    def send(self, text):
        """Types a message and sends it, as a user does."""
        self.focus_input()
        desktop.type_text(text)
        desktop.press_key("Return")

    def focus_input(self):
        composer = self.input()
        if not composer.focused:
            desktop.click(*composer.centre)
        wait_until(lambda: self.input().focused, "the composer to have the focus")

    def wait_for_answer(self, seconds=PATIENCE):
        """Until no answer streams any more."""
        self.tree.wait_gone(BUTTON, "Stop", seconds=seconds)


def words_of(row):
    """The texts of a message, as a screen reader says them. The user's is one that can be selected,
    an answer's are the names of its blocks; list items are named by their markers."""
    for node in list(row.walk())[1:]:
        if row.name == USER:
            yield node.text
        elif node.role not in (BUTTON, DOCUMENT, LIST, LIST_ITEM) and node.name != THINKING:
            yield node.name


def content_of(node):
    """What a screen reader says of an object: its text, or its name."""
    return node.text or node.name


def make_home(folder):
    """A user's folders, empty."""
    for name in ("home/.local/share", "home/.config", "home/.cache", "home/.local/state", "tmp"):
        (folder / name).mkdir(parents=True, exist_ok=True)


def environment_of(folder, **more):
    """That of a user's programs: this desktop, and the home of `make_home`."""
    home = folder / "home"
    values = {name: value for name, value in os.environ.items()
              if not name.startswith("XDG_") or name == "XDG_RUNTIME_DIR"}
    for name in ("VELTO_API_BASE_URL", "BROWSER", "VELTO_TEST_DESKTOP"):
        values.pop(name, None)
    values.update(HOME=str(home), TMPDIR=str(folder / "tmp"),
                  XDG_DATA_HOME=str(home / ".local/share"),
                  XDG_CONFIG_HOME=str(home / ".config"),
                  XDG_CACHE_HOME=str(home / ".cache"),
                  XDG_STATE_HOME=str(home / ".local/state"),
                  QT_QUICK_BACKEND="software")
    values.update({name: str(value) for name, value in more.items()})
    return values


class SystemTest(unittest.TestCase):
    maxDiff = None
    token_rate = 400

    def setUp(self):
        self.programs = []
        self.folder = Path(tempfile.mkdtemp(prefix="velto-system."))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.addCleanup(self._end_programs)
        self.home = self.folder / "home"
        self.data_home = self.home / ".local/share"
        make_home(self.folder)
        desktop.clear_token()

    def run(self, result=None):
        self._result = result
        return super().run(result)

    def tearDown(self):
        failed = [getattr(test, "test_case", test)
                  for test, _ in self._result.failures + self._result.errors]
        if self in failed:
            self._keep_evidence()

    def _end_programs(self):
        for program in reversed(self.programs):
            program.dispose()
        for program in self.programs:
            if program.name == "velto":
                complaints = [text for _, text in program.lines if QML_COMPLAINT.search(text)]
                self.assertEqual(complaints, [], "the QML engine complained")

    def _keep_evidence(self):
        folder = BUILD_FOLDER / "system-failures" / self.id()
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        desktop.screenshot(folder / "screen.png")
        for index, program in enumerate(self.programs):
            (folder / f"{index}-{program.name}.log").write_text(program.log)
            if program.name == "velto" and program.running():
                (folder / f"{index}-tree.txt").write_text(program.tree.dump())
        print(f"{self.id()}: what was seen is in {folder}")

    def environment(self, **more):
        return environment_of(self.folder, **more)

    def use_tall_window(self):
        """Only messages in sight are there for a screen reader: makes room for several."""
        settings = self.home / ".config/velto/velto.conf"
        settings.parent.mkdir(exist_ok=True)
        settings.write_text("[window]\nsize=@Size(1000 1120)\n")

    def start_service(self, **options):
        options.setdefault("token_rate", self.token_rate)
        service = Service(self.folder / "service", self.environment(), **options)
        self.programs.append(service)
        return service

    def start_velto(self, base_url, arguments=(), **more):
        velto = Velto(self.environment(VELTO_API_BASE_URL=base_url, **more), arguments)
        self.programs.append(velto)
        velto.wait_for_window()
        return velto

    def start_again(self, base_url, *arguments, **more):
        """One more start of the client, which leaves what it was started for to the first."""
        again = Program("velto", [VELTO, *arguments],
                        self.environment(VELTO_API_BASE_URL=base_url, **more))
        self.programs.append(again)
        return again

    def start_signed_in(self, arguments=(), **options):
        """Service and client, past the sign-in; the composer has the keyboard."""
        service = self.start_service(**options)
        session.sign_in_to_keyring(service.base_url)
        velto = self.start_velto(service.base_url, arguments)
        velto.wait_for_chat()
        velto.focus_input()
        return service, velto


def main():
    """Runs the tests of a file, in a desktop of their own."""
    desktop.ensure_own_desktop()
    for program in (VELTO, VELTO_LOCAL):
        if not program.exists():
            raise SystemExit(f"{program} is not built")
    # The first key makes the window manager read the keyboard's map anew, and meanwhile it hears no
    # key of its own.
    desktop.press_key("Shift_L")
    # The bindings mark most of what Debian's version of them has as deprecated.
    unittest.main(verbosity=2, warnings="ignore")
