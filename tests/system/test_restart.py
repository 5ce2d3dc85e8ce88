#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""What a restart brings back, with and without the service."""

from support import desktop, session
from support.case import INPUT, LOADING, SIGN_IN, SystemTest, main
from support.accessibility import ENTRY
from support.waiting import wait_until


class Restart(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_tall_window()

    def test_the_conversation_is_there_before_the_network_answers(self):
        service, velto = self.start_signed_in()
        velto.send("remember the ferry")
        velto.wait_for_reply("remember the ferry")
        velto.wait_for_answer()
        before = velto.messages()
        self.assertEqual(velto.end(), 0)

        service.freeze()
        velto = self.start_velto(service.base_url)
        velto.wait_for_reply("remember the ferry")
        velto.wait_for(name=LOADING)
        self.assertEqual(velto.messages(), before)
        self.assertIsNone(velto.find(ENTRY, INPUT), "nothing can be written yet")
        self.assertIsNone(velto.find(name=SIGN_IN))

        service.thaw()
        velto.wait_for_chat()
        self.assertEqual(velto.messages(), before)
        velto.send("and the tide")
        velto.wait_for_reply("and the tide")
        velto.wait_for_answer()
        # The chat went on where it was: the service still has the one conversation.
        tokens = session.sign_in(service.base_url)
        self.assertEqual(len(session.conversations(service.base_url, tokens.access)), 1)

    def test_without_a_cached_conversation_the_spinner_stands_alone(self):
        service = self.start_service()
        session.sign_in_to_keyring(service.base_url)
        service.freeze()
        velto = self.start_velto(service.base_url)
        velto.wait_for(name=LOADING)
        self.assertEqual(velto.messages(), [])
        service.thaw()
        velto.wait_for_chat()

    def test_offline_leads_to_the_sign_in_screen_and_forgets_the_session(self):
        service = self.start_service()
        session.sign_in_to_keyring(service.base_url)
        cache = session.write_cached_conversation(self.data_home, 4)
        service.end()
        velto = self.start_velto(service.base_url)
        velto.button(SIGN_IN)
        self.assertEqual(velto.messages(), [])
        self.assertIsNone(desktop.stored_token())
        self.assertFalse(cache.exists())

    def test_without_a_token_the_sign_in_screen_is_first(self):
        service = self.start_service()
        velto = self.start_velto(service.base_url)
        velto.button(SIGN_IN)
        self.assertEqual(service.count("/auth/oauth2/token"), 0)

    def test_a_long_conversation_opens_at_its_end(self):
        service = self.start_service()
        session.sign_in_to_keyring(service.base_url)
        session.write_cached_conversation(self.data_home, 50)
        velto = self.start_velto(service.base_url)
        velto.wait_for_chat()
        velto.wait_for_text(session.cached_texts(50)[-1].splitlines()[0].replace("**", ""))

    def test_after_new_chat_a_restart_is_empty(self):
        service, velto = self.start_signed_in()
        velto.send("forget this")
        velto.wait_for_reply("forget this")
        velto.wait_for_answer()
        cache = session.cache_file(self.data_home)
        wait_until(cache.exists, "the conversation to be kept")
        self.assertEqual(cache.stat().st_mode & 0o077, 0, "a chat is nobody else's business")
        desktop.press_key("ctrl+n")
        wait_until(lambda: not velto.messages(), "the window to empty")
        self.assertFalse(cache.exists())
        self.assertEqual(velto.end(), 0)
        velto = self.start_velto(service.base_url)
        velto.wait_for_chat()
        self.assertEqual(velto.messages(), [])

    def test_killed_in_the_middle_of_an_answer_it_starts_as_before(self):
        service, velto = self.start_signed_in()
        velto.send("keep this")
        velto.wait_for_reply("keep this")
        velto.wait_for_answer()
        kept = velto.messages()
        velto.send("slow long 3000")
        velto.button("Stop")
        wait_until(lambda: velto.messages()[-1] not in kept and velto.messages()[-1][1],
                   "the answer to begin")
        velto.kill()
        velto = self.start_velto(service.base_url)
        velto.wait_for_chat()
        self.assertEqual(velto.messages(), kept)


class SigningOut(SystemTest):
    def test_leaves_nothing_and_asks_to_sign_in(self):
        service, velto = self.start_signed_in()
        velto.send("remember the lighthouse")
        velto.wait_for_reply("lighthouse")
        velto.wait_for_answer()
        wait_until(session.cache_file(self.data_home).exists, "the conversation to be cached")
        velto.focus_input()
        desktop.press_key("F10")
        velto.wait_for("menu item", "Sign out", lambda node: node.focused)
        desktop.press_key("Return")
        velto.button(SIGN_IN)
        self.assertIsNone(desktop.stored_token())
        self.assertFalse(session.cache_file(self.data_home).exists())
        self.assertFalse(velto.shows("lighthouse"))
        self.assertEqual(velto.end(), 0)
        self.start_velto(service.base_url).button(SIGN_IN)


if __name__ == "__main__":
    main()
