# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""A panel of the desktop that shows the icons of programs."""

from . import bus
from .waiting import wait_until

ITEM = "org.kde.StatusNotifierItem"
ITEM_PATH = "/StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
GLib = bus.GLib


class Watcher(bus.Provider):
    """Knows the icons, and whether there is a panel for them."""

    NAME = "org.kde.StatusNotifierWatcher"
    XML = f"""<node><interface name="{NAME}">
      <method name="RegisterStatusNotifierItem"><arg type="s"/></method>
      <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
      <signal name="StatusNotifierHostRegistered"/>
      <signal name="StatusNotifierHostUnregistered"/>
    </interface></node>"""

    def __init__(self, has_host=True):
        super().__init__(self.NAME, "/StatusNotifierWatcher", self.XML,
                         properties={"IsStatusNotifierHostRegistered":
                                     GLib.Variant("b", has_host)})

    @property
    def items(self):
        return [name for name, in self.calls_of("RegisterStatusNotifierItem")]

    def wait_for_item(self):
        return Icon(self.connection, wait_until(lambda: self.items, "the icon")[-1])

    def set_host(self, has_host):
        self.properties["IsStatusNotifierHostRegistered"] = GLib.Variant("b", has_host)
        self.emit(f"StatusNotifierHost{'Registered' if has_host else 'Unregistered'}", None)


class Icon:
    """The icon of a program, and what a panel does with it."""

    def __init__(self, connection, name):
        self.name = name
        # The watcher's own connection is busy in its thread.
        self._bus = bus.connect()

    def properties(self):
        return bus.call(self._bus, self.name, ITEM_PATH, "org.freedesktop.DBus.Properties",
                        "GetAll", GLib.Variant("(s)", (ITEM,)))[0]

    def activate(self, x, y):
        bus.call(self._bus, self.name, ITEM_PATH, ITEM, "Activate", GLib.Variant("(ii)", (x, y)))

    def _menu(self, method, arguments):
        return bus.call(self._bus, self.name, self.properties()["Menu"], MENU, method, arguments)

    def menu(self):
        """{label: id} of the menu's lines; a line between groups has no label."""
        _, (root, _, children) = self._menu("GetLayout", GLib.Variant("(iias)", (0, -1, [])))
        assert root == 0
        return {properties.get("label"): number for number, properties, _ in children}

    def menu_properties(self, ids):
        return self._menu("GetGroupProperties", GLib.Variant("(aias)", (ids, [])))[0]

    def choose(self, label):
        self._menu("Event", GLib.Variant("(isvu)", (self.menu()[label], "clicked",
                                                    GLib.Variant("s", ""), 0)))

    def hover(self, label):
        self._menu("Event", GLib.Variant("(isvu)", (self.menu()[label], "hovered",
                                                    GLib.Variant("s", ""), 0)))
