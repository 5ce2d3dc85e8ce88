# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The session bus: what the desktop asks of the program there, and what it offers itself."""

import threading

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from .waiting import wait_until  # noqa: E402

NAME = "ltd.orbax.velto"
PATH = "/ltd/orbax/velto"
APPLICATION = "org.freedesktop.Application"


def connect(address=None):
    """A connection of its own, to the session bus or to the one at `address`."""
    flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
             | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
    if address is None:
        address = Gio.dbus_address_get_for_bus_sync(Gio.BusType.SESSION, None)
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)


def call(connection, name, path, interface, method, arguments=None, milliseconds=10_000):
    """What a method gives back, as Python values."""
    return connection.call_sync(name, path, interface, method, arguments, None,
                                Gio.DBusCallFlags.NONE, milliseconds, None).unpack()


def owner_of(connection, name=NAME):
    """The unique name of who owns a name, None when nobody does."""
    try:
        return call(connection, "org.freedesktop.DBus", "/", "org.freedesktop.DBus",
                    "GetNameOwner", GLib.Variant("(s)", (name,)))[0]
    except GLib.Error:
        return None


def activate(connection):
    call(connection, NAME, PATH, APPLICATION, "Activate", GLib.Variant("(a{sv})", ({},)))


def open_links(connection, *links):
    call(connection, NAME, PATH, APPLICATION, "Open",
         GLib.Variant("(asa{sv})", (links, {})))


def do_action(connection, action):
    call(connection, NAME, PATH, APPLICATION, "ActivateAction",
         GLib.Variant("(sava{sv})", (action, [], {})))


class Provider:
    """A program of the desktop: owns a name and answers calls in a thread of its own.

    `methods` maps the names of the methods to functions of their arguments, which give the values
    of the reply; `properties` maps the names of properties to variants. `calls` and `reads` tell what was
    asked.
    """

    def __init__(self, name, path, xml, methods=None, properties=None, address=None):
        self.calls = []
        self.reads = 0
        self.properties = properties or {}
        self._methods = methods or {}
        self._name = name
        self._path = path
        self._interface = Gio.DBusNodeInfo.new_for_xml(xml).interfaces[0]
        # Calls are answered in the context of the thread that registers the object.
        self._context = GLib.MainContext()
        self._loop = GLib.MainLoop.new(self._context, False)
        ready = threading.Event()
        self._thread = threading.Thread(target=self._run, args=(address, ready), daemon=True)
        self._thread.start()
        wait_until(ready.is_set, f"{name} on the bus")

    def _run(self, address, ready):
        self._context.push_thread_default()
        self.connection = connect(address)
        self.connection.register_object(self._path, self._interface, self._answer, self._read,
                                        None)
        # 4: nobody waits in a queue for the name.
        call(self.connection, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
             GLib.Variant("(su)", (self._name, 4)))
        ready.set()
        self._loop.run()
        self._context.pop_thread_default()

    def _answer(self, connection, sender, path, interface, method, arguments, invocation):
        self.calls.append((method, arguments.unpack()))
        reply = self._methods.get(method, lambda *_: None)(*arguments.unpack())
        signature = "".join(argument.signature for argument in
                            self._interface.lookup_method(method).out_args)
        invocation.return_value(GLib.Variant(f"({signature})", reply) if signature else None)

    def _read(self, connection, sender, path, interface, name):
        self.reads += 1
        return self.properties[name]

    def emit(self, signal, arguments):
        self.connection.emit_signal(None, self._path, self._interface.name, signal, arguments)

    def calls_of(self, method):
        return [arguments for name, arguments in list(self.calls) if name == method]

    def leave(self):
        """The program ends, and with it its name."""
        self.connection.close_sync(None)
        self._loop.quit()
        self._thread.join()


class Notifications(Provider):
    """What shows the notes of programs."""

    XML = """<node><interface name="org.freedesktop.Notifications">
      <method name="Notify"><arg type="s"/><arg type="u"/><arg type="s"/><arg type="s"/>
        <arg type="s"/><arg type="as"/><arg type="a{sv}"/><arg type="i"/>
        <arg type="u" direction="out"/></method>
    </interface></node>"""

    def __init__(self):
        super().__init__("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                         self.XML, {"Notify": lambda *_: (1,)})

    @property
    def titles(self):
        return [arguments[3] for arguments in self.calls_of("Notify")]
