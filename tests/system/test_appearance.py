#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The window's looks, as the desktop's settings portal says them."""

import re

from support import bus, desktop
from support.case import SystemTest, main
from support.settingsportal import SettingsPortal
from support.waiting import wait_until

GLib = bus.GLib


class Appearance(SystemTest):
    def start(self, **settings):
        portal = SettingsPortal(**settings)
        self.addCleanup(portal.leave)
        service, velto = self.start_signed_in()
        return portal, velto

    def colour_at(self, x, y):
        """(red, green, blue) of a pixel of the screen."""
        text = desktop.run("import", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth", "8",
                           "txt:-")
        return tuple(int(value) for value in re.search(r"\((\d+),(\d+),(\d+)", text).groups())

    def background(self, velto):
        """Of the empty chat, away from its glow."""
        x, y, width, height = velto.find("frame").box
        return self.colour_at(x + width - 8, y + height - 8)

    def test_goes_from_dark_to_light_while_it_runs(self):
        portal, velto = self.start(**{"color-scheme": GLib.Variant("u", 1)})
        wait_until(lambda: max(self.background(velto)) < 80, "a dark window")
        portal.change("color-scheme", GLib.Variant("u", 2))
        wait_until(lambda: min(self.background(velto)) > 200, "a light window")
        portal.change("color-scheme", GLib.Variant("u", 1))
        wait_until(lambda: max(self.background(velto)) < 80, "a dark window again")

    def send_button(self, velto):
        """The colour at the edge of the button that sends, where its mark isn't."""
        x, y, width, height = velto.button("Send").box
        return self.colour_at(x + width // 2, y + 3)

    def test_takes_the_accent_and_its_changes(self):
        portal, velto = self.start(**{"accent-color": GLib.Variant("(ddd)", (0.0, 0.5, 0.0))})
        desktop.type_text("words")
        wait_until(lambda: self.send_button(velto) == (0, 128, 0),
                   lambda: f"green, not {self.send_button(velto)}")
        portal.change("accent-color", GLib.Variant("(ddd)", (0.5, 0.0, 0.0)))
        wait_until(lambda: self.send_button(velto) == (128, 0, 0),
                   lambda: f"red, not {self.send_button(velto)}")
        portal.change("accent-color", GLib.Variant("(ddd)", (2.0, 0.0, 0.0)))
        wait_until(lambda: self.send_button(velto)[2] > 100,
                   lambda: f"the palette's blue, not {self.send_button(velto)}")


if __name__ == "__main__":
    main()
