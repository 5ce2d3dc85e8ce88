#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The composer and what stands around it: files, the choice of a model, the keyboard alone."""

import threading

from gi.repository import Gio, GLib

from support import desktop
from support.accessibility import BUTTON
from support.case import SystemTest, main
from support.waiting import wait_until

CHAT_REQUEST = "POST /v1/chat"
PICKER = "Choose model"
FAILURE = "Couldn't attach file"
PORTAL = "org.freedesktop.portal.Desktop"
CHOOSER = """<node><interface name="org.freedesktop.portal.FileChooser">
  <method name="OpenFile"><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method>
</interface></node>"""


class Portal:
    """A desktop whose user always chooses `uri`; None cancels."""

    def __init__(self, uri):
        self.uri = uri
        self.parents = []
        self.context = GLib.MainContext.new()
        self.loop = GLib.MainLoop.new(self.context, False)
        self.ready = threading.Event()
        self.thread = threading.Thread(target=self._run)
        self.thread.start()
        self.ready.wait(20)

    def _run(self):
        self.context.push_thread_default()
        address = Gio.dbus_address_get_for_bus_sync(Gio.BusType.SESSION, None)
        self.bus = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
            Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self.bus.register_object("/org/freedesktop/portal/desktop",
                                 Gio.DBusNodeInfo.new_for_xml(CHOOSER).interfaces[0],
                                 self._open, None, None)
        self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "RequestName", GLib.Variant("(su)", (PORTAL, 0)), None,
                           Gio.DBusCallFlags.NONE, -1, None)
        self.ready.set()
        self.loop.run()
        self.bus.close_sync(None)

    def _open(self, bus, sender, path, interface, method, arguments, invocation):
        parent, _, options = arguments.unpack()
        self.parents.append(parent)
        request = f"{path}/request/{sender[1:].replace('.', '_')}/{options['handle_token']}"
        invocation.return_value(GLib.Variant("(o)", (request,)))
        results = {} if self.uri is None else {"uris": GLib.Variant("as", [self.uri])}
        bus.emit_signal(None, request, "org.freedesktop.portal.Request", "Response",
                        GLib.Variant("(ua{sv})", (1 if self.uri is None else 0, results)))

    def end(self):
        self.loop.quit()
        self.thread.join(20)


class Composing(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_tall_window()
        self.service, self.velto = self.start_signed_in()

    def file(self, name, content):
        path = self.folder / name
        path.write_bytes(content)
        return path

    def draft(self):
        return self.velto.input().text.strip("\n")

    def choose(self, uri):
        portal = Portal(uri)
        self.addCleanup(portal.end)
        desktop.press_key("shift+Tab")
        wait_until(lambda: self.velto.button("Attach file").focused, "the focus on the button")
        desktop.press_key("space")
        wait_until(lambda: portal.parents, "the desktop's dialog")
        return portal

    def test_a_file_from_the_desktops_dialog_is_sent_as_text(self):
        portal = self.choose(self.file("Tide table.CSV", b"hour,height\n14,2.4").as_uri())
        wait_until(lambda: self.draft() == "```csv attachment=Tide table.CSV\nhour,height\n14,2.4\n```",
                   lambda: f"the file in {self.velto.input().text!r}")
        self.assertRegex(portal.parents[0], "^x11:[0-9a-f]+$")
        wait_until(lambda: self.velto.input().focused, "the composer to have the focus again")
        desktop.type_text("What is the highest?")
        desktop.press_key("Return")
        self.service.wait_for_line(CHAT_REQUEST)
        self.velto.wait_for_answer()
        question = self.velto.messages()[0][1]
        self.assertIn("14,2.4", question)
        self.assertTrue(question.endswith("What is the highest?"), question)

    def test_a_file_that_is_no_text_is_refused(self):
        self.choose(self.file("picture.png", b"\x89PNG\r\n").as_uri())
        self.velto.wait_for(name=FAILURE)
        self.velto.wait_for_text("Only text-based files are supported right now.")
        desktop.press_key("Return")
        self.velto.wait_gone(name=FAILURE)
        self.assertEqual(self.draft(), "")

    def test_cancelling_the_dialog_changes_nothing(self):
        self.choose(None)
        self.velto.focus_input()
        desktop.type_text("x")
        wait_until(lambda: self.draft() == "x", "the keys to arrive")
        self.assertIsNone(self.velto.find(name=FAILURE))

    def test_a_copied_file_is_pasted(self):
        path = self.file("README", b"read me")
        self.copy(path.as_uri())
        desktop.press_key("ctrl+v")
        wait_until(lambda: self.draft() == "```readme attachment=README\nread me\n```",
                   lambda: f"the file in {self.velto.input().text!r}")

    def copy(self, uri):
        # It stays, so it must not keep our pipes open.
        desktop.run("sh", "-c", 'printf "%s\\r\\n" "$0" | '
                    "xclip -selection clipboard -target text/uri-list >/dev/null 2>&1", uri)

    def test_a_model_is_chosen_by_keyboard(self):
        picker = self.velto.wait_for(BUTTON, PICKER)
        self.assertEqual(picker.description, "Opus 4.8")
        picker.take_focus()
        wait_until(lambda: self.velto.wait_for(BUTTON, PICKER).focused, "the focus on the picker")
        desktop.press_key("Return")
        wait_until(lambda: self.velto.wait_for("menu item", "Claude Opus 4.8").focused,
                   "the menu to open at what holds now")
        desktop.press_key("Down")
        desktop.press_key("Return")
        wait_until(lambda: self.velto.wait_for(BUTTON, PICKER).description == "Opus 4.7",
                   lambda: f"another model in:\n{self.velto.tree.dump()}")
        self.service.wait_for_line("PATCH /v1/admin/workspaces/")
        wait_until(lambda: self.velto.wait_for(BUTTON, PICKER).focused, "the focus to come back")


if __name__ == "__main__":
    main()
