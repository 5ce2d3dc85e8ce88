#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""An installed velto, started by a session bus of the test's own."""

from support import bus, desktop
from support.case import SystemTest, main
from support.processes import BUILD_FOLDER, Program
from support.waiting import wait_until

CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={folder}/bus</listen>
  <servicedir>{folder}/services</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


class Activation(SystemTest):
    def setUp(self):
        super().setUp()
        self.service = self.start_service()
        services = self.folder / "services"
        services.mkdir()
        # The file that is installed, with the program where it is built.
        installed = (BUILD_FOLDER / "packaging/ltd.orbax.velto.service").read_text()
        lines = [f"Exec={BUILD_FOLDER}/bin/velto {line.split()[-1]}" if line.startswith("Exec=")
                 else line for line in installed.splitlines()]
        (services / "ltd.orbax.velto.service").write_text("\n".join(lines) + "\n")
        configuration = self.folder / "bus.conf"
        configuration.write_text(CONFIGURATION.format(folder=self.folder))
        # The accessibility bus is found through the X server; the keyring isn't on this one.
        self.programs.append(Program("dbus-daemon", [
            "dbus-daemon", f"--config-file={configuration}", "--nofork", "--nopidfile"],
            self.environment(VELTO_API_BASE_URL=self.service.base_url)))
        wait_until((self.folder / "bus").exists, "the bus")
        self.bus = bus.connect(f"unix:path={self.folder}/bus")
        self.addCleanup(self.end_started)

    def pid(self):
        owner = bus.owner_of(self.bus)
        return owner and bus.call(self.bus, "org.freedesktop.DBus", "/", "org.freedesktop.DBus",
                                  "GetConnectionUnixProcessID",
                                  bus.GLib.Variant("(s)", (owner,)))[0]

    def end_started(self):
        if self.pid():
            bus.do_action(self.bus, "quit")
            wait_until(lambda: not self.pid(), "velto to end")

    def window(self):
        return wait_until(lambda: desktop.windows_named("^velto$"), "a window on the screen")[0]

    def test_activate_starts_it_and_shows_its_window(self):
        self.assertIsNone(self.pid())
        bus.activate(self.bus)
        window = self.window()
        self.assertIn(window, desktop.windows_of(self.pid()))
        wait_until(lambda: desktop.active_window() == window, "the window to have the keyboard")

    def test_a_link_starts_it_once(self):
        bus.open_links(self.bus, "ltd.orbax.velto://new?text=hello")
        first = self.pid()
        self.window()
        bus.open_links(self.bus, "ltd.orbax.velto://new?text=again")
        self.assertEqual(self.pid(), first)
        self.assertEqual(len(desktop.windows_named("^velto$")), 1)

    def test_quit_of_none_that_runs_shows_nothing(self):
        bus.do_action(self.bus, "quit")
        wait_until(lambda: not self.pid(), "velto to end")
        self.assertEqual(desktop.windows_named("^velto$"), [])


if __name__ == "__main__":
    main()
