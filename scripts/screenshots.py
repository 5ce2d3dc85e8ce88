#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Takes the pictures of scripts/screenshots.sh; arguments choose looks by parts of their names."""

import dataclasses
import shutil
import sys
import tempfile
import time
import traceback
from pathlib import Path

SOURCE_FOLDER = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(SOURCE_FOLDER / "tests/system"))
from support import bus, desktop, session  # noqa: E402
from support.accessibility import BUTTON, ENTRY, LABEL, LIST_ITEM  # noqa: E402
from support.case import SIGN_IN, TRY_AGAIN, Velto, environment_of, make_home  # noqa: E402
from support.processes import Service  # noqa: E402
from support.settingsportal import SettingsPortal  # noqa: E402

FOLDER = SOURCE_FOLDER / "build/screenshots"
SCHEMES = {"dark": 1, "light": 2}  # as the portal numbers them
MOTION = 0.6  # seconds in which whatever moves has come to rest


@dataclasses.dataclass(frozen=True)
class Look:
    scheme: str
    width: int
    height: int
    scale: int = 1

    @property
    def name(self):
        zoom = f"-{self.scale}00" if self.scale > 1 else ""
        return f"{self.scheme}-{self.width}x{self.height}{zoom}"


LOOKS = [Look(scheme, *size) for scheme in ("light", "dark")
         for size in ((1180, 780), (480, 480), (680, 540, 2))]
TITLES = ["Tides at the north quay in the second week of September, hour by hour, with wind",
          "Ladeliste für Kai 7", "潮の満ち引き", "جدول المد والجزر", "Fog 🌫️ and ferries"]


class Studio:
    """The programs behind the pictures of one look."""

    def __init__(self, look, folder):
        self.look = look
        self.folder = folder
        self.programs = []
        self.velto = None
        make_home(folder)
        self.environment = environment_of(folder, QT_SCALE_FACTOR=look.scale)
        self.portal = SettingsPortal(**{"color-scheme": bus.GLib.Variant("u", SCHEMES[look.scheme])})
        self.service = Service(folder / "service", self.environment, token_rate=2000)
        self.programs.append(self.service)

    def start(self, **more):
        """Starts the client anew, in the look's size."""
        self.end_client()
        self.velto = Velto({**self.environment, "VELTO_API_BASE_URL": self.service.base_url, **more})
        self.programs.append(self.velto)
        window = self.velto.wait_for_window()
        desktop.resize(window, self.look.width * self.look.scale,
                       self.look.height * self.look.scale)
        desktop.run("xdotool", "windowmove", window, 0, 0)
        return self.velto

    def sign_in(self):
        session.sign_in_to_keyring(self.service.base_url)

    def shoot(self, name):
        time.sleep(MOTION)
        file = FOLDER / self.look.name / f"{name}.png"
        file.parent.mkdir(parents=True, exist_ok=True)
        desktop.run("import", "-window", self.velto.window, file)
        print(f"  {file.relative_to(SOURCE_FOLDER)}", flush=True)

    def say(self, prompt, until=None):
        if prompt.isascii():
            self.velto.send(prompt)
        else:
            self.velto.focus_input()
            desktop.copy_text(prompt)
            desktop.press_key("ctrl+v", "Return")
        if until:
            self.velto.wait_for(*until)
        else:
            self.velto.wait_for_answer()

    def show_sidebar(self):
        if self.velto.find(BUTTON, "Show the sidebar"):
            self.velto.button("Show the sidebar").act()

    def end_client(self):
        if self.velto is not None and self.velto.running():
            self.velto.dispose()

    def end(self):
        for program in reversed(self.programs):
            program.dispose()
        self.portal.leave()


def sign_in_screens(studio):
    desktop.clear_token()
    velto = studio.start(PATH="/nonexistent")
    velto.button(SIGN_IN)
    time.sleep(1)  # the entrance
    studio.shoot("sign-in")
    velto.button(SIGN_IN).act()
    velto.button(TRY_AGAIN)
    studio.shoot("sign-in-failed")


def loading_screens(studio):
    studio.sign_in()
    studio.service.freeze()
    studio.start()
    studio.shoot("loading")
    session.write_cached_conversation(studio.folder / "home/.local/share", 6)
    studio.start()
    studio.shoot("loading-with-messages")
    studio.end_client()
    studio.service.thaw()
    session.cache_file(studio.folder / "home/.local/share").unlink()


def chat_screens(studio):
    studio.sign_in()
    velto = studio.start()
    velto.wait_for_chat()
    studio.shoot("empty")
    for title in TITLES:
        desktop.press_key("ctrl+n")
        studio.say(title)
    desktop.press_key("ctrl+n")
    studio.say("showcase")
    studio.shoot("markdown")
    desktop.press_key("ctrl+n")
    studio.say("tools")
    studio.shoot("tools")
    studio.say("slow long 4000", until=(BUTTON, "Stop"))
    time.sleep(2)
    studio.shoot("streaming")
    desktop.press_key("Escape")
    velto.wait_for_answer()
    studio.shoot("stopped")
    studio.say("error", until=(BUTTON, "Retry"))
    studio.shoot("error")
    velto.button("Dismiss").act()
    velto.focus_input()
    desktop.type_text("A draft of several lines")
    for line in range(12):
        desktop.press_key("shift+Return")
        desktop.type_text(f"line {line}")
    studio.shoot("long-draft")
    desktop.press_key("ctrl+a", "BackSpace")


def menu_screens(studio):
    velto = studio.velto
    desktop.press_key("F10", "Right", "Right", "Right")
    studio.shoot("menu")
    desktop.press_key("Escape")
    picker = velto.find(BUTTON, "Choose model")
    if picker is not None:
        picker.act()
        studio.shoot("model-menu")
        desktop.press_key("Escape")


def sidebar_screens(studio):
    velto = studio.velto
    studio.show_sidebar()
    studio.shoot("sidebar")
    desktop.press_key("ctrl+f")
    velto.wait_for(ENTRY, "Search chats", lambda node: node.focused)
    desktop.type_text("fog")
    studio.shoot("search")
    desktop.type_text("zzz")
    velto.wait_for(LABEL, "No matches")
    studio.shoot("search-without-matches")
    desktop.press_key("ctrl+a", "BackSpace", "Down")
    velto.wait_for(LIST_ITEM, matching=lambda node: node.focused or node.has_state("SELECTED"))
    desktop.press_key("shift+F10")
    studio.shoot("conversation-menu")
    desktop.press_key("Escape", "F2")
    studio.shoot("rename")
    desktop.press_key("Escape", "Delete")
    studio.shoot("delete")
    desktop.press_key("Escape")


def section_screens(studio):
    desktop.press_key("ctrl+2")
    studio.shoot("profile")
    desktop.press_key("ctrl+1")


SCENES = [sign_in_screens, loading_screens, chat_screens, menu_screens, sidebar_screens,
          section_screens]


def take(look):
    """Whether every picture of the look could be taken."""
    print(look.name, flush=True)
    shutil.rmtree(FOLDER / look.name, ignore_errors=True)
    with tempfile.TemporaryDirectory(prefix="velto-screenshots.") as folder:
        studio = Studio(look, Path(folder))
        try:
            for scene in SCENES:
                scene(studio)
            return True
        except Exception:  # the other looks can be taken all the same
            traceback.print_exc()
            if studio.velto is not None:
                studio.shoot("failed")
                print(studio.velto.tree.dump())
            return False
        finally:
            studio.end()


def main():
    desktop.ensure_own_desktop()
    looks = [look for look in LOOKS if all(part in look.name for part in sys.argv[1:])]
    if not looks:
        sys.exit(f"no look has this name; there are: {', '.join(look.name for look in LOOKS)}")
    if not all([take(look) for look in looks]):
        sys.exit("not every picture could be taken")


if __name__ == "__main__":
    main()
