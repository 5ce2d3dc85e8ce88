#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""A desktop that says whether it prefers light or dark windows: settingsportal.py dark|light"""

import sys

from gi.repository import Gio, GLib

NUMBERS = {"dark": 1, "light": 2}
INTERFACE = """
<node><interface name="org.freedesktop.portal.Settings">
  <method name="Read">
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
  </method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""


def answer(invocation, scheme):
    if invocation.get_parameters().unpack() != ("org.freedesktop.appearance", "color-scheme"):
        return invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "not here")
    value = GLib.Variant("v", GLib.Variant("u", NUMBERS[scheme]))
    return invocation.return_value(GLib.Variant("(v)", (value,)))


def main():
    scheme = sys.argv[1]

    def offer(connection, _):
        connection.register_object(
            "/org/freedesktop/portal/desktop",
            Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0],
            lambda *call: answer(call[-1], scheme), None, None)

    Gio.bus_own_name(Gio.BusType.SESSION, "org.freedesktop.portal.Desktop", 0, offer,
                     lambda *_: print("ready", flush=True), None)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
