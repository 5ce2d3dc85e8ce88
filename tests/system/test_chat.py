#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""A chat, by keyboard and mouse."""

import re

from support import desktop, session
from support.accessibility import BUTTON, ENTRY
from support.case import SystemTest, main
from support.waiting import wait_until

CHAT_REQUEST = "POST /v1/chat"
BANNER = "Something went wrong"
STOPPED = "stopped"


class Streaming(SystemTest):
    token_rate = 40

    def setUp(self):
        super().setUp()
        self.use_tall_window()
        self.service, self.velto = self.start_signed_in()

    def test_return_sends_what_was_typed(self):
        self.velto.send("hello there")
        self.velto.wait_for_reply("hello there")
        self.assertEqual(self.velto.input().text.strip(), "")
        self.velto.wait_for_answer()
        (who, question), (whose, answer) = self.velto.messages()
        self.assertEqual((who, question), ("You", "hello there"))
        self.assertEqual(whose, "velto")
        self.assertIn("hello there", answer)

    def test_the_answer_grows_before_the_eyes(self):
        self.velto.send("long 1500")
        first = wait_until(self.velto.answer, "the answer to begin")
        self.assertIsNotNone(self.velto.find(BUTTON, "Stop"))
        longer = wait_until(lambda: len(self.velto.answer()) > len(first) and self.velto.answer(),
                            "the answer to grow")
        self.assertIsNotNone(self.velto.find(BUTTON, "Stop"))
        self.assertTrue(longer.startswith(first))
        self.velto.wait_for_answer()
        # All of it is there: the service keeps the Markdown, whose words these are.
        tokens = session.sign_in(self.service.base_url)
        self.assertEqual(re.findall(r"\w+", self.velto.answer()),
                         re.findall(r"\w+", session.newest_text(self.service.base_url,
                                                                tokens.access)))
        self.velto.button("Send")

    def test_shift_return_breaks_the_line(self):
        desktop.type_text("first")
        desktop.press_key("shift+Return")
        desktop.type_text("second")
        wait_until(lambda: self.velto.input().text.strip("\n") == "first\nsecond",
                   lambda: f"two lines, not {self.velto.input().text!r}")
        self.assertEqual(self.service.count(CHAT_REQUEST), 0)
        desktop.press_key("Return")
        wait_until(lambda: self.velto.messages(), "the message")
        self.assertEqual(self.velto.messages()[0], ("You", "first\nsecond"))

    def test_blanks_are_not_sent(self):
        desktop.type_text("   ")
        desktop.press_key("Return")
        desktop.type_text("x")
        wait_until(lambda: "x" in self.velto.input().text, "the keys to arrive")
        self.assertEqual(self.velto.input().text.strip("\n"), "   x")
        self.assertEqual(self.velto.messages(), [])

    def test_send_by_mouse(self):
        desktop.type_text("hello")
        button = self.velto.wait_for(BUTTON, "Send", lambda node: node.enabled)
        desktop.click(*button.centre)
        self.velto.wait_for_reply("hello")

    def test_what_is_sent_during_an_answer_stays_in_the_composer(self):
        self.velto.send("slow long 3000")
        wait_until(self.velto.answer, "the answer to begin")
        self.velto.send("not yet")
        wait_until(lambda: "not yet" in self.velto.input().text, "the keys to arrive")
        self.assertEqual(self.service.count(CHAT_REQUEST), 0, "the log has a line at its end")
        self.assertEqual(len(self.velto.messages()), 2)

    def stop(self, how):
        self.velto.send("slow long 3000")
        wait_until(self.velto.answer, "the answer to begin")
        how()
        self.velto.wait_for_answer()
        wait_until(lambda: self.velto.answer().endswith(f"\n{STOPPED}"),
                   lambda: f"the note after {self.velto.answer()!r}")
        self.velto.button("Send")
        self.assertIsNone(self.velto.find(name=BANNER))
        # The service noticed, and the chat goes on.
        self.service.wait_for_line(CHAT_REQUEST)
        self.velto.send("hello again")
        self.velto.wait_for_reply("hello again")

    def test_stop_by_mouse(self):
        self.stop(lambda: desktop.click(*self.velto.button("Stop").centre))

    def test_stop_by_escape(self):
        self.stop(lambda: desktop.press_key("Escape"))

    def test_stop_by_a_screen_readers_action(self):
        self.stop(lambda: self.velto.button("Stop").act())

    def test_stop_by_the_menus_key(self):
        self.stop(lambda: desktop.press_key("ctrl+period"))

    def test_new_chat_ends_the_answer_and_empties_the_window(self):
        self.velto.send("slow long 3000")
        wait_until(self.velto.answer, "the answer to begin")
        desktop.press_key("ctrl+n")
        self.velto.wait_for_answer()
        wait_until(lambda: not self.velto.messages(), "the window to empty")
        desktop.type_text("anew")
        wait_until(lambda: "anew" in self.velto.input().text, "the composer to have the keyboard")
        desktop.press_key("Return")
        self.velto.wait_for_reply("anew")
        self.velto.wait_for_answer()
        self.assertEqual([who for who, _ in self.velto.messages()], ["You", "velto"])


class Acting(SystemTest):
    """What can be done with messages, by keyboard and by a screen reader's actions."""

    token_rate = 400

    def setUp(self):
        super().setUp()
        self.use_tall_window()
        self.service, self.velto = self.start_signed_in()

    def ask(self, text):
        self.velto.send(text)
        self.velto.wait_for_reply(text)
        self.velto.wait_for_answer()

    def edit(self, text):
        self.velto.button("Edit message").act()
        editor = self.velto.wait_for(ENTRY, "Edit message")
        wait_until(lambda: self.velto.wait_for(ENTRY, "Edit message").focused,
                   "the editor to have the keyboard")
        desktop.press_key("ctrl+a")
        desktop.type_text(text)
        wait_until(lambda: editor.text.strip("\n") == text, "the keys to arrive")

    def test_a_message_is_rewritten_and_its_versions_stepped_through(self):
        self.ask("first thought")
        self.edit("second thought")
        desktop.press_key("ctrl+Return")
        self.velto.wait_for_reply("second thought")
        self.velto.wait_for_answer()
        self.assertEqual(self.velto.messages()[0], ("You", "second thought"))
        self.velto.wait_for(name="Version 2 of 2")
        self.velto.button("Previous version").act()
        self.velto.wait_for_reply("first thought")
        self.assertEqual(self.velto.messages()[0], ("You", "first thought"))
        self.velto.wait_for(name="Version 1 of 2")
        self.velto.button("Next version").act()
        self.velto.wait_for_reply("second thought")
        self.assertEqual(self.service.count(CHAT_REQUEST), 2)

    def test_escape_leaves_a_message_as_it_was(self):
        self.ask("first thought")
        self.edit("another")
        desktop.press_key("Escape")
        self.velto.wait_gone(ENTRY, "Edit message")
        self.assertEqual(self.velto.messages()[0], ("You", "first thought"))

    def test_an_answer_is_regenerated_and_continued(self):
        self.ask("hello there")
        self.velto.button("Regenerate response").act()
        self.service.wait_for_line(CHAT_REQUEST, times=2)
        self.velto.wait_for_answer()
        self.assertEqual([who for who, _ in self.velto.messages()], ["You", "velto"])
        self.velto.button("Continue generating").act()
        self.service.wait_for_line(CHAT_REQUEST, times=3)
        self.velto.wait_for_answer()
        self.assertIn(("You", "Continue"), self.velto.messages())

    def test_a_vote_outlives_the_program(self):
        self.ask("hello there")
        self.velto.button("Good response").act()
        self.assertEqual(self.velto.end(), 0)
        settings = (self.home / ".config/velto/velto.conf").read_text()
        self.assertIn("velto.feedback.votes.v1", settings)

    def test_pictures_and_videos_of_the_service_show(self):
        self.velto.send("image and video")
        self.velto.wait_for("image", "The harbour at dusk")
        self.velto.wait_for(name="The tide, six seconds of it")
        self.velto.wait_for_answer()
        wait_until(lambda: self.service.count("/v1/media/") >= 3, "all media to be asked for")
        self.assertFalse(self.velto.shows("Image unavailable"))
        play = self.velto.button("Play")
        play.act()
        self.velto.button("Pause")
        self.assertFalse(self.velto.shows("Video unavailable"))


class Failing(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_tall_window()
        self.service, self.velto = self.start_signed_in()

    def test_an_error_shows_above_the_composer_until_it_is_dismissed(self):
        self.velto.send("error")
        self.velto.wait_for(name=BANNER)
        self.velto.wait_for_text("The demonstration agent was asked to fail.")
        self.assertTrue(self.velto.shows("I was about to tell you the total, but then"))
        self.velto.button("Dismiss").act()
        self.velto.wait_gone(name=BANNER)
        self.assertEqual(self.service.count(CHAT_REQUEST), 1)

    def test_retry_asks_again(self):
        self.velto.send("error")
        self.velto.button("Retry")
        self.service.wait_for_line(CHAT_REQUEST, times=1)
        desktop.click(*self.velto.button("Retry").centre)
        self.service.wait_for_line(CHAT_REQUEST, times=2)
        self.velto.wait_for(name=BANNER)
        self.assertEqual([who for who, _ in self.velto.messages()], ["You", "velto"])

    def test_retry_once_the_service_is_back(self):
        self.service.end()
        self.velto.send("hello")
        self.velto.button("Retry")
        self.assertTrue(self.velto.shows("Could not connect to the service."))
        self.assertEqual(self.velto.messages(), [("You", "hello")])
        self.start_service(port=self.service.port)
        self.velto.button("Retry").act()
        self.velto.wait_for_reply("hello")
        self.assertIsNone(self.velto.find(name=BANNER))

    def test_a_cut_connection_keeps_what_had_come(self):
        self.velto.send("drop")
        self.velto.button("Retry")
        self.velto.wait_for_reply("This sentence ends before its")
        self.assertFalse(self.velto.answer().endswith(STOPPED))
        # The next message takes the banner away.
        self.velto.send("hello")
        self.velto.wait_for_reply("hello")
        self.assertIsNone(self.velto.find(name=BANNER))

    def test_tools_show_by_name_and_outcome(self):
        self.velto.send("tools")
        self.velto.wait_for_reply("Three boats came in before ten")
        self.velto.wait_for_answer()
        self.velto.button("3 tools (1 failed)").act()
        self.velto.button("Tool search_log — complete")
        self.velto.button("Tool read_gauge — failed").act()
        self.velto.wait_for(name="Error")
        # The agent's suggestion is sent when it is pressed.
        self.velto.button("Show the arrivals as a table").act()
        self.velto.wait_for_reply("Arrivals this week")

    def test_the_turns_are_one_conversation_on_the_service(self):
        self.velto.send("first")
        self.velto.wait_for_reply("first")
        self.velto.wait_for_answer()
        self.velto.send("second")
        self.velto.wait_for_reply("second")
        self.velto.wait_for_answer()
        tokens = session.sign_in(self.service.base_url)
        self.assertEqual(len(session.conversations(self.service.base_url, tokens.access)), 1)


if __name__ == "__main__":
    main()
