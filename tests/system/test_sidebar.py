#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The history beside the chat, by keyboard, mouse and a screen reader's actions."""

from support import desktop, session
from support.accessibility import BUTTON, ENTRY, LABEL, LIST, LIST_ITEM
from support.case import SystemTest, main
from support.waiting import wait_until

SEARCH = "Search chats"
RENAME = "Rename chat"
PATCH = "PATCH /v1/conversations/"
DELETE = "DELETE /v1/conversations/"


class Sidebar(SystemTest):
    token_rate = 2000

    def setUp(self):
        super().setUp()
        self.service, self.velto = self.start_signed_in()
        self.access = session.sign_in(self.service.base_url).access
        for question in ("tides tomorrow", "harbour lights", "fog horn"):
            desktop.press_key("ctrl+n")
            self.velto.send(question)
            self.velto.wait_for_answer()
            self.wait_for_titles(self.stored_titles)

    def rows(self):
        """Title and object of each row in the history, from top to bottom."""
        history = self.velto.find(LIST, "Conversations")
        if history is None:
            return []
        return [(node.name, node) for node in history.walk()
                if node.role == LIST_ITEM and node.showing]

    def titles(self):
        return [title for title, _ in self.rows()]

    def row(self, title):
        return wait_until(lambda: dict(self.rows()).get(title), lambda: f"{title} in {self.titles()}")

    def stored(self):
        return session.conversations(self.service.base_url, self.access)

    def stored_titles(self):
        return [conversation["title"] for conversation in self.stored()]

    def wait_for_titles(self, wanted):
        """Until the history shows these titles; a function is asked anew each time."""
        def expected():
            return wanted() if callable(wanted) else wanted
        wait_until(lambda: self.titles() and self.titles() == expected(),
                   lambda: f"{expected()}, not {self.titles()}")

    def focus_row(self, title):
        """By keyboard: into the search, down into the list, and on."""
        desktop.press_key("ctrl+f")
        self.velto.wait_for(ENTRY, SEARCH, lambda node: node.focused)
        for at, name in enumerate(self.titles()):
            desktop.press_key("Down")
            wait_until(lambda: self.rows()[at][1].focused, f"row {at} to have the keyboard")
            if name == title:
                return
        raise AssertionError(f"no row {title} in {self.titles()}")

    def start_rename(self, title, text):
        self.focus_row(title)
        desktop.press_key("F2")
        self.velto.wait_for(ENTRY, RENAME, lambda node: node.focused)
        desktop.press_key("ctrl+a")
        desktop.type_text(text)
        wait_until(lambda: self.velto.wait_for(ENTRY, RENAME).text == text, "the keys to arrive")

    def ask_to_delete(self, title):
        self.focus_row(title)
        desktop.press_key("Delete")
        self.velto.wait_for(LABEL, f'"{title}" will be permanently removed.')

    def test_conversations_open_by_mouse_by_keyboard_and_by_a_screen_reader(self):
        self.assertTrue(self.row("fog horn").has_state("selected"))
        desktop.click(*self.row("tides tomorrow").centre)
        self.velto.wait_for_reply("tides tomorrow")
        wait_until(lambda: self.row("tides tomorrow").has_state("selected"), "the row to be marked")
        self.assertFalse(self.row("fog horn").has_state("selected"))
        self.focus_row("harbour lights")
        desktop.press_key("Return")
        self.velto.wait_for_reply("harbour lights")
        self.row("fog horn").act()
        self.velto.wait_for_reply("fog horn")

    def test_opened_conversations_are_stepped_through(self):
        order = self.titles()
        self.assertTrue(self.row(order[0]).has_state("selected"))
        for title in order[1:]:
            desktop.press_key("ctrl+bracketright")
            self.velto.wait_for_reply(title)
        desktop.press_key("ctrl+bracketleft")
        self.velto.wait_for_reply(order[1])

    def test_a_rename_reaches_the_service(self):
        self.start_rename("harbour lights", " Lights of the harbour ")
        desktop.press_key("Return")
        self.row("Lights of the harbour")
        self.service.wait_for_line(PATCH)
        self.assertIn("Lights of the harbour", self.stored_titles())
        wait_until(lambda: self.row("Lights of the harbour").focused, "the row to have the keyboard")

    def test_a_cancelled_rename_sends_nothing(self):
        before = self.titles()
        self.start_rename("harbour lights", "something else")
        desktop.press_key("Escape")
        self.velto.wait_gone(ENTRY, RENAME)
        self.wait_for_titles(before)
        self.rename_once_more(before)

    def test_the_same_title_with_blanks_sends_nothing(self):
        before = self.titles()
        self.start_rename("harbour lights", "  harbour lights  ")
        desktop.press_key("Return")
        self.velto.wait_gone(ENTRY, RENAME)
        self.wait_for_titles(before)
        self.rename_once_more(before)

    def rename_once_more(self, before):
        """Whatever had been sent would have come before this."""
        self.start_rename(before[0], "last")
        desktop.press_key("Return")
        self.service.wait_for_line(PATCH)
        self.assertEqual(self.service.count(PATCH), 1)
        self.assertEqual(sorted(self.stored_titles()), sorted(["last", *before[1:]]))

    def test_a_deletion_is_sent_once_it_is_confirmed(self):
        self.ask_to_delete("harbour lights")
        self.assertIn("harbour lights", self.stored_titles())
        self.velto.button("Delete").act()
        self.service.wait_for_line(DELETE)
        wait_until(lambda: "harbour lights" not in self.titles(), "the row to go")
        self.assertNotIn("harbour lights", self.stored_titles())
        self.assertEqual(len(self.titles()), 2)

    def test_a_deletion_that_is_not_confirmed_changes_nothing(self):
        before = self.titles()
        self.ask_to_delete("harbour lights")
        desktop.press_key("Escape")
        self.velto.wait_gone(BUTTON, "Delete")
        self.ask_to_delete("harbour lights")
        self.velto.button("Cancel").act()
        self.velto.wait_gone(BUTTON, "Delete")
        self.assertEqual(self.titles(), before)
        self.assertEqual(self.service.count(DELETE), 0)
        self.assertEqual(sorted(self.stored_titles()), sorted(before))

    def test_deleting_the_open_conversation_empties_the_chat(self):
        self.ask_to_delete("fog horn")
        self.velto.button("Delete").act()
        wait_until(lambda: not self.velto.messages(), "the chat to empty")
        self.service.wait_for_line(DELETE)

    def test_a_search_narrows_the_history_down(self):
        before = self.titles()
        desktop.press_key("ctrl+f")
        self.velto.wait_for(ENTRY, SEARCH, lambda node: node.focused)
        desktop.type_text("HARB")
        self.wait_for_titles(["harbour lights"])
        desktop.type_text("xyz")
        self.velto.wait_for(LABEL, "No matches")
        self.assertEqual(self.titles(), [])
        self.velto.button("Clear search").act()
        self.wait_for_titles(before)
        self.velto.wait_for(ENTRY, SEARCH, lambda node: node.focused)
        desktop.type_text("  ")
        self.wait_for_titles(before)
        desktop.press_key("Escape", "Escape")
        wait_until(lambda: self.velto.input().focused, "the composer to have the keyboard")

    def test_the_link_is_copied(self):
        self.focus_row("harbour lights")
        desktop.press_key("shift+F10")
        wait_until(lambda: self.velto.find(name="Copy link"), "the menu")
        desktop.press_key("Down", "Return")
        identity = next(one["id"] for one in self.stored() if one["title"] == "harbour lights")
        wait_until(lambda: self.clipboard() == f"ltd.orbax.velto://chat/{identity}",
                   lambda: f"the link, not {self.clipboard()!r}")

    def test_the_title_is_copied_from_the_button_of_a_row(self):
        row = self.row("tides tomorrow")
        more = next(node for node in row.walk() if node.name == "More actions")
        more.act()
        entry = self.velto.wait_for(name="Copy title")
        entry.act()
        wait_until(lambda: self.clipboard() == "tides tomorrow",
                   lambda: f"the title, not {self.clipboard()!r}")

    @staticmethod
    def clipboard():
        return desktop.run("xclip", "-selection", "clipboard", "-out", check=False)

    def test_a_new_chat_by_its_button(self):
        self.velto.button("New chat").act()
        wait_until(lambda: not self.velto.messages(), "the chat to empty")
        wait_until(lambda: self.velto.input().focused, "the composer to have the keyboard")
        self.assertFalse(any(node.has_state("selected") for _, node in self.rows()))
        self.velto.send("anew")
        self.velto.wait_for_answer()
        wait_until(lambda: "anew" in self.titles(), "the new conversation in the history")


if __name__ == "__main__":
    main()
