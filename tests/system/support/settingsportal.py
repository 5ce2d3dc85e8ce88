# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The desktop's settings portal, as far as the looks of windows are concerned."""

from . import bus

APPEARANCE = "org.freedesktop.appearance"


class SettingsPortal(bus.Provider):
    XML = """<node><interface name="org.freedesktop.portal.Settings">
      <method name="ReadAll"><arg type="as"/><arg type="a{sa{sv}}" direction="out"/></method>
      <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
    </interface></node>"""

    def __init__(self, **settings):
        super().__init__("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                         self.XML, {"ReadAll": lambda groups: ({APPEARANCE: settings},)})

    def change(self, key, value):
        self.emit("SettingChanged", bus.GLib.Variant("(ssv)", (APPEARANCE, key, value)))
