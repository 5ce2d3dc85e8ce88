#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""What a screen reader and a keyboard without a mouse find on each screen."""

from support import desktop, session
from support.accessibility import BUTTON, ENTRY, GLib, LABEL, LIST
from support.case import (INPUT, LOADING, SIGN_IN, TRY_AGAIN, SystemTest, content_of, main)
from support.waiting import wait_until

# Reached with F10, not with Tab.
MENUS = ("velto", "File", "Edit", "View", "Window")
# Roles that say nothing about what an object does.
VAGUE = {"unknown", "invalid", "redundant object"}


class Screens(SystemTest):
    def assert_reachable(self, velto):
        """Whatever takes the focus or can be pressed has a name and a role, and is on the screen."""
        while True:
            try:
                found = self.controls(velto)
                break
            except GLib.Error:
                continue  # an object went away while it was asked: look again
        self.assertTrue(found, velto.tree.dump())
        for role, name, area in found:
            if not name.strip() or role in VAGUE or area <= 0:
                self.fail(f"{role} {name!r}, {area} pixels, in:\n{velto.tree.dump()}")
        return [(role, name) for role, name, _ in found]

    @staticmethod
    def controls(velto):
        """(role, name, pixels) of what can be focused or pressed."""
        # A screen reader may put its focus on any static text too.
        nodes = velto.tree.find_all(
            matching=lambda node: node.role not in ("frame", LABEL) and (
                node.focusable or "press" in map(str.lower, node.actions)))
        return [(node.role, node.name, node.box[2] * node.box[3]) for node in nodes]

    def tab_order(self, velto, key="Tab"):
        """(role, name) of what the key leads to, from the focus until it is back there."""
        start = wait_until(velto.tree.focused, "a first focus")
        order = [(start.role, start.name)]
        while True:
            last = order[-1]
            desktop.press_key(key)
            focus = self.focus_after(velto, last)
            if focus in order:
                return order
            order.append(focus)

    def focus_after(self, velto, last):
        found = []

        def moved():
            node = velto.tree.focused()
            if node is not None and (node.role, node.name) != last:
                found.append((node.role, node.name))
            return found

        wait_until(moved, lambda: f"the focus to leave {last} in:\n{velto.tree.dump()}", 5)
        return found[0]

    def test_sign_in_screen(self):
        velto = self.start_velto(self.start_service().base_url)
        button = velto.button(SIGN_IN)
        self.assertEqual(self.assert_reachable(velto), [(BUTTON, SIGN_IN)])
        wait_until(lambda: button.focused, "the focus on the only control")
        for text in ("velto", "Your AI colleague", "By continuing, you agree to velto's Terms."):
            velto.wait_for(LABEL, text)
        # With one control, the key has nowhere else to go.
        desktop.press_key("Tab")
        desktop.press_key("Tab")
        wait_until(lambda: velto.button(SIGN_IN).focused, "the focus to stay")

    def test_loading_screen(self):
        service = self.start_service()
        session.sign_in_to_keyring(service.base_url)
        session.write_cached_conversation(self.data_home, 2)
        service.freeze()
        velto = self.start_velto(service.base_url)
        velto.wait_for(LABEL, LOADING)
        velto.wait_for(LIST, "Messages")
        self.assertIsNone(velto.find(BUTTON))

    def test_error_screen(self):
        service = self.start_service()
        velto = self.start_velto(service.base_url, PATH="/nonexistent")
        velto.button(SIGN_IN).act()
        button = velto.button(TRY_AGAIN)
        self.assertEqual(self.assert_reachable(velto),
                         [("menu item", title) for title in MENUS] + [(BUTTON, TRY_AGAIN)])
        wait_until(lambda: button.focused, "the focus on the only control")

    def test_empty_chat(self):
        _, velto = self.start_signed_in()
        self.assertIn((ENTRY, INPUT), self.assert_reachable(velto))
        self.assertFalse(velto.button("Send").enabled)
        desktop.type_text("x")
        velto.wait_for(BUTTON, "Send", lambda node: node.enabled)
        order = self.tab_order(velto)
        self.assertEqual(order[0], (ENTRY, INPUT))
        self.assertIn((BUTTON, "Send"), order)

    def test_chat_with_messages(self):
        _, velto = self.start_signed_in()
        velto.send("hello")
        velto.wait_for_reply("hello")
        velto.wait_for_answer()
        velto.button("Continue generating")
        self.assert_reachable(velto)
        messages = velto.wait_for(LIST, "Messages")
        said = [node for node in messages.walk() if "hello" in content_of(node)]
        self.assertEqual([node.role for node in said], [LABEL] * len(said))
        self.assertEqual(said[0].text, "hello", "the user's own, through the text interface")
        self.assertIn("hello", [node.name for node in said[1:]], "the block that quotes it")
        velto.focus_input()
        desktop.type_text("x")
        velto.wait_for(BUTTON, "Send", lambda node: node.enabled)
        order = self.tab_order(velto)
        self.assertEqual(order[0], (ENTRY, INPUT))
        self.assertEqual(order[1], (BUTTON, "Send"))
        self.assertIn((LIST, "Messages"), order)
        for action in ("Edit message", "Copy message", "Good response", "Bad response",
                       "Regenerate response", "Continue generating"):
            self.assertIn((BUTTON, action), order)
        # Backwards it is the same way.
        velto.focus_input()
        self.assertEqual(self.tab_order(velto, "shift+Tab"), order[:1] + order[:0:-1])

    def test_streaming_chat(self):
        _, velto = self.start_signed_in()
        velto.send("slow long 3000")
        velto.button("Stop")
        velto.wait_for(name="slow long 3000")  # the title, and what stood there has gone
        wait_until(velto.answer, "the answer to begin")
        self.assert_reachable(velto)
        self.assertIsNone(velto.find(BUTTON, "Send"))

    def test_error_banner(self):
        _, velto = self.start_signed_in()
        velto.send("error")
        velto.button("Retry")
        reachable = self.assert_reachable(velto)
        for control in ((BUTTON, "Retry"), (BUTTON, "Dismiss"), (ENTRY, INPUT)):
            self.assertIn(control, reachable)
        velto.wait_for("alert", "Something went wrong")
        velto.focus_input()
        order = self.tab_order(velto)
        retry = order.index((BUTTON, "Retry"))
        self.assertEqual(order[retry + 1], (BUTTON, "Dismiss"))
        # From the keyboard alone: to the button and press it.
        velto.focus_input()
        for control in order[1:retry + 2]:
            desktop.press_key("Tab")
            wait_until(lambda: (velto.tree.focused() or velto.input()).name == control[1],
                       f"the focus on {control}")
        desktop.press_key("space")
        velto.wait_gone(BUTTON, "Dismiss")


if __name__ == "__main__":
    main()
